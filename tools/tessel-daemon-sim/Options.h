// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The command line.
#pragma once

#include "FromLog.h"
#include "Vocabulary.h"

#include <optional>
#include <string>
#include <vector>

namespace DaemonSim {

struct Options {
    std::vector<std::string> scenarios;
    std::optional<double> endAfterStop = 0.5; ///< seconds; nothing means never
    Behaviour behaviour;
    Via via = Via::Bus;
    bool fast = false; ///< shorter pauses
    bool timestamps = false;
    bool stay = false; ///< goes on after the end of standard input
    bool withViewer = false; ///< standard input says when the viewer has looked and pressed
    bool lists = false; ///< prints the names of the scenarios, and plays nothing
    FromLogOptions fromLog; ///< without a file nothing is made of a log
};

/// Answers --help, and ends the process then.
/// @return nothing when the arguments are wrong, which standard error is told
std::optional<Options> parseOptions(int argc, char** argv);

} // namespace DaemonSim
