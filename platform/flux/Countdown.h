// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// How long a popup will still be up, as the viewer sees it.
#pragma once

#include "flux/PopupRecord.h"

namespace orbis::flux {

/// Shows what is left, and tells the window's host of it when it is less than the whole, whenever the
/// application tells it by the signal "countdown,LEFT,WHOLE" on the popup, both in seconds; other forms are
/// ignored.
void followCountdown(PopupRecord& record);

/// Draws what is left at once, where @p emission is such a signal and has just been emitted on @p popup, and
/// the popup is on an X server's screen. The toolkit would wait for a clock of its own to tick, and let that
/// run on: ten wake-ups a second.
/// @param emission  nullable
void drawCountdown(Evas_Object* popup, const char* emission);

} // namespace orbis::flux
