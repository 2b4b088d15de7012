// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The simulator's language: one command a line, the same in a scenario file and at the prompt.
#pragma once

#include "Vocabulary.h"

#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace DaemonSim {

struct RequestCommand {
    std::string method;
    std::vector<std::string> arguments;
};
struct SleepCommand {
    double seconds;
};
struct WaitCommand {
    std::vector<Event> events; ///< all of them, in any order
    double seconds;
};
struct SetIntCommand {
    std::string key;
    int value;
};
struct SetStringCommand {
    std::string key;
    std::string value;
};
struct UnsetCommand {
    std::string key;
};
struct BehaveCommand {
    Behaviour behaviour;
};
struct ViaCommand {
    Via via;
};
struct RestartCommand {
    double seconds; ///< off the bus
};
/// Something for whoever plays the viewer; the daemon has no part in it.
struct ViewerCommand {
    std::vector<std::string> keys; ///< by their X names, to press one after the other
};
struct ScenarioCommand {
    std::string name;
};
struct EchoCommand {
    std::string text;
};
struct HelpCommand { };
struct QuitCommand { };

using Command = std::variant<RequestCommand, SleepCommand, WaitCommand, SetIntCommand, SetStringCommand,
    UnsetCommand, BehaveCommand, ViaCommand, RestartCommand, ViewerCommand, ScenarioCommand, EchoCommand,
    HelpCommand, QuitCommand>;

/// What became of a line. Neither a command nor an error: the line is blank or a comment.
struct ParsedLine {
    std::optional<Command> command;
    std::string error;
};

/// Parses one line (without its line end). Words are quoted as in a shell.
ParsedLine parseLine(const std::string& line);

/// @return the request as its line, the arguments between quotes.
std::string toText(const RequestCommand& request);

/// @return the first words of all commands.
std::vector<std::string> commandNames();

/// @return what help prints, a line a command.
std::string commandHelp();

} // namespace DaemonSim
