// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The language of the daemon simulator's scenarios.
#include "Commands.h"
#include "EventLog.h"
#include "Fuzz.h"
#include "Scenario.h"

#include <deque>
#include <fstream>

namespace {

void checkLine(const std::string& line)
{
    using namespace DaemonSim;
    const ParsedLine parsed = parseLine(line);
    fuzz::demand(!parsed.command || parsed.error.empty(), "a command or an error", line);
    if (!parsed.command)
        return;
    const auto* request = std::get_if<RequestCommand>(&*parsed.command);
    if (!request)
        return;
    const std::string written = toText(*request);
    const ParsedLine again = parseLine(written);
    const auto* same = again.command ? std::get_if<RequestCommand>(&*again.command) : nullptr;
    fuzz::demand(same && same->method == request->method && same->arguments == request->arguments,
        "a request can be read as it is written", written);
}

} // namespace

void fuzz::tryInput(Input& input)
{
    const std::string text = input.rest();
    size_t begin = 0;
    for (size_t end = 0; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1)
        checkLine(text.substr(begin, end - begin));
    checkLine(text.substr(begin));

    if (text.size() % 64 != 0) // the reader takes room for the largest file each time
        return;
    const std::string file = fuzz::keysFolder() + "/scenario";
    std::ofstream(file) << text;
    DaemonSim::EventLog log(false);
    std::deque<DaemonSim::Step> steps;
    DaemonSim::loadScenario(log, file, steps);
}
