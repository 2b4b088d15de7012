// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the application framework learns from the widget set's manager.
#pragma once

namespace orbis::app {

/// The application's window came on or off the screen, or got or lost the keys. Updates the status entry and
/// calls the pause and resume callbacks; nothing while no application runs.
void windowStateChanged(bool visible, bool focused);

} // namespace orbis::app
