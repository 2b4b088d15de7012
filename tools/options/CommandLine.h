// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The command line of a tool, read by GOption in the same way for all of them.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace tools {

inline constexpr int kWrongUsage = 2; ///< the exit status of whoever is called in a wrong way

// What may stand where a value or an argument does, for the shell to complete: words between blanks, one of
// these, or "$(COMMAND)" for what a command prints.
inline constexpr char kFiles[] = "<files>";
inline constexpr char kFolders[] = "<folders>";

struct Option {
    const char* name; ///< without its dashes
    /// Called each time that the option comes, with its value, or "" for none. @return what is wrong with it,
    /// "" for nothing
    std::function<std::string(const std::string& value)> take;
    const char* help;
    const char* value = nullptr; ///< its name in the help; null for an option without one
    bool isValueOptional = false;
    char letter = '\0'; ///< of the short form, if there is one
    std::string choices {}; ///< what the value may be, as above; "" where nobody can tell
};

/// A word that comes first, with options and arguments of its own.
struct Command {
    const char* name;
    const char* arguments;
    const char* help;
    // For the shell alone; the command's own line takes them.
    std::vector<Option> options {};
    std::string argumentChoices {}; ///< as for an option's value
};

/// Ways to take an option. What they fill must outlive the parsing.
std::function<std::string(const std::string&)> setFlag(bool& flag);
std::function<std::string(const std::string&)> setText(std::string& text);
std::function<std::string(const std::string&)> addText(std::vector<std::string>& texts);

class CommandLine {
public:
    /// @param tool         the name that begins its messages
    /// @param parameters   what follows the options in the help's first line; "" when nothing may
    /// @param description  follows the options in the help
    CommandLine(std::string tool, std::string parameters, std::string description);

    void add(Option option) { m_options.push_back(std::move(option)); }

    /// Has the help list the command, and the shell know it. Whoever parses looks for it.
    void add(Command command) { m_commands.push_back(std::move(command)); }

    /// What an argument may be; as for an option's value.
    void setArgumentChoices(std::string choices) { m_argumentChoices = std::move(choices); }

    /// Has the help tell what an exit status means.
    void addStatus(int status, std::string meaning) { m_statuses.emplace_back(status, std::move(meaning)); }

    /// Takes what follows the first argument that is no option as it is, options of a command for instance.
    void stopAtFirstArgument() { m_stopsEarly = true; }

    /// Answers --help, --version and --completion SHELL on standard output, and ends the process with 0 then;
    /// a command of a tool, whose name has a blank in it, has only the first.
    /// @param arguments  without the tool's name
    /// @return those that are no options, or nothing when something is wrong, which standard error is told
    std::optional<std::vector<std::string>> parse(const std::vector<std::string>& arguments);

    /// Tells standard error what is wrong, and how to get help. @return kWrongUsage
    int wrongUsage(const std::string& problem) const;

private:
    struct Callback;

    std::string description() const;
    void addOwnOptions();

    std::string m_tool;
    std::string m_parameters;
    std::string m_description;
    bool m_stopsEarly = false;
    std::vector<Option> m_options;
    std::vector<Command> m_commands;
    std::string m_argumentChoices;
    std::vector<std::pair<int, std::string>> m_statuses;
    std::vector<std::string> m_rest;
};

/// @return the arguments of main() without the tool's name
std::vector<std::string> argumentsOf(int argc, char** argv);

} // namespace tools
