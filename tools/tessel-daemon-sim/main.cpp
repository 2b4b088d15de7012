// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "EventLog.h"
#include "Options.h"
#include "Scenario.h"
#include "Session.h"
#include "options/Terminal.h"

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <utility>

using namespace DaemonSim;

namespace {

/// A standard stream that was closed at the start would become the next thing opened, such as the bus.
void openStandardStreams()
{
    for (const int stream : {0, 1, 2}) {
        if (fcntl(stream, F_GETFD) == -1)
            open("/dev/null", O_RDWR); // takes the lowest free number, which is this one
    }
}

int printScenarios()
{
    for (const std::string& name : shippedScenarios())
        puts(name.c_str());
    return fflush(stdout) == 0 ? kExitOk : kExitScenarioFailed;
}

int runSimulator(int argc, char** argv)
{
    const auto options = parseOptions(argc, argv);
    if (!options)
        return kExitUsage;
    if (options->lists)
        return printScenarios();
    if (!options->fromLog.file.empty())
        return printScenarioOf(options->fromLog);
    EventLog log(options->timestamps);
    std::deque<Step> steps;
    bool areRight = true;
    for (const std::string& scenario : options->scenarios)
        areRight = loadScenario(log, scenario, steps) && areRight;
    if (!areRight)
        return kExitUsage;

    Session session(log, *options, std::move(steps));
    return session.run();
}

} // namespace

int main(int argc, char** argv)
{
    openStandardStreams();
    try {
        return runSimulator(argc, argv);
    } catch (const std::exception& problem) {
        tools::complain("tessel-daemon-sim", problem.what());
        return kExitScenarioFailed;
    }
}
