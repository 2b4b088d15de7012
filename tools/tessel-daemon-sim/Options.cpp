#include "Options.h"

#include <algorithm>
#include <deque>
#include <sstream>

namespace DaemonSim {

namespace {

using Arguments = std::deque<std::string>;

std::string takeFirst(Arguments& arguments)
{
    std::string first = arguments.front();
    arguments.pop_front();
    return first;
}

/// Splits "--name=value" into two arguments.
Arguments collect(int argc, char** argv)
{
    Arguments arguments;
    for (int index = 1; index < argc; ++index) {
        const std::string argument = argv[index];
        const size_t equals = argument.find('=');
        const bool isSplit = argument.rfind("--", 0) == 0 && equals != std::string::npos;
        arguments.push_back(argument.substr(0, isSplit ? equals : argument.size()));
        if (isSplit)
            arguments.push_back(argument.substr(equals + 1));
    }
    return arguments;
}

/// The seconds of "dawdle" may be part of the same argument or the next one.
bool takeBehaviour(Arguments& arguments, Behaviour& behaviour)
{
    std::istringstream stream(takeFirst(arguments));
    std::vector<std::string> words;
    for (std::string word; stream >> word;)
        words.push_back(word);
    if (words == std::vector<std::string> {"dawdle"} && !arguments.empty())
        words.push_back(takeFirst(arguments));
    const auto parsed = parseBehaviour(words);
    behaviour = parsed.value_or(Behaviour {});
    return parsed.has_value();
}

bool takeEndAfterStop(Arguments& arguments, std::optional<double>& seconds)
{
    const std::string value = takeFirst(arguments);
    seconds = parseSeconds(value);
    return seconds.has_value() || value == "never";
}

bool takeVia(Arguments& arguments, Via& via)
{
    const auto parsed = parseVia(takeFirst(arguments));
    via = parsed.value_or(via);
    return parsed.has_value();
}

/// @return whether the option is known and its value right.
bool takeOption(const std::string& name, Arguments& arguments, Options& options)
{
    if (name == "--help" || name == "-h")
        return options.help = true;
    if (name == "--timestamps")
        return options.timestamps = true;
    if (name == "--fast")
        return options.fast = true;
    if (name == "--stay")
        return options.stay = true;
    if (arguments.empty())
        return false;
    if (name == "--behave")
        return takeBehaviour(arguments, options.behaviour);
    if (name == "--via")
        return takeVia(arguments, options.via);
    if (name == "--end-after-stop")
        return takeEndAfterStop(arguments, options.endAfterStop);
    if (name != "--scenario")
        return false;
    options.scenarios.push_back(takeFirst(arguments));
    return true;
}

} // namespace

std::optional<Options> parseOptions(int argc, char** argv, std::string& error)
{
    Options options;
    Arguments arguments = collect(argc, argv);
    while (!arguments.empty()) {
        const std::string name = takeFirst(arguments);
        if (!takeOption(name, arguments, options)) {
            error = "wrong option, or its value is missing or wrong: " + name + " (see --help)";
            return std::nullopt;
        }
    }
    return options;
}

std::string usage()
{
    return R"(Usage: tessel-daemon-sim [OPTION]...
A set-up daemon on the system bus, for tests and for people. It prints one line an event, plays the
scenarios and then the commands on its standard input.

  --scenario FILE            play a file, or a scenario of that name that came with the program;
                             may be given several times
  --end-after-stop SECONDS   from an answered StopTessel to the order to leave (default 0.5), or "never"
  --behave BEHAVIOUR         as the command
  --via bus|settings         as the command (default bus)
  --fast                     sleep a quarter of the time
  --timestamps               put the seconds since the start in front of every line
  --stay                     go on after the end of standard input, until a signal
  --help                     this text

Exit status: 0; 1 when a scenario waited in vain or could not write a setting; 2 when an option or a
scenario is wrong; 3 when the bus or the daemon's name on it cannot be had.

)" + commandHelp();
}

} // namespace DaemonSim
