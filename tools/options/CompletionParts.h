// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the shells' scripts have in common.
#pragma once

#include "options/Completion.h"

#include <string>
#include <vector>

namespace tools {

/// What completes a value, taken apart.
struct Choices {
    std::string words; ///< and what commands print, as "$(COMMAND)"
    bool areFiles = false;
    bool areFolders = false;

    bool any() const { return !words.empty() || areFiles || areFolders; }
};

/// @param text  as an option's choices
Choices choicesOf(std::string text);

/// Puts a backslash in front of each of the characters.
std::string marked(const std::string& text, const char* characters);

/// Puts the text between single quotes, as bash and zsh read them.
std::string quoted(const std::string& text);

std::string withDashes(const Option& option);

/// @return --help and those of the options that people use
std::vector<Option> shownOptions(const std::vector<Option>& options);

/// @return the line that says whose script it is
std::string introduction(const Completed& completed, const char* shell);

std::string completionForBash(const Completed& completed);
std::string completionForZsh(const Completed& completed);
std::string completionForFish(const Completed& completed);

} // namespace tools
