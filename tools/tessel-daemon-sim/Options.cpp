// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Options.h"

#include "Commands.h"
#include "Session.h"
#include "options/CommandLine.h"

#include <charconv>
#include <iterator>
#include <sstream>

namespace DaemonSim {

namespace {

constexpr char kDescription[] =
    R"(A set-up daemon on the system bus, for tests and for people. It prints one line an event, plays the
scenarios and then the commands on its standard input. With --from-log it does nothing of that: it turns
a log into a scenario, and says in the scenario's comments what the log does not tell.

)";

constexpr char kHistory[] = R"(
On a terminal the commands have a history, kept in $XDG_STATE_HOME/tessel/history, or
~/.local/state/tessel/history; a line that begins with a blank is not kept.
)";

constexpr char kWrongValue[] = "the value is wrong";

std::string joined(const std::vector<std::string>& words)
{
    std::string text;
    for (const std::string& word : words)
        text.append(text.empty() ? "" : " ").append(word);
    return text;
}

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

std::string takeRun(const std::string& value, size_t& run)
{
    const char* const end = value.data() + value.size();
    const auto [rest, error] = std::from_chars(value.data(), end, run);
    return error == std::errc() && rest == end && run > 0 ? "" : "a number from 1 on is needed";
}

void addPlaying(tools::CommandLine& line, Options& options)
{
    line.add({"scenario", tools::addText(options.scenarios),
        "play a file, or a scenario of that name that came with the program; may be given several times",
        "FILE", false, '\0', std::string("$(tessel-daemon-sim --list 2>/dev/null) ") + tools::kFiles});
    line.add({"end-after-stop",
        [&](const std::string& value) { return takeEndAfterStop(value, options.endAfterStop); },
        "from an answered StopTessel to the order to leave (default 0.5), or \"never\"", "SECONDS", false,
        '\0', "0.5 never"});
    line.add({"behave", [&](const std::string& value) { return takeBehaviour(value, options.behaviour); },
        "as the command, its seconds in the same argument", "BEHAVIOUR", false, '\0',
        joined(behaviourWords())});
    line.add({"via", [&](const std::string& value) { return takeVia(value, options.via); },
        "as the command (default bus)", "bus|settings", false, '\0', "bus settings"});
    line.add({"fast", tools::setFlag(options.fast), "sleep a quarter of the time"});
    line.add({"with-viewer", tools::setFlag(options.withViewer),
        "at each sleep and each key say so and wait for a line on standard input, which is no command then"});
    line.add({"timestamps", tools::setFlag(options.timestamps),
        "put the seconds since the start in front of every line"});
    line.add({"stay", tools::setFlag(options.stay), "go on after the end of standard input, until a signal"});
    line.add({"list", tools::setFlag(options.lists),
        "print the names of the scenarios that came with the program"});
}

void addFromLog(tools::CommandLine& line, Options& options)
{
    line.add({"from-log", tools::setText(options.fromLog.file),
        "print a scenario that asks for what a log of the program tells of; \"-\" is standard input", "FILE",
        false, '\0', tools::kFiles});
    line.add({"redact", tools::setFlag(options.fromLog.redacts),
        "with --from-log, put others in the place of PINs, names, networks and accounts"});
    line.add({"run", [&](const std::string& value) { return takeRun(value, options.fromLog.run); },
        "with --from-log, which run of the program in the log, from 1 (default the last)", "NUMBER"});
}

/// @return what is wrong with the options together, "" for nothing
std::string contradiction(const Options& options)
{
    const bool isFromLog = !options.fromLog.file.empty();
    if (!isFromLog && (options.fromLog.redacts || options.fromLog.run > 0))
        return "--redact and --run are for --from-log";
    return isFromLog && !options.scenarios.empty() ? "--from-log plays no scenario" : "";
}

} // namespace

std::optional<Options> parseOptions(int argc, char** argv)
{
    Options options;
    tools::CommandLine line("tessel-daemon-sim", "", kDescription + commandHelp() + kHistory);
    addPlaying(line, options);
    addFromLog(line, options);
    line.addStatus(kExitOk, "all went well");
    line.addStatus(kExitScenarioFailed,
        "a scenario waited in vain or could not write a setting; or a log has nothing to make one of");
    line.addStatus(kExitUsage, "an option or a scenario is wrong");
    line.addStatus(kExitBus, "the bus or the daemon's name on it cannot be had");
    if (!line.parse(tools::argumentsOf(argc, argv)))
        return std::nullopt;
    const std::string problem = contradiction(options);
    if (problem.empty())
        return options;
    line.wrongUsage(problem);
    return std::nullopt;
}

} // namespace DaemonSim
