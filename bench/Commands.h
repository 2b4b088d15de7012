// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What tessel-bench can be asked for.
#pragma once

#include <string>

namespace bench {

struct Settings {
    std::string binaries; ///< the folder of the build's programs
    int runs = 30; ///< of what is repeated; popups of a soak
};

/// Each prints its tables on standard output. @return the process's exit status
int compare(const Settings& settings);
int kinds(const Settings& settings);
int weston(const Settings& settings);
int soak(const Settings& settings);

} // namespace bench
