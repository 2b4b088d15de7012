// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a shell is told of a tool, so that it completes its options.
#pragma once

#include "options/CommandLine.h"

namespace tools {

/// A tool as its command line knows it. All borrowed.
struct Completed {
    const std::string& tool;
    const std::vector<Option>& options; ///< those without a help are not for people
    const std::vector<Command>& commands;
    const std::string& argumentChoices;
};

/// @param shell  bash, zsh or fish
/// @return the script for it, nothing for another shell
std::optional<std::string> completionFor(const std::string& shell, const Completed& completed);

} // namespace tools
