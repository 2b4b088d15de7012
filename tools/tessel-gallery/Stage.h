// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// One start of the program's own user interface, off-screen.
#pragma once

#include "Options.h"
#include "Report.h"

namespace gallery {

/// Pictures all states for one combination. To be called once in a process, which has started nothing of the
/// toolkit before: settings, language and screen are the process's own. Pictures go into the folder
/// @p folder/COMBINATION, which is made.
/// @return what was pictured; empty when the user interface did not start
Report perform(const Combination& combination, const Options& options);

} // namespace gallery
