// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// From a log of the field to a scenario that asks for the same.
#pragma once

#include <istream>
#include <optional>
#include <string>

namespace DaemonSim {

struct FromLogOptions {
    std::string file; ///< "-" for standard input
    bool redacts = false;
    size_t run = 0; ///< of the program, counted from 1; 0: the last
};

/// @param problem  out, what is wrong. @return the scenario, nothing when the log has none
std::optional<std::string> scenarioOf(std::istream& log, const FromLogOptions& options, std::string& problem);

/// Writes the scenario to standard output. @return the exit status; standard error has the reason of a
/// failure
int printScenarioOf(const FromLogOptions& options);

} // namespace DaemonSim
