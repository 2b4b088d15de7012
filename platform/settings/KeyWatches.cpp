// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "settings/KeyWatches.h"

#include "files/Folders.h"
#include "settings/FolderWatch.h"
#include "settings/Key.h"

#include <algorithm>
#include <cerrno>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <vector>

struct keynode {
    std::string name;
};

namespace orbis::settings {

namespace {

/// The file of a key as it was last seen. Every write makes a new file, which can get the number of one that
/// was removed; but no two writes give the same time, see Draft::setTime().
class SeenFile {
public:
    explicit SeenFile(const std::string& path)
        : m_exists(lstat(path.c_str(), &m_status) == 0)
    {
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
    struct stat m_status = {};
    bool m_exists;
};

struct KeyWatch {
    keynode node;
    std::string path;
    vconf_callback_fn callback;
    void* userData;
    SeenFile seen;
    unsigned long number; ///< callbacks are called in the order of their registration
    bool pending = false; ///< changed, not yet told
    bool removed = false;
};

using Watches = std::vector<std::shared_ptr<KeyWatch>>;

struct WatchedArea {
    std::unique_ptr<FolderWatch> folder;
    std::map<std::string, Watches> watches; ///< by the name of the key's file
};

/// By folder. Never destroyed: at the end of the process the main loop may be gone before us.
std::map<std::string, WatchedArea>& areas()
{
    static auto* s_areas = new std::map<std::string, WatchedArea>;
    return *s_areas;
}

/// @return the watches that a change can concern, in the order of their registration
Watches findConcerned(const WatchedArea& area, const FolderChange& change)
{
    Watches result;
    if (change.everything) {
        for (const auto& [name, watches] : area.watches)
            result.insert(result.end(), watches.begin(), watches.end());
    } else {
        for (const std::string& name : change.names) {
            const auto found = area.watches.find(name);
            if (found != area.watches.end())
                result.insert(result.end(), found->second.begin(), found->second.end());
        }
    }
    std::sort(result.begin(), result.end(),
        [](const auto& left, const auto& right) { return left->number < right->number; });
    return result;
}

void checkArea(const std::string& folder, const FolderChange& change)
{
    const auto area = areas().find(folder);
    if (area == areas().end())
        return;
    const Watches watches = findConcerned(area->second, change); // callbacks change the area
    for (const auto& watch : watches) {
        const SeenFile now(watch->path);
        if (now == watch->seen)
            continue;
        watch->seen = now;
        watch->pending = true;
    }
    // A callback may run the main loop, and a check in there tells of what is pending here.
    for (const auto& watch : watches) {
        if (!watch->removed && std::exchange(watch->pending, false))
            watch->callback(&watch->node, watch->userData);
    }
}

/// Where a watch is kept.
struct Position {
    std::map<std::string, WatchedArea>::iterator area;
    std::map<std::string, Watches>::iterator name;
    Watches::iterator watch;
};

std::optional<Position> findWatch(const char* key, const std::string& name, vconf_callback_fn callback)
{
    // The folder that the key lies in now may be another than the one it was watched in.
    for (auto area = areas().begin(); area != areas().end(); ++area) {
        const auto found = area->second.watches.find(name);
        if (found == area->second.watches.end())
            continue;
        const auto watch = std::find_if(found->second.begin(), found->second.end(),
            [=](const auto& it) { return it->node.name == key && it->callback == callback; });
        if (watch != found->second.end())
            return Position {area, found, watch};
    }
    return std::nullopt;
}

} // namespace

bool addKeyWatch(const char* key, vconf_callback_fn callback, void* userData)
{
    static unsigned long s_count = 0;
    const auto file = fileOfKey(key);
    if (!file)
        return false;
    if (!callback || findWatch(key, file->name, callback)) {
        errno = callback ? EEXIST : EINVAL;
        return false;
    }
    files::makeFolders(file->folder); // where that may not be, the folder is waited for
    const auto known = areas().find(file->folder);
    std::unique_ptr<FolderWatch> folder;
    if (known != areas().end())
        known->second.folder->look();
    else
        folder = FolderWatch::create(
            file->folder, [path = file->folder](const FolderChange& change) { checkArea(path, change); });
    if (known == areas().end() && !folder)
        return false;

    // Only now, with the folder watched, may the file be looked at: what comes after is noticed.
    auto watch = std::make_shared<KeyWatch>(
        KeyWatch {{key}, file->path(), callback, userData, SeenFile(file->path()), s_count++});
    WatchedArea& area = areas()[file->folder];
    area.watches[file->name].push_back(std::move(watch));
    if (folder)
        area.folder = std::move(folder);
    return true;
}

bool removeKeyWatch(const char* key, vconf_callback_fn callback)
{
    const auto file = fileOfKey(key);
    const auto found = file ? findWatch(key, file->name, callback) : std::nullopt;
    if (!found)
        return false;
    (*found->watch)->removed = true;
    found->name->second.erase(found->watch);
    if (found->name->second.empty())
        found->area->second.watches.erase(found->name);
    if (found->area->second.watches.empty())
        areas().erase(found->area);
    return true;
}

} // namespace orbis::settings

const char* vconf_keynode_get_name(const keynode_t* node)
{
    return node ? node->name.c_str() : nullptr;
}
