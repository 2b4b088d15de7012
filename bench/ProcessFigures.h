// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a process has used, as the kernel tells it.
#pragma once

#include <sys/types.h>

namespace bench {

struct ProcessFigures {
    double processorSeconds; ///< of all its threads
    long pageFaults;
    long wakeUps; ///< how often its threads have gone to sleep of their own accord
};

/// @return all zero for a process that has gone
ProcessFigures figuresOf(pid_t process);
/// Looks on for so long.
double wakeUpsASecond(pid_t process, double seconds);
double proportionalMiB(pid_t process);
/// @return what it shares with nobody: other programs that use the same libraries do not change it
double ownMiB(pid_t process);
int descriptorsOf(pid_t process);
int threadsOf(pid_t process);

} // namespace bench
