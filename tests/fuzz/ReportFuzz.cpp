// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Logs of the field, of which the simulator makes scenarios.
#include "Commands.h"
#include "FromLog.h"
#include "Fuzz.h"

#include <sstream>

void fuzz::tryInput(Input& input)
{
    const bool redacts = input.number(2) == 1;
    std::istringstream log(input.rest());
    std::string problem;
    const auto text = DaemonSim::scenarioOf(log, {"", redacts, 0}, problem);
    fuzz::demand(text.has_value() == problem.empty(), "a scenario or a reason", problem);
    std::istringstream lines(text.value_or(""));
    for (std::string line; std::getline(lines, line);) {
        const auto parsed = DaemonSim::parseLine(line);
        fuzz::demand(
            parsed.error.empty(), "each line of it is a command or a comment", line + "\n" + parsed.error);
    }
}
