// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Scenario files: commands that are known to be right before the first of them is played.
#pragma once

#include "Commands.h"

#include <deque>
#include <string>
#include <vector>

namespace DaemonSim {

class EventLog;

struct Step {
    Command command;
    std::string place; ///< file and line, for messages
};

/// @return the names of the scenarios that came with the program, sorted.
std::vector<std::string> shippedScenarios();

/// Adds the commands of a scenario to @p steps.
/// @param name  a file, or the name of a scenario that came with the program, without its ending
/// @return false when the file cannot be read or any line is wrong; each such line is reported.
bool loadScenario(EventLog& log, const std::string& name, std::deque<Step>& steps);

} // namespace DaemonSim
