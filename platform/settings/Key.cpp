// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "settings/Key.h"

#include "base/Handles.h"
#include "files/Folders.h"
#include "names/Places.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>

namespace orbis::settings {

namespace {

struct Area {
    std::string_view prefix; ///< of its keys
    std::string (*root)();
    const char* folder; ///< below the root
    files::Durability durability;
};

constexpr Area kAreas[] = {
    {"db/", files::stateFolder, names::kDurableSettings, files::Durability::Durable},
    {"memory/", files::runtimeFolder, names::kVolatileSettings, files::Durability::Volatile},
};

constexpr char kHexDigits[] = "0123456789ABCDEF";

bool startsWith(std::string_view text, std::string_view prefix)
{
    return text.substr(0, prefix.size()) == prefix;
}

bool isPlain(char letter)
{
    return (letter >= 'a' && letter <= 'z') || (letter >= 'A' && letter <= 'Z')
        || (letter >= '0' && letter <= '9') || letter == '_' || letter == '-' || letter == '.';
}

/// A leading dot is escaped too, which keeps those names free for the store's own use.
std::string escaped(std::string_view key)
{
    std::string name;
    for (const char letter : key) {
        if (isPlain(letter) && !(letter == '.' && name.empty())) {
            name += letter;
            continue;
        }
        const auto byte = static_cast<unsigned char>(letter);
        name += {'%', kHexDigits[byte >> 4U], kHexDigits[byte & 0xFU]};
    }
    return name;
}

/// @return the key part, or nothing for a name that escaped() cannot have made: such a file is not ours
std::optional<std::string> unescaped(std::string_view name)
{
    std::string key;
    for (size_t i = 0; i < name.size(); ++i) {
        if (name[i] != '%') {
            key += name[i];
            continue;
        }
        if (name.size() - i < 3 || name[i + 1] == '\0' || name[i + 2] == '\0')
            return std::nullopt;
        const char* high = std::strchr(kHexDigits, name[i + 1]);
        const char* low = std::strchr(kHexDigits, name[i + 2]);
        if (!high || !low)
            return std::nullopt;
        const auto letter = static_cast<char>((high - kHexDigits) * 16 + (low - kHexDigits));
        if (letter == '\0') // no key holds one: it would be listed by a name that is another's
            return std::nullopt;
        key += letter;
        i += 2;
    }
    return escaped(key) == name ? std::optional(key) : std::nullopt;
}

bool hasGoodSegments(std::string_view key)
{
    while (true) {
        const size_t end = key.find('/');
        const std::string_view segment = key.substr(0, end);
        if (segment.empty() || segment == "." || segment == "..")
            return false;
        if (end == std::string_view::npos)
            return true;
        key.remove_prefix(end + 1);
    }
}

/// @return false with errno when the area is there and cannot be read
bool findKeysOfArea(const Area& area, const std::string& prefix, std::vector<std::string>& keys)
{
    const std::string folder = area.root() + area.folder;
    const base::FolderPtr entries(opendir(folder.c_str()));
    if (!entries)
        return errno == ENOENT || errno == ENOTDIR;
    errno = 0;
    while (const dirent* entry = readdir(entries.get())) {
        const auto rest = unescaped(entry->d_name);
        if (!rest || !hasGoodSegments(*rest))
            continue;
        const std::string key = std::string(area.prefix) + *rest;
        struct stat status = {};
        if (startsWith(key, prefix)
            && fstatat(dirfd(entries.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0
            && S_ISREG(status.st_mode))
            keys.push_back(key);
        errno = 0;
    }
    return errno == 0;
}

} // namespace

std::optional<KeyFile> fileOfKey(const char* key)
{
    const std::string_view text = key ? key : "";
    for (const Area& area : kAreas) {
        if (!startsWith(text, area.prefix))
            continue;
        const std::string_view rest = text.substr(area.prefix.size());
        if (!hasGoodSegments(rest))
            break;
        std::string name = rest.size() > NAME_MAX ? std::string() : escaped(rest);
        if (name.empty() || name.size() > NAME_MAX) {
            errno = ENAMETOOLONG;
            return std::nullopt;
        }
        return KeyFile {area.root() + area.folder, std::move(name), area.durability};
    }
    errno = EINVAL;
    return std::nullopt;
}

std::optional<std::vector<std::string>> findKeys(const std::string& prefix)
{
    std::vector<std::string> keys;
    for (const Area& area : kAreas) {
        const size_t common = std::min(prefix.size(), area.prefix.size());
        if (area.prefix.substr(0, common) == prefix.substr(0, common) && !findKeysOfArea(area, prefix, keys))
            return std::nullopt;
    }
    std::sort(keys.begin(), keys.end());
    return keys;
}

} // namespace orbis::settings
