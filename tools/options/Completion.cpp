// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "options/CompletionParts.h"

#include <algorithm>
#include <iterator>

namespace tools {

/// Takes the word out of the text. @return whether it was there
static bool take(std::string& text, const std::string& word)
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

std::string quoted(const std::string& text)
{
    std::string result = "'";
    for (const char character : text)
        result += character == '\'' ? "'\\''" : std::string(1, character);
    return result + '\'';
}

std::string withDashes(const Option& option)
{
    return std::string("--") + option.name;
}

std::vector<Option> shownOptions(const std::vector<Option>& options)
{
    std::vector<Option> shown = {{"help", {}, "show help options", nullptr, false, 'h'}};
    std::copy_if(options.begin(), options.end(), std::back_inserter(shown),
        [](const Option& option) { return option.help != nullptr; });
    return shown;
}

std::string introduction(const Completed& completed, const char* shell)
{
    return "# Completes " + completed.tool + ". Made by: " + completed.tool + " --completion " + shell + "\n";
}

std::optional<std::string> completionFor(const std::string& shell, const Completed& completed)
{
    if (shell == "bash")
        return completionForBash(completed);
    if (shell == "zsh")
        return completionForZsh(completed);
    if (shell == "fish")
        return completionForFish(completed);
    return std::nullopt;
}

} // namespace tools
