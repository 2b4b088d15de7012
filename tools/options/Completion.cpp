// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "options/Completion.h"

#include <algorithm>

namespace tools {

namespace {

/// What completes a value, taken apart.
struct Choices {
    std::string words; ///< and what commands print, as "$(COMMAND)"
    bool areFiles = false;
    bool areFolders = false;

    bool any() const { return !words.empty() || areFiles || areFolders; }
};

/// Takes the word out of the text. @return whether it was there
bool take(std::string& text, const std::string& word)
{
    const size_t begin = text.find(word);
    if (begin == std::string::npos)
        return false;
    text.erase(begin, word.size());
    return true;
}

Choices choicesOf(std::string text)
{
    Choices choices;
    choices.areFiles = take(text, kFiles);
    choices.areFolders = take(text, kFolders);
    const size_t first = text.find_first_not_of(' ');
    const size_t last = text.find_last_not_of(' ');
    choices.words = first == std::string::npos ? "" : text.substr(first, last - first + 1);
    return choices;
}

/// Puts a backslash in front of each of the characters.
std::string marked(const std::string& text, const char* characters)
{
    std::string result;
    for (const char character : text) {
        if (std::string(characters).find(character) != std::string::npos)
            result += '\\';
        result += character;
    }
    return result;
}

std::string withDashes(const Option& option)
{
    return std::string("--") + option.name;
}

/// The options that people use.
std::vector<Option> shownOptions(const Completed& completed)
{
    std::vector<Option> options = {{"help", {}, "show help options", nullptr, false, 'h'}};
    std::copy_if(completed.options.begin(), completed.options.end(), std::back_inserter(options),
        [](const Option& option) { return option.help != nullptr; });
    return options;
}

std::string introduction(const Completed& completed, const char* shell)
{
    return "# Completes " + completed.tool + ". Made by: " + completed.tool + " --completion " + shell + "\n";
}

// ---- bash

/// Puts the text between single quotes, as bash and zsh read them.
std::string quoted(const std::string& text)
{
    std::string result = "'";
    for (const char character : text)
        result += character == '\'' ? "'\\''" : std::string(1, character);
    return result + '\'';
}

std::string bashAction(const Choices& choices)
{
    std::string action = "mapfile -t COMPREPLY < <(compgen";
    if (!choices.words.empty())
        action += " -W " + quoted(choices.words);
    action += choices.areFiles ? " -f" : choices.areFolders ? " -d" : "";
    action += " -- \"$word\")";
    return choices.areFiles || choices.areFolders ? "compopt -o filenames && " + action : action;
}

/// @return a line of a case statement for each option that needs a value
std::string bashValues(const std::vector<Option>& options)
{
    std::string lines;
    for (const Option& option : options) {
        const Choices choices = choicesOf(option.choices);
        if (option.value && !option.isValueOptional)
            lines += "        " + withDashes(option) + ") "
                + (choices.any() ? bashAction(choices) + "; " : "") + "return ;;\n";
    }
    return lines;
}

Choices bashOptions(const std::vector<Option>& options)
{
    Choices words;
    for (const Option& option : options) {
        words.words.append(words.words.empty() ? "" : " ").append(withDashes(option));
        if (option.letter != '\0')
            words.words.append(" -").append(1, option.letter);
        const Choices choices = choicesOf(option.choices);
        if (option.isValueOptional && !choices.words.empty())
            words.words.append(" ").append(withDashes(option)).append("=").append(choices.words);
    }
    return words;
}

std::string forBash(const Completed& completed)
{
    std::string function = "_" + completed.tool;
    std::replace(function.begin(), function.end(), '-', '_');
    const auto options = shownOptions(completed);
    const Choices arguments = choicesOf(completed.argumentChoices);
    Choices first = arguments;
    std::string afterCommand;
    if (!completed.commands.empty()) {
        first = {};
        for (const Command& command : completed.commands)
            first.words.append(first.words.empty() ? "" : " ").append(command.name);
        afterCommand = "    if ((COMP_CWORD > 1)); then\n        " + bashAction(arguments)
            + "\n        return\n    fi\n";
    }
    std::string script = introduction(completed, "bash") + function + "()\n{\n";
    script += R"(    local word=${COMP_WORDS[COMP_CWORD]} before=${COMP_WORDS[COMP_CWORD - 1]}
    # --option=value is three words here.
    if [ "$word" = = ]; then word=; elif [ "$before" = = ]; then before=${COMP_WORDS[COMP_CWORD - 2]}; fi
    COMPREPLY=()
    case $before in
)";
    script += bashValues(options) + "    esac\n" + afterCommand + "    if [[ $word == -* ]]; then\n        "
        + bashAction(bashOptions(options)) + "\n";
    if (first.any())
        script += "    else\n        " + bashAction(first) + "\n";
    return script + "    fi\n}\ncomplete -F " + function + ' ' + completed.tool + '\n';
}

// ---- zsh

std::string zshAction(const Choices& choices)
{
    const bool isCommand = choices.words.find("$(") != std::string::npos;
    const char* const files = choices.areFolders ? "_files -/" : choices.areFiles ? "_files" : "";
    if (choices.words.empty())
        return *files ? files : " ";
    if (!isCommand && !*files)
        return '(' + choices.words + ')';
    return "{compadd -- " + choices.words + (*files ? std::string("; ") + files : "") + '}';
}

std::string forZsh(const Completed& completed)
{
    constexpr char kSpecial[] = "[]:\\";
    std::string script = "#compdef " + completed.tool + '\n' + introduction(completed, "zsh") + "_arguments";
    for (const Option& option : shownOptions(completed)) {
        std::string spec = "*" + withDashes(option);
        if (option.value)
            spec += option.isValueOptional ? "=-" : "=";
        spec += '[' + marked(option.help, kSpecial) + ']';
        if (option.value)
            spec += std::string(option.isValueOptional ? "::" : ":") + marked(option.value, kSpecial) + ':'
                + zshAction(choicesOf(option.choices));
        script += " \\\n    " + quoted(spec);
    }
    std::string commands;
    for (const Command& command : completed.commands)
        commands += std::string(commands.empty() ? "" : " ") + command.name + "\\:" + '"'
            + marked(command.help, "\":\\") + '"';
    if (!commands.empty())
        script += " \\\n    " + quoted("1:command:((" + commands + "))");
    const Choices arguments = choicesOf(completed.argumentChoices);
    if (arguments.any())
        script += " \\\n    " + quoted("*:argument:" + zshAction(arguments));
    return script + '\n';
}

// ---- fish

std::string fishQuoted(const std::string& text)
{
    return '\'' + marked(text, "'\\") + '\'';
}

/// @return the flags that say what may stand there
std::string fishAction(const Choices& choices)
{
    std::string words = choices.words + (choices.areFolders ? " (__fish_complete_directories)" : "");
    for (size_t at = words.find("$("); at != std::string::npos; at = words.find("$("))
        words.erase(at, 1);
    return words.empty() ? "" : " -a " + fishQuoted(words);
}

std::string forFish(const Completed& completed)
{
    const std::string beginning = "complete -c " + completed.tool;
    const Choices arguments = choicesOf(completed.argumentChoices);
    std::string script = introduction(completed, "fish");
    if (!arguments.areFiles)
        script += beginning + " -f\n";
    for (const Option& option : shownOptions(completed)) {
        const Choices choices = choicesOf(option.choices);
        script += beginning + " -l " + option.name;
        if (option.letter != '\0')
            script.append(" -s ").append(1, option.letter);
        if (option.value && !option.isValueOptional)
            script += choices.areFiles ? " -r -F" : " -x";
        script += fishAction(choices) + " -d " + fishQuoted(option.help) + '\n';
    }
    for (const Command& command : completed.commands)
        script += beginning + " -n __fish_use_subcommand -a " + command.name + " -d "
            + fishQuoted(command.help) + '\n';
    if (arguments.any())
        script += beginning + (completed.commands.empty() ? "" : " -n 'not __fish_use_subcommand'")
            + fishAction(arguments) + '\n';
    return script;
}

} // namespace

std::optional<std::string> completionFor(const std::string& shell, const Completed& completed)
{
    if (shell == "bash")
        return forBash(completed);
    if (shell == "zsh")
        return forZsh(completed);
    if (shell == "fish")
        return forFish(completed);
    return std::nullopt;
}

} // namespace tools
