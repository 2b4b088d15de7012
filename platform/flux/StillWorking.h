// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a viewer who only listens is told while he has to wait.
#pragma once

#include <Ecore.h>

#include <functional>

namespace orbis::flux {

/// Calls back when nothing has been heard for a while: after ten seconds first, then every thirty. Wakes the
/// program for nothing else. Main loop only.
class StillWorking {
public:
    explicit StillWorking(std::function<void()> say)
        : m_say(std::move(say))
    {
    }
    ~StillWorking() { end(); }
    StillWorking(const StillWorking&) = delete;
    StillWorking& operator=(const StillWorking&) = delete;

    /// Something is being said now: the wait begins anew, or for the first time.
    void heard();
    /// There is nothing to wait for any more.
    void end();

private:
    static Eina_Bool on_silence(void* data);

    void wait();

    std::function<void()> m_say;
    Ecore_Timer* m_timer = nullptr; ///< cleared when it ends itself
    bool m_hasSaid = false; ///< since the wait began
};

} // namespace orbis::flux
