// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Sources of the application events.
#pragma once

namespace orbis::app {

/// From here on a change of the language setting is applied to later texts and reported to whoever
/// registered for it. Needs a running Ecore.
void startEventSources();
void stopEventSources();

} // namespace orbis::app
