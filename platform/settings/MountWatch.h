// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Tells the main loop when something is mounted, moved or unmounted.
#pragma once

#include "files/FileDescriptor.h"

#include <Ecore.h>
#include <functional>

namespace orbis::settings {

/// Lives on the main loop, and tells nothing on a machine without a table of its mounts.
class MountWatch {
public:
    /// @param changed  called from the main loop; it may destroy the watch. Never called after the watch is
    ///                 gone.
    explicit MountWatch(std::function<void()> changed);
    MountWatch(const MountWatch&) = delete;
    MountWatch& operator=(const MountWatch&) = delete;
    ~MountWatch();

private:
    static unsigned char on_awake(void* data, Ecore_Fd_Handler* handler) noexcept;
    static unsigned char on_idle(void* data) noexcept;
    static void on_changed(void* data) noexcept;

    std::function<void()> m_changed;
    files::FileDescriptor m_waker;
    files::FileDescriptor m_table;
    Ecore_Fd_Handler* m_handler = nullptr;
    Ecore_Idle_Enterer* m_idle = nullptr;
    Ecore_Job* m_job = nullptr;
};

} // namespace orbis::settings
