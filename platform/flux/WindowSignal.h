// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Signals to the window.
#pragma once

namespace orbis::flux {

/// Says in the log when they will not arrive, because the program was linked in the wrong order.
void checkSearchOrder();

} // namespace orbis::flux
