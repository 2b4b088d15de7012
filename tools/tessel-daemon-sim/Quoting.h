// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// How the words of a command are quoted.
#pragma once

#include <optional>
#include <string>

namespace DaemonSim {

/// Turns $'...' into what the shell's other quotes can say: \n, \r, \t, \', \\, \xHH (a byte) and \uHHHH in
/// it are the characters that they name. All else stays as it is.
/// @return nothing when there is no such character, or no end of the quote
std::optional<std::string> withoutDollarQuotes(const std::string& text);

/// @return the text as one word of a command, quoted where it needs to be; control characters as in $'...'
std::string toWord(const std::string& text);

} // namespace DaemonSim
