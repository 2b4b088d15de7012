// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "files/Folders.h"

#include "names/Environment.h"
#include "names/Places.h"

#include <cerrno>
#include <cstdlib>
#include <sys/stat.h>

namespace orbis::files {

namespace {

std::string folderFromEnvironment(const char* variable, const char* standard)
{
    const char* folder = std::getenv(variable);
    return folder && *folder ? folder : standard;
}

} // namespace

std::string stateFolder()
{
    return folderFromEnvironment(names::kStateFolderVariable, names::kStateFolder);
}

std::string runtimeFolder()
{
    return folderFromEnvironment(names::kRuntimeFolderVariable, names::kRuntimeFolder);
}

bool makeFolders(const std::string& path)
{
    constexpr mode_t kMode = 0755;
    for (size_t end = path.find('/', 1);; end = path.find('/', end + 1)) {
        const std::string folder = path.substr(0, end);
        if (mkdir(folder.c_str(), kMode) != 0 && errno != EEXIST)
            return false;
        if (end == std::string::npos)
            break;
    }
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return false;
    if (!S_ISDIR(status.st_mode)) {
        errno = ENOTDIR;
        return false;
    }
    return true;
}

} // namespace orbis::files
