// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a tool does on a terminal only: colours, and a line that tells how far it is.
#pragma once

#include <chrono>
#include <cstdio>
#include <string>

namespace tools {

/// @return whether colours may be written there: to a terminal that is not "dumb", unless NO_COLOR is set
bool mayColour(FILE* stream);

/// Writes "TOOL: PROBLEM" and a line end to standard error, the tool's name in colour where that may be.
void complain(const std::string& tool, const std::string& problem);

/// One line on standard error that is written over and over, while something takes longer than a second.
/// Nothing at all where standard error is no terminal.
class Progress {
public:
    Progress();
    ~Progress() { clear(); }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// @return whether anybody sees it
    bool isSeen() const { return m_isTerminal; }
    /// @param text  fits on a line of 80 characters
    void show(const std::string& text);
    /// Takes the line away, for something else to be written.
    void clear();

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
    bool m_isTerminal;
    bool m_isShown = false;
};

} // namespace tools
