// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Tells the main loop when something happens in one folder.
#pragma once

#include "settings/FolderEvents.h"
#include "settings/MountWatch.h"

#include <functional>
#include <memory>
#include <string>

namespace orbis::settings {

/// Follows the folder's path, see FolderEvents; a folder that is not there yet, or may not be entered, is
/// waited for, and one that another file system is mounted over is left for that. Where the kernel cannot
/// watch (its limits are used up), the folder is looked at every two seconds until it can, which standard
/// error is told once. Lives on the main loop.
class FolderWatch {
public:
    /// Called from the main loop after anything happened there; it may destroy the watch. Never called after
    /// the watch is gone.
    using Changed = std::function<void(const FolderChange& change)>;

    /// @return null with errno when there can be no main loop
    static std::unique_ptr<FolderWatch> create(const std::string& folder, Changed changed);

    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch();

    /// Looks for the folder now; what happens in it after the call is not missed.
    void look();

private:
    FolderWatch(const std::string& folder, Changed changed);
    void listen();
    void tell(FolderChange change);
    static unsigned char on_events(void* data, Ecore_Fd_Handler* handler) noexcept;
    static unsigned char on_tick(void* data) noexcept;

    std::string m_folder;
    Changed m_changed;
    FolderEvents m_events;
    std::unique_ptr<MountWatch> m_mounts;
    bool m_isOther = false; ///< the folder is another than at the last tell()
    Ecore_Fd_Handler* m_eventsHandler = nullptr;
    Ecore_Timer* m_timer = nullptr; ///< while the kernel cannot watch
};

} // namespace orbis::settings
