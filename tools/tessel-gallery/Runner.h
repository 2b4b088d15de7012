// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// All combinations of a run, each in a process of its own.
#pragma once

#include "Options.h"

#include <json/value.h>

namespace gallery {

/// Runs as many processes at a time as there are cores. What they log goes to COMBINATION/log in the folder.
/// @param complete  out, false when a process failed; the others' parts are there all the same
/// @return the parts of the report, in the order of the combinations
Json::Value runAll(const Options& options, bool& complete);

} // namespace gallery
