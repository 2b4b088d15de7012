// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Commands.h"

#include "EventLog.h"
#include "Names.h"
#include "Quoting.h"
#include "base/GlibHandles.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <utility>

namespace DaemonSim {

namespace {

using Words = std::vector<std::string>;

constexpr double kDefaultWaitSeconds = 30;
constexpr std::string_view kBlanks = " \t\r";

struct CommandRow {
    std::string_view name;
    std::string_view usage; ///< what follows the name
    std::string_view help;
    /// Takes the rest of the line as it is, unless that begins with a quote.
    bool takesText;
    /// @param words  the name and its arguments. @return nothing when the arguments do not fit.
    std::optional<Command> (*parse)(const Words& words);
};

template <size_t Count>
std::optional<Command> parseRequest(const Words& words)
{
    if (words.size() != Count + 1)
        return std::nullopt;
    return RequestCommand {words[0], Words(words.begin() + 1, words.end())};
}

std::optional<Command> parseSleep(const Words& words)
{
    const auto seconds = words.size() == 2 ? parseSeconds(words[1]) : std::nullopt;
    return seconds ? std::optional<Command>(SleepCommand {*seconds}) : std::nullopt;
}

std::optional<Command> parseWait(const Words& words)
{
    WaitCommand wait {{}, kDefaultWaitSeconds};
    size_t end = words.size();
    if (end >= 4 && words[end - 2] == "within") {
        const auto seconds = parseSeconds(words[end - 1]);
        if (!seconds)
            return std::nullopt;
        wait.seconds = *seconds;
        end -= 2;
    }
    for (size_t position = 1; position < end;) {
        const auto event = takeEvent(words, position, end);
        if (!event)
            return std::nullopt;
        wait.events.push_back(*event);
    }
    return wait.events.empty() ? std::nullopt : std::optional<Command>(wait);
}

std::optional<Command> parseSet(const Words& words)
{
    if (words.size() != 4)
        return std::nullopt;
    const std::string& text = words[3];
    if (words[1] == "string")
        return SetStringCommand {words[2], text};
    int value = 0;
    const auto [rest, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (words[1] != "int" || error != std::errc() || rest != text.data() + text.size())
        return std::nullopt;
    return SetIntCommand {words[2], value};
}

std::optional<Command> parseUnset(const Words& words)
{
    return words.size() == 2 ? std::optional<Command>(UnsetCommand {words[1]}) : std::nullopt;
}

std::optional<Command> parseJson(const Words& words)
{
    if (words.size() != 2)
        return std::nullopt;
    return SetStringCommand {kRequestKey, words[1]};
}

std::optional<Command> parseEnd(const Words& words)
{
    if (words.size() != 1)
        return std::nullopt;
    return SetIntCommand {kStartModeKey, kStartModeEnd};
}

std::optional<Command> parseBehave(const Words& words)
{
    const auto behaviour = parseBehaviour(Words(words.begin() + 1, words.end()));
    return behaviour ? std::optional<Command>(BehaveCommand {*behaviour}) : std::nullopt;
}

std::optional<Command> parseOwned(const Words& words)
{
    if (words.size() != 1)
        return std::nullopt;
    return SetIntCommand {kDeviceOwnedKey, kDeviceOwned};
}

std::optional<Command> parseViaLine(const Words& words)
{
    const auto via = words.size() == 2 ? parseVia(words[1]) : std::nullopt;
    return via ? std::optional<Command>(ViaCommand {*via}) : std::nullopt;
}

std::optional<Command> parseRestart(const Words& words)
{
    const auto seconds = words.size() == 2 ? parseSeconds(words[1]) : std::nullopt;
    return seconds ? std::optional<Command>(RestartCommand {*seconds}) : std::nullopt;
}

std::optional<Command> parseViewer(const Words& words)
{
    if (words.size() < 3 || words[1] != "press")
        return std::nullopt;
    return ViewerCommand {Words(words.begin() + 2, words.end())};
}

std::optional<Command> parseScenario(const Words& words)
{
    return words.size() == 2 ? std::optional<Command>(ScenarioCommand {words[1]}) : std::nullopt;
}

std::optional<Command> parseEcho(const Words& words)
{
    if (words.size() > 2)
        return std::nullopt;
    return EchoCommand {words.size() == 2 ? words[1] : std::string()};
}

template <typename Plain>
std::optional<Command> parsePlain(const Words& words)
{
    return words.size() == 1 ? std::optional<Command>(Plain {}) : std::nullopt;
}

constexpr std::array<CommandRow, 23> kCommands = {{
    {"ShowMobileGuide", "PIN", "the guide", false, parseRequest<1>},
    {"ShowNetworkTest", "PHONE NETWORK", "network test in progress", false, parseRequest<2>},
    {"ShowSSOLoginPopup", "PHONE ACCOUNT", "sign-in in progress", false, parseRequest<2>},
    {"ShowPinPopup", "PHONE PIN", "the PIN to compare", false, parseRequest<2>},
    {"ShowFailedPopup", "STEP", "a failure; the step is sso or anything else", false, parseRequest<1>},
    {"ShowTnCPopup", "", "the terms", false, parseRequest<0>},
    {"ShowApListPopup", "", "the access-point hint", false, parseRequest<0>},
    {"HidePopup", "", "no popup", false, parseRequest<0>},
    {"json", "TEXT", "write a popup request into the settings key for them", true, parseJson},
    {"end", "", "tell the UI to leave, through its start-mode key", false, parseEnd},
    {"owned", "", "tell the UI that the phone owns the TV now, through its settings key", false, parseOwned},
    {"set", "int|string KEY VALUE", "write a settings key", false, parseSet},
    {"unset", "KEY", "remove a settings key", false, parseUnset},
    {"wait", "EVENT... [within SECONDS]",
        "until all came: ServerStarted [FLAG], StopTessel [FLAG FLAG], ui, gone", false, parseWait},
    {"sleep", "SECONDS", "do nothing for a while", false, parseSleep},
    {"behave", "normal|refuse|dawdle SECONDS|wrong-type|silent|vanish", "how to answer from now on", false,
        parseBehave},
    {"via", "bus|settings", "the way of the requests from now on that have words for both", false,
        parseViaLine},
    {"restart", "SECONDS", "leave the bus, forget what is outstanding, and come back", false, parseRestart},
    {"viewer", "press KEY...", "print the line, for whoever plays the viewer", false, parseViewer},
    {"scenario", "NAME", "play a scenario as --scenario does; not inside another one", false, parseScenario},
    {"echo", "TEXT", "print a line", true, parseEcho},
    {"help", "", "list the commands", false, parsePlain<HelpCommand>},
    {"quit", "", "end the simulator", false, parsePlain<QuitCommand>},
}};

std::string usageOf(const CommandRow& row)
{
    return std::string(row.name).append(row.usage.empty() ? "" : " ").append(row.usage);
}

/// Splits a line at its blanks, minding quotes. A mistake in the quoting goes to @p error.
Words splitWords(const std::string& line, std::string& error)
{
    const auto plain = withoutDollarQuotes(line);
    if (!plain) {
        error = "a mistake in $'...'";
        return {};
    }
    int count = 0;
    char** rawWords = nullptr;
    GError* rawError = nullptr;
    g_shell_parse_argv(plain->c_str(), &count, &rawWords, &rawError);
    const base::StrvPtr words(rawWords);
    const base::ErrorPtr problem(rawError);
    if (problem)
        error = problem->message;
    return words ? Words(words.get(), words.get() + count) : Words();
}

std::string trimmed(const std::string& text)
{
    const auto first = text.find_first_not_of(kBlanks);
    const auto last = text.find_last_not_of(kBlanks);
    return first == std::string::npos ? std::string() : text.substr(first, last - first + 1);
}

} // namespace

ParsedLine parseLine(const std::string& line)
{
    if (!g_utf8_validate(line.data(), static_cast<gssize>(line.size()), nullptr))
        return {std::nullopt, "not valid UTF-8 text"};
    const std::string text = trimmed(line);
    if (text.empty() || text.front() == '#')
        return {};

    const std::string name = text.substr(0, text.find_first_of(kBlanks));
    const auto* row = std::find_if(
        kCommands.begin(), kCommands.end(), [&](const CommandRow& each) { return each.name == name; });
    if (row == kCommands.end())
        return {std::nullopt, "unknown command: " + name + " (help lists them)"};

    const std::string rest = trimmed(text.substr(name.size()));
    std::string error;
    Words words;
    const bool isQuoted = rest.rfind('\'', 0) == 0 || rest.rfind('"', 0) == 0 || rest.rfind("$'", 0) == 0;
    if (row->takesText && !rest.empty() && !isQuoted)
        words = {name, rest};
    else
        words = splitWords(text, error);
    const bool areText = std::all_of(words.begin(), words.end(),
        [](const std::string& word) { return g_utf8_validate(word.c_str(), -1, nullptr); });
    if (!areText)
        error = "not valid UTF-8 text";
    if (!error.empty())
        return {std::nullopt, error};

    ParsedLine parsed {row->parse(words), {}};
    if (!parsed.command)
        parsed.error = "usage: " + usageOf(*row);
    return parsed;
}

std::string toText(const RequestCommand& request)
{
    std::string text = request.method;
    for (const std::string& argument : request.arguments)
        text += " " + EventLog::quoted(argument);
    return text;
}

Words commandNames()
{
    Words names;
    for (const CommandRow& row : kCommands)
        names.emplace_back(row.name);
    return names;
}

std::string commandHelp()
{
    constexpr size_t kUsageWidth = 32;
    std::string text =
        "Commands, one a line, words quoted as in a shell, $'\\n' for what cannot be typed, # begins a "
        "comment:\n";
    for (const CommandRow& row : kCommands) {
        std::string usage = usageOf(row);
        if (usage.size() > kUsageWidth)
            text += "  " + std::exchange(usage, {}) + '\n';
        usage.resize(kUsageWidth, ' ');
        text.append("  ").append(usage).append(" ").append(row.help).append("\n");
    }
    return text;
}

} // namespace DaemonSim
