/// The command line.
#pragma once

#include "Commands.h"

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
    bool help = false;
};

/// @return the options, or nothing with the reason in @p error.
std::optional<Options> parseOptions(int argc, char** argv, std::string& error);

/// @return what --help prints.
std::string usage();

} // namespace DaemonSim
