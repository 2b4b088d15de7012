#include "settings/KeyWatches.h"

#include "settings/FolderWatch.h"
#include "settings/Folders.h"
#include "settings/Key.h"

#include <algorithm>
#include <fcntl.h>
#include <map>
#include <memory>
#include <string>
#include <sys/stat.h>
#include <vector>

struct keynode {
    std::string name;
};

namespace orbis {

namespace {

/// The file of a key as it was last seen. Every write makes a new file; the descriptor keeps the old one's
/// inode number from being given to it, without which a change could look like none.
class SeenFile {
public:
    explicit SeenFile(const std::string& path)
        : m_pin(open(path.c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC))
    {
        // Out of descriptors, the change must not pass for a removal.
        const int result = m_pin ? fstat(m_pin.get(), &m_status) : lstat(path.c_str(), &m_status);
        m_exists = result == 0;
    }

    bool operator==(const SeenFile& other) const
    {
        const struct stat& mine = m_status;
        const struct stat& theirs = other.m_status;
        return m_exists == other.m_exists && mine.st_dev == theirs.st_dev && mine.st_ino == theirs.st_ino
            && mine.st_size == theirs.st_size && mine.st_mtim.tv_sec == theirs.st_mtim.tv_sec
            && mine.st_mtim.tv_nsec == theirs.st_mtim.tv_nsec;
    }

private:
    FileDescriptor m_pin;
    struct stat m_status = {};
    bool m_exists = false;
};

struct KeyWatch {
    keynode node;
    std::string path;
    vconf_callback_fn callback;
    void* userData;
    SeenFile seen;
    bool pending = false; ///< changed, not yet told
    bool removed = false;
};

struct WatchedArea {
    std::unique_ptr<FolderWatch> folder;
    std::vector<std::shared_ptr<KeyWatch>> watches;
};

/// By folder. Never destroyed: at the end of the process the main loop may be gone before us.
std::map<std::string, WatchedArea>& areas()
{
    static auto* s_areas = new std::map<std::string, WatchedArea>;
    return *s_areas;
}

void checkArea(const std::string& folder)
{
    const auto area = areas().find(folder);
    if (area == areas().end())
        return;
    const std::vector<std::shared_ptr<KeyWatch>> watches = area->second.watches; // callbacks change the list
    for (const auto& watch : watches) {
        SeenFile now(watch->path);
        if (now == watch->seen)
            continue;
        watch->seen = std::move(now);
        watch->pending = true;
    }
    // A callback may run the main loop, and a check in there tells of what is pending here.
    for (const auto& watch : watches) {
        if (!watch->removed && std::exchange(watch->pending, false))
            watch->callback(&watch->node, watch->userData);
    }
}

bool isWatched(const char* key, vconf_callback_fn callback)
{
    return std::any_of(areas().begin(), areas().end(), [=](const auto& area) {
        return std::any_of(area.second.watches.begin(), area.second.watches.end(),
            [=](const auto& watch) { return watch->node.name == key && watch->callback == callback; });
    });
}

} // namespace

bool addKeyWatch(const char* key, vconf_callback_fn callback, void* userData)
{
    const auto file = fileOfKey(key);
    if (!file || !callback || isWatched(key, callback) || !makeFolders(file->folder))
        return false;
    const auto known = areas().find(file->folder);
    std::unique_ptr<FolderWatch> folder;
    if (known == areas().end())
        folder = FolderWatch::create(file->folder, [path = file->folder] { checkArea(path); });
    if (known == areas().end() ? !folder : !known->second.folder->follow())
        return false;

    // Only now, with the folder watched, may the file be looked at: what comes after is noticed.
    auto watch = std::make_shared<KeyWatch>(
        KeyWatch {{key}, file->path(), callback, userData, SeenFile(file->path())});
    WatchedArea& area = areas()[file->folder];
    area.watches.push_back(std::move(watch));
    if (folder)
        area.folder = std::move(folder);
    return true;
}

bool removeKeyWatch(const char* key, vconf_callback_fn callback)
{
    if (!key)
        return false;
    for (auto area = areas().begin(); area != areas().end(); ++area) {
        auto& watches = area->second.watches;
        const auto found = std::find_if(watches.begin(), watches.end(),
            [=](const auto& watch) { return watch->node.name == key && watch->callback == callback; });
        if (found == watches.end())
            continue;
        (*found)->removed = true;
        watches.erase(found);
        if (watches.empty())
            areas().erase(area);
        return true;
    }
    return false;
}

} // namespace orbis

const char* vconf_keynode_get_name(const keynode_t* node)
{
    return node ? node->name.c_str() : nullptr;
}
