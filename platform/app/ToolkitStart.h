// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Starting the toolkit as a service on a television wants it.
#pragma once

namespace orbis::app {

/// Starts Ecore; to be ended with ecore_shutdown(). @return false when it cannot
bool startLoop();

/// Starts what stands on it; to be ended with elm_shutdown(). @return false when it cannot
bool startToolkit(int argc, char** argv);

} // namespace orbis::app
