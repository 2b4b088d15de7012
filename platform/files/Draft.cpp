// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "files/Draft.h"

#include "base/Handles.h"
#include "files/Folders.h"

#include <cerrno>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <set>
#include <unistd.h>

namespace orbis::files {

namespace {

constexpr char kDraftFolder[] = "/.tmp";
constexpr mode_t kPermissionBits = 07777;

/// The owner can be given by root only, the group by its members. @return whether the group could be
bool give(int descriptor, uid_t owner, gid_t group)
{
    return fchown(descriptor, owner, group) == 0 || fchown(descriptor, static_cast<uid_t>(-1), group) == 0;
}

bool matchFolder(const std::string& drafts, const struct stat& folder)
{
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    struct stat status = {};
    if (lstat(drafts.c_str(), &status) != 0)
        return false;
    if (!S_ISDIR(status.st_mode)) {
        errno = ENOTDIR;
        return false;
    }
    const bool sameOwner = status.st_uid == folder.st_uid || geteuid() != 0;
    if (sameOwner && status.st_gid == folder.st_gid
        && ((status.st_mode ^ folder.st_mode) & kPermissionBits) == 0)
        return true;
    const FileDescriptor descriptor(open(drafts.c_str(), kFlags));
    if (!descriptor) // another user's; whether it serves will be seen
        return true;
    give(descriptor.get(), folder.st_uid, folder.st_gid);
    fchmod(descriptor.get(), folder.st_mode & kPermissionBits);
    return true;
}

/// A time for each write that none before had: the file system's own clock ticks too rarely to tell two
/// writes apart, and a file can get the number of one that was removed.
timespec nextTime()
{
    constexpr long kSecond = 1000000000;
    static timespec s_last = {};
    timespec now = {};
    clock_gettime(CLOCK_REALTIME, &now);
    if (now.tv_sec < s_last.tv_sec || (now.tv_sec == s_last.tv_sec && now.tv_nsec <= s_last.tv_nsec)) {
        now = s_last;
        ++now.tv_nsec;
        if (now.tv_nsec == kSecond)
            now = {now.tv_sec + 1, 0};
    }
    s_last = now;
    return now;
}

} // namespace

bool synchronise(int descriptor)
{
    // Some file systems have nothing to synchronise for a folder and say so with EINVAL.
    return fsync(descriptor) == 0 || errno == EINVAL;
}

bool makeDraftFolder(const std::string& folder, bool& isNew)
{
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0) {
        if (!makeFolders(folder) || stat(folder.c_str(), &status) != 0)
            return false;
        isNew = true;
    }
    const std::string drafts = folder + kDraftFolder;
    if (mkdir(drafts.c_str(), status.st_mode & kPermissionBits) != 0 && errno != EEXIST)
        return false;
    return matchFolder(drafts, status);
}

bool removeDraftFolder(const std::string& folder)
{
    return rmdir((folder + kDraftFolder).c_str()) == 0;
}

void sweepDrafts(const std::string& folder)
{
    constexpr time_t kStaleSeconds = 60;
    static std::set<std::string> s_swept;
    if (!s_swept.insert(folder).second)
        return;
    const base::FolderPtr drafts(opendir((folder + kDraftFolder).c_str()));
    if (!drafts)
        return;
    const time_t now = time(nullptr);
    while (const dirent* entry = readdir(drafts.get())) {
        struct stat status = {};
        if (fstatat(dirfd(drafts.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0
            && S_ISREG(status.st_mode) && now - status.st_mtime > kStaleSeconds)
            unlinkat(dirfd(drafts.get()), entry->d_name, 0);
    }
}

Draft::Draft(const std::string& folder, const std::string& target, mode_t mode)
{
    static unsigned s_count = 0;
    constexpr mode_t kSecret = 0600; // until it has the mode of what it replaces
    constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    struct stat old = {};
    const bool replaces = lstat(target.c_str(), &old) == 0 && S_ISREG(old.st_mode);
    do { // a name can be taken: by a process of another PID namespace, or one that died
        m_path = folder + kDraftFolder + '/' + std::to_string(getpid()) + '-' + std::to_string(s_count++);
        m_descriptor = FileDescriptor(open(m_path.c_str(), kFlags, replaces ? kSecret : mode));
    } while (!m_descriptor && errno == EEXIST);
    if (!m_descriptor || adopt(folder, replaces ? &old : nullptr))
        return;
    const int error = errno;
    unlink(m_path.c_str());
    m_descriptor = FileDescriptor();
    errno = error;
}

Draft::~Draft()
{
    const int error = errno;
    if (m_descriptor && !m_moved)
        unlink(m_path.c_str());
    errno = error;
}

bool Draft::adopt(const std::string& folder, const struct stat* old)
{
    struct stat mine = {};
    struct stat above = {};
    if (fstat(m_descriptor.get(), &mine) != 0 || stat(folder.c_str(), &above) != 0)
        return false;
    if (!old) {
        if ((above.st_mode & S_ISGID) != 0 && mine.st_gid != above.st_gid)
            give(m_descriptor.get(), mine.st_uid, above.st_gid);
        return true;
    }
    if (mine.st_uid != old->st_uid || mine.st_gid != old->st_gid)
        give(m_descriptor.get(), old->st_uid, old->st_gid);
    return fchmod(m_descriptor.get(), old->st_mode & kPermissionBits) == 0;
}

bool Draft::write(std::initializer_list<std::string_view> contents)
{
    for (std::string_view part : contents) {
        while (!part.empty()) {
            const ssize_t written = ::write(m_descriptor.get(), part.data(), part.size());
            if (written < 0 && errno == EINTR)
                continue;
            if (written < 0)
                return false;
            part.remove_prefix(static_cast<size_t>(written));
        }
    }
    return true;
}

bool Draft::setTime(const std::optional<timespec>& time)
{
    const timespec stamp = time ? *time : nextTime();
    const timespec times[2] = {stamp, stamp};
    return futimens(m_descriptor.get(), times) == 0;
}

bool Draft::moveTo(const std::string& path)
{
    m_moved = rename(m_path.c_str(), path.c_str()) == 0;
    return m_moved;
}

} // namespace orbis::files
