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

} // namespace orbis::flux
