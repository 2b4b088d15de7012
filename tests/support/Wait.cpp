// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Wait.h"

#include "Handles.h"

namespace tv {

bool waitUntil(const std::function<bool()>& condition, Milliseconds limit)
{
    // Conditions that no event announces (a file, a window) are looked at this often.
    constexpr guint kLookMs = 15;
    const auto end = std::chrono::steady_clock::now() + limit;
    const Source look(g_timeout_add(
        kLookMs, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr));
    while (!condition()) {
        if (std::chrono::steady_clock::now() >= end)
            return false;
        g_main_context_iteration(nullptr, TRUE);
    }
    return true;
}

bool stays(const std::function<bool()>& condition, Milliseconds duration)
{
    return !waitUntil([&] { return !condition(); }, duration);
}

} // namespace tv
