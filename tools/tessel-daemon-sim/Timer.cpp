// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Timer.h"

#include <cmath>
#include <utility>

namespace DaemonSim {

void Timer::start(double seconds, std::function<void()> action)
{
    stop();
    m_action = std::move(action);
    m_source = g_timeout_add(static_cast<guint>(std::lround(seconds * 1000)), onElapsed, this);
}

void Timer::stop()
{
    if (m_source != 0)
        g_source_remove(m_source);
    m_source = 0;
    m_action = {};
}

gboolean Timer::onElapsed(gpointer data)
{
    auto* self = static_cast<Timer*>(data);
    self->m_source = 0; // gone once this returns; the action may destroy the timer
    auto action = std::exchange(self->m_action, {});
    action();
    return G_SOURCE_REMOVE;
}

} // namespace DaemonSim
