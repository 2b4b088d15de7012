/// Tells the main loop when something happens in one folder.
#ifndef ORBIS_FOLDER_WATCH_H
#define ORBIS_FOLDER_WATCH_H

#include "settings/FileDescriptor.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

struct _Ecore_Fd_Handler;

namespace orbis {

/// Follows the folder's path: when the folder, or one above it, is removed, moved or replaced, the watch
/// goes on with whatever comes to lie there. Lives on the main loop.
class FolderWatch {
public:
    /// @param changed  called from the main loop after anything happened there; it may destroy the watch.
    ///                 Never called after the watch is gone.
    /// @return null with errno when the folder cannot be watched
    static std::unique_ptr<FolderWatch> create(const std::string& folder, std::function<void()> changed);

    FolderWatch(const FolderWatch&) = delete;
    FolderWatch& operator=(const FolderWatch&) = delete;
    ~FolderWatch();

    /// Looks for the folder now; what happens in it after the call is not missed.
    /// @return false while there is no such folder; its coming is then waited for
    bool follow();

private:
    FolderWatch(const std::string& folder, std::function<void()> changed);
    bool add(const std::string& path, unsigned events, std::vector<int>& watches);
    bool drain();
    static unsigned char on_ready(void* data, _Ecore_Fd_Handler* handler) noexcept;

    std::string m_folder;
    std::vector<std::string> m_ancestors; ///< topmost first, the folder's parent last
    std::function<void()> m_changed;
    FileDescriptor m_inotify;
    std::vector<int> m_watches;
    _Ecore_Fd_Handler* m_handler = nullptr;
};

} // namespace orbis

#endif
