// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "options/CompletionParts.h"

namespace tools {

namespace {

constexpr char kSpecial[] = "[]:\\"; ///< what has a meaning to _arguments

std::string action(const Choices& choices)
{
    const bool isCommand = choices.words.find("$(") != std::string::npos;
    const char* const files = choices.areFolders ? "_files -/" : choices.areFiles ? "_files" : "";
    if (choices.words.empty())
        return *files ? files : " ";
    if (!isCommand && !*files)
        return '(' + choices.words + ')';
    return "{compadd -- " + choices.words + (*files ? std::string("; ") + files : "") + '}';
}

/// @param joint  what may stand between the option and a value that it needs: "=" or, in the same word, "+"
std::string argumentSpec(const Option& option, const std::string& form, const char* joint)
{
    std::string text = "*" + form;
    if (option.value)
        text += option.isValueOptional ? "=-" : joint;
    text += '[' + marked(option.help, kSpecial) + ']';
    if (option.value)
        text += std::string(option.isValueOptional ? "::" : ":") + marked(option.value, kSpecial) + ':'
            + action(choicesOf(option.choices));
    return text;
}

/// @return a call of _arguments for a tool, or for a command of it, to which arguments can be added
std::string call(const char* beginning, const std::vector<Option>& all, const std::string& indent)
{
    std::string text = beginning;
    for (const Option& option : shownOptions(all)) {
        text += " \\\n" + indent + quoted(argumentSpec(option, withDashes(option), "="));
        if (option.letter != '\0')
            text += " \\\n" + indent + quoted(argumentSpec(option, std::string("-") + option.letter, "+"));
    }
    return text;
}

/// @return what follows the tool's options where it has commands
std::string commandsOf(const Completed& completed)
{
    std::string names;
    std::string cases;
    for (const Command& command : completed.commands) {
        names += std::string(names.empty() ? "" : " ") + command.name + "\\:" + '"'
            + marked(command.help, "\":\\") + '"';
        cases += std::string("    ") + command.name + ")\n        "
            + call("_arguments", command.options, "            ");
        const Choices arguments = choicesOf(command.argumentChoices);
        if (arguments.any())
            cases += " \\\n            " + quoted("*:argument:" + action(arguments));
        cases += "\n        ;;\n";
    }
    return " \\\n    " + quoted("1:command:((" + names + "))")
        + " \\\n    '*::argument:->argument' && return\n"
        + "[ \"$state\" = argument ] || return\ncase $words[1] in\n" + cases + "esac\n";
}

} // namespace

std::string completionForZsh(const Completed& completed)
{
    std::string script = "#compdef " + completed.tool + '\n' + introduction(completed, "zsh");
    if (!completed.commands.empty())
        return script + "local context state state_descr line\ntypeset -A opt_args\n"
            + call("_arguments -C", completed.options, "    ") + commandsOf(completed);
    script += call("_arguments", completed.options, "    ");
    const Choices arguments = choicesOf(completed.argumentChoices);
    if (arguments.any())
        script += " \\\n    " + quoted("*:argument:" + action(arguments));
    return script + '\n';
}

} // namespace tools
