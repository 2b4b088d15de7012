// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What becomes of the managed window when the application lowers it.
#pragma once

#include "base/EflHandles.h"

#include <functional>

namespace orbis::flux {

/// Takes a lowered window off the screen: while a popup is still up another one usually follows at once, and
/// hiding in between would blink and bounce the focus, so that waits until the loop is idle. When none is up,
/// a blocking call may follow that would leave a stale picture, so the window goes at once. Must go before
/// its window. Main loop only.
class Lowering {
public:
    /// @param hidden  called whenever the window has been hidden by this
    Lowering(Evas_Object* window, std::function<void()> hidden);
    Lowering(const Lowering&) = delete;
    Lowering& operator=(const Lowering&) = delete;

    void lowered();
    void raised() { m_hideJob.reset(); }

private:
    static void on_hideJob(void* data);

    void hideNow();
    void emptyNow();

    Evas_Object* m_window; ///< borrowed
    std::function<void()> m_hidden;
    bool m_hides; ///< a window that cannot be mapped again is only emptied
    base::JobPtr m_hideJob; ///< let go by the job itself
};

} // namespace orbis::flux
