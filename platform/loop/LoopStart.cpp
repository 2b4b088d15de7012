// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "loop/LoopStart.h"

#include <Ecore.h>

#include <cstdlib>

namespace orbis::loop {

/// Told of no folder for sockets the toolkit makes one in the home directory, and ends the process when it
/// cannot. It asks once, and makes nothing in the folder that it is told. Children are to get what was there.
bool start()
{
    constexpr const char* kFolderVariable = "XDG_RUNTIME_DIR";
    const bool isAbsent = !getenv(kFolderVariable);
    if (isAbsent)
        setenv(kFolderVariable, "/", 1);
    const bool isStarted = ecore_init() > 0;
    if (isAbsent)
        unsetenv(kFolderVariable);
    return isStarted;
}

} // namespace orbis::loop
