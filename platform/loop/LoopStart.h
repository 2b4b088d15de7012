// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The start of the toolkit's main loop.
#pragma once

namespace orbis::loop {

/// Starts Ecore, or counts one more user of it; to be undone with ecore_shutdown().
/// @return false when there can be no main loop
bool start();

} // namespace orbis::loop
