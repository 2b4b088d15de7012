#include "EventLog.h"
#include "Handles.h"
#include "Options.h"
#include "Scenario.h"
#include "Session.h"

#include <cstdio>
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

ConnectionPtr openSystemBus(EventLog& log)
{
    GError* rawError = nullptr;
    ConnectionPtr connection(g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, &rawError));
    const ErrorPtr error(rawError);
    if (error)
        log.error(std::string("no system bus: ") + error->message);
    else
        g_dbus_connection_set_exit_on_close(connection.get(), FALSE); // the end is ours to report
    return connection;
}

int runSimulator(int argc, char** argv)
{
    std::string error;
    const auto options = parseOptions(argc, argv, error);
    EventLog log(options && options->timestamps);
    if (!options) {
        log.error(error);
        return kExitUsage;
    }
    if (options->help) {
        fputs(usage().c_str(), stdout);
        return kExitOk;
    }

    std::deque<Step> steps;
    bool areRight = true;
    for (const std::string& scenario : options->scenarios)
        areRight = loadScenario(log, scenario, steps) && areRight;
    if (!areRight)
        return kExitUsage;

    const ConnectionPtr connection = openSystemBus(log);
    if (!connection)
        return kExitBus;
    Session session(connection.get(), log, *options, std::move(steps));
    return session.run();
}

} // namespace

int main(int argc, char** argv)
{
    openStandardStreams();
    try {
        return runSimulator(argc, argv);
    } catch (const std::exception& problem) {
        fprintf(stderr, "tessel-daemon-sim: %s\n", problem.what());
        return kExitScenarioFailed;
    }
}
