// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Calls of the program's service, one a turn of the loop.
#pragma once

#include <gio/gio.h>

#include <deque>
#include <functional>

namespace TesselUI {

/// A caller may send hundreds of calls at once, and the bus library hands all of them over in one turn of the
/// loop. Deleted widgets stay until the turn's end, and each further popup is built among them: served in one
/// turn the cost grows with the square of the number, while timers, signals, settings and keys wait. So the
/// first call of a turn is served at once, and each further one in a turn of its own, in the order of their
/// arrival. Main loop only.
class CallQueue {
public:
    /// @param serve  answers a call that it takes over; may not delete the queue
    explicit CallQueue(std::function<void(GDBusMethodInvocation*)> serve);

    /// Refuses what is left, as the bus library does with calls to an object that is gone.
    ~CallQueue();
    CallQueue(const CallQueue&) = delete;
    CallQueue& operator=(const CallQueue&) = delete;

    /// @param call  taken over
    void add(GDBusMethodInvocation* call);

    /// Goes on with the calls of @p other.
    void takeOver(CallQueue& other);

    /// Refuses what is left.
    void refuseAll();

private:
    static gboolean on_turn(gpointer self);
    void waitForTurn();

    std::function<void(GDBusMethodInvocation*)> m_serve;
    std::deque<GDBusMethodInvocation*> m_calls; ///< owned
    guint m_turn = 0; ///< source of the next turn; 0 when a call is served at once
};

} // namespace TesselUI
