// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A one-shot timer on the main loop.
#pragma once

#include <glib.h>

#include <functional>

namespace DaemonSim {

/// Runs one action after a delay. Destroying or stopping it guarantees that the action does not run.
class Timer {
public:
    Timer() = default;
    ~Timer() { stop(); }
    Timer(const Timer&) = delete;
    Timer& operator=(const Timer&) = delete;

    /// Replaces what was planned before. @param seconds 0 means on the next turn of the loop. The action
    /// may start this timer again or destroy it.
    void start(double seconds, std::function<void()> action);
    void stop();
    bool isRunning() const { return m_source != 0; }

private:
    static gboolean onElapsed(gpointer data);

    guint m_source = 0;
    std::function<void()> m_action;
};

} // namespace DaemonSim
