// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "options/CompletionParts.h"

namespace tools {

namespace {

std::string fishQuoted(const std::string& text)
{
    return '\'' + marked(text, "'\\") + '\'';
}

/// @return the flags that say what may stand there
std::string action(const Choices& choices)
{
    std::string words = choices.words + (choices.areFolders ? " (__fish_complete_directories)" : "");
    for (size_t at = words.find("$("); at != std::string::npos; at = words.find("$("))
        words.erase(at, 1);
    return words.empty() ? "" : " -a " + fishQuoted(words);
}

/// @param beginning  of each line: the tool, and where the lines hold
std::string linesOf(const std::vector<Option>& options, const std::string& beginning)
{
    std::string lines;
    for (const Option& option : shownOptions(options)) {
        const Choices choices = choicesOf(option.choices);
        lines += beginning + " -l " + option.name;
        if (option.letter != '\0')
            lines.append(" -s ").append(1, option.letter);
        if (option.value && !option.isValueOptional)
            lines += choices.areFiles ? " -r -F" : " -x";
        lines += action(choices) + " -d " + fishQuoted(option.help) + '\n';
    }
    return lines;
}

std::string linesOf(const Choices& arguments, const std::string& beginning)
{
    return arguments.any() ? beginning + (arguments.areFiles ? " -F" : "") + action(arguments) + '\n' : "";
}

} // namespace

std::string completionForFish(const Completed& completed)
{
    const std::string beginning = "complete -c " + completed.tool;
    const Choices arguments = choicesOf(completed.argumentChoices);
    std::string script = introduction(completed, "fish");
    if (!arguments.areFiles)
        script += beginning + " -f\n";
    if (completed.commands.empty())
        return script + linesOf(completed.options, beginning) + linesOf(arguments, beginning);
    const std::string before = beginning + " -n __fish_use_subcommand";
    script += linesOf(completed.options, before);
    for (const Command& command : completed.commands) {
        script += before + " -a " + command.name + " -d " + fishQuoted(command.help) + '\n';
        const std::string behind =
            beginning + " -n '__fish_seen_subcommand_from " + std::string(command.name) + '\'';
        script += linesOf(command.options, behind) + linesOf(choicesOf(command.argumentChoices), behind);
    }
    return script;
}

} // namespace tools
