#include "Options.h"

#include "Commands.h"
#include "options/CommandLine.h"

#include <iterator>
#include <sstream>

namespace DaemonSim {

namespace {

constexpr char kDescription[] =
    R"(A set-up daemon on the system bus, for tests and for people. It prints one line an event, plays the
scenarios and then the commands on its standard input.

Exit status: 0; 1 when a scenario waited in vain or could not write a setting; 2 when an option or a
scenario is wrong; 3 when the bus or the daemon's name on it cannot be had.

)";

constexpr char kWrongValue[] = "the value is wrong";

std::string takeEndAfterStop(const std::string& value, std::optional<double>& seconds)
{
    seconds = parseSeconds(value);
    return seconds || value == "never" ? "" : kWrongValue;
}

std::string takeVia(const std::string& value, Via& via)
{
    const auto parsed = parseVia(value);
    via = parsed.value_or(via);
    return parsed ? "" : kWrongValue;
}

std::string takeBehaviour(const std::string& value, Behaviour& behaviour)
{
    std::istringstream stream(value);
    const std::vector<std::string> words {std::istream_iterator<std::string>(stream), {}};
    const auto parsed = parseBehaviour(words);
    behaviour = parsed.value_or(behaviour);
    return parsed ? "" : kWrongValue;
}

} // namespace

std::optional<Options> parseOptions(int argc, char** argv)
{
    Options options;
    tools::CommandLine line("tessel-daemon-sim", "", kDescription + commandHelp());
    line.add({"scenario", tools::addText(options.scenarios),
        "play a file, or a scenario of that name that came with the program; may be given several times",
        "FILE"});
    line.add({"end-after-stop",
        [&](const std::string& value) { return takeEndAfterStop(value, options.endAfterStop); },
        "from an answered StopTessel to the order to leave (default 0.5), or \"never\"", "SECONDS"});
    line.add({"behave", [&](const std::string& value) { return takeBehaviour(value, options.behaviour); },
        "as the command, its seconds in the same argument", "BEHAVIOUR"});
    line.add({"via", [&](const std::string& value) { return takeVia(value, options.via); },
        "as the command (default bus)", "bus|settings"});
    line.add({"fast", tools::setFlag(options.fast), "sleep a quarter of the time"});
    line.add({"with-viewer", tools::setFlag(options.withViewer),
        "at each sleep and each key say so and wait for a line on standard input, which is no command then"});
    line.add({"timestamps", tools::setFlag(options.timestamps),
        "put the seconds since the start in front of every line"});
    line.add({"stay", tools::setFlag(options.stay), "go on after the end of standard input, until a signal"});
    return line.parse(tools::argumentsOf(argc, argv)) ? std::optional(options) : std::nullopt;
}

} // namespace DaemonSim
