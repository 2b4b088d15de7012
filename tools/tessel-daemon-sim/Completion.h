// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What may follow what has been typed.
#pragma once

#include <string>
#include <vector>

namespace DaemonSim {

struct Completion {
    std::string rest; ///< of the word that is being typed, as far as it is certain
    std::vector<std::string> candidates; ///< whole words
};

/// Completes the last word: a command, or what such a command takes there, such as a settings key or the name
/// of a scenario.
/// @param line  up to the cursor
Completion complete(const std::string& line);

} // namespace DaemonSim
