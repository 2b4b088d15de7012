// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Where a settings key lies on the disk.
#pragma once

#include "files/WholeFile.h"

#include <optional>
#include <string>
#include <vector>

namespace orbis::settings {

/// One file a key, named after the key without its area: "db/menu/language" is "menu%2Flanguage".
struct KeyFile {
    std::string folder; ///< of the area, the same for all its keys
    std::string name;
    files::Durability durability;

    std::string path() const { return folder + '/' + name; }
};

/// @return nothing, with errno, for null, a refused key, or one whose file name would be too long
std::optional<KeyFile> fileOfKey(const char* key);

/// Every key that begins with @p prefix, sorted.
/// @return nothing, with errno, when a folder that may hold some cannot be read
std::optional<std::vector<std::string>> findKeys(const std::string& prefix);

} // namespace orbis::settings
