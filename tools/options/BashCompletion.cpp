// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "options/CompletionParts.h"

#include <algorithm>

namespace tools {

namespace {

std::string action(const Choices& choices)
{
    std::string text = "mapfile -t COMPREPLY < <(compgen";
    if (!choices.words.empty())
        text += " -W " + quoted(choices.words);
    text += choices.areFiles ? " -f" : choices.areFolders ? " -d" : "";
    text += " -- \"$word\")";
    return choices.areFiles || choices.areFolders ? "compopt -o filenames && " + text : text;
}

/// @return the option as it may be written, between the characters
std::string forms(const Option& option, const char* between)
{
    return withDashes(option) + (option.letter == '\0' ? "" : between + std::string("-") + option.letter);
}

/// @return a case statement that completes the values of the options that need one, "" where none does
std::string values(const std::vector<Option>& options, const std::string& indent)
{
    std::string lines;
    for (const Option& option : options) {
        const Choices choices = choicesOf(option.choices);
        if (option.value && !option.isValueOptional)
            lines.append(indent)
                .append("    ")
                .append(forms(option, " | "))
                .append(") ")
                .append(choices.any() ? action(choices) + "; " : "")
                .append("return ;;\n");
    }
    return lines.empty() ? "" : indent + "case $before in\n" + lines + indent + "esac\n";
}

Choices wordsOf(const std::vector<Option>& options)
{
    Choices all;
    for (const Option& option : options) {
        all.words.append(all.words.empty() ? "" : " ").append(forms(option, " "));
        const Choices choices = choicesOf(option.choices);
        if (option.isValueOptional && !choices.words.empty())
            all.words.append(" ").append(withDashes(option)).append("=").append(choices.words);
    }
    return all;
}

/// @return what completes the options and arguments of a tool, or of a command of it
std::string body(const std::vector<Option>& all, const Choices& arguments, const std::string& indent)
{
    const auto options = shownOptions(all);
    std::string lines = values(options, indent) + indent + "if [[ $word == -* ]]; then\n" + indent + "    "
        + action(wordsOf(options)) + '\n';
    if (arguments.any())
        lines += indent + "else\n" + indent + "    " + action(arguments) + '\n';
    return lines + indent + "fi\n";
}

/// @return what completes behind a command
std::string bodies(const std::vector<Command>& commands)
{
    std::string lines = "    if ((COMP_CWORD > 1)); then\n        case ${COMP_WORDS[1]} in\n";
    for (const Command& command : commands)
        lines.append("            ")
            .append(command.name)
            .append(")\n")
            .append(body(command.options, choicesOf(command.argumentChoices), std::string(16, ' ')))
            .append("                ;;\n");
    return lines + "        esac\n        return\n    fi\n";
}

} // namespace

std::string completionForBash(const Completed& completed)
{
    std::string function = "_" + completed.tool;
    std::replace(function.begin(), function.end(), '-', '_');
    Choices first = choicesOf(completed.argumentChoices);
    for (const Command& command : completed.commands)
        first.words.append(first.words.empty() ? "" : " ").append(command.name);
    return introduction(completed, "bash") + function + R"(()
{
    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    # --option=value is three words here.
    if [ "$word" = = ]; then word=; elif [ "$before" = = ]; then before=${COMP_WORDS[COMP_CWORD - 2]}; fi
    COMPREPLY=()
)" + (completed.commands.empty() ? "" : bodies(completed.commands))
        + body(completed.options, first, "    ") + "}\ncomplete -F " + function + ' ' + completed.tool + '\n';
}

} // namespace tools
