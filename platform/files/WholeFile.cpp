// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "files/WholeFile.h"

#include "base/GlibHandles.h"
#include "files/Draft.h"

#include <glib.h>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace orbis::files {

namespace {

bool synchroniseFolder(const std::string& folder)
{
    const FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return descriptor && synchronise(descriptor.get());
}

/// New folders are durable once the folders that hold them are.
void synchroniseFoldersAbove(std::string folder)
{
    for (size_t end = folder.rfind('/'); end != std::string::npos && end > 0; end = folder.rfind('/')) {
        folder.resize(end);
        synchroniseFolder(folder);
    }
}

bool replaceOnce(const std::string& folder, const std::string& name,
    std::initializer_list<std::string_view> contents, const FileKind& kind)
{
    bool isNew = false;
    if (!makeDraftFolder(folder, isNew))
        return false;
    if (isNew && kind.durability == Durability::Durable)
        synchroniseFoldersAbove(folder);
    const std::string path = folder + '/' + name;
    Draft draft(folder, path, kind.mode);
    return draft && draft.write(contents) && draft.setTime(kind.time)
        && (kind.durability == Durability::Volatile || draft.synchronise()) && draft.moveTo(path);
}

/// @return whether another attempt may succeed where one has failed with @p error
bool canRecover(const std::string& folder, int error)
{
    // Somebody removed the folder in the middle of the write, or a draft was swept from under it because
    // the clock was set.
    if (error == ENOENT)
        return true;
    return error == EACCES && removeDraftFolder(folder); // made when the folder had other permissions
}

} // namespace

bool replaceFile(const std::string& folder, const std::string& name,
    std::initializer_list<std::string_view> contents, const FileKind& kind)
{
    sweepDrafts(folder);
    constexpr int kRetries = 3;
    bool replaced = replaceOnce(folder, name, contents, kind);
    for (int retry = 0; !replaced && retry < kRetries; ++retry) {
        const int error = errno;
        if (!canRecover(folder, error)) {
            errno = error;
            return false;
        }
        replaced = replaceOnce(folder, name, contents, kind);
    }
    return replaced && (kind.durability == Durability::Volatile || synchroniseFolder(folder));
}

bool removeFile(const std::string& folder, const std::string& name, Durability durability)
{
    if (unlink((folder + '/' + name).c_str()) != 0)
        return false;
    return durability == Durability::Volatile || synchroniseFolder(folder);
}

FileDescriptor openFile(const std::string& path, size_t limit, Links links, struct stat& status)
{
    const bool refusesLinks = links == Links::Refused;
    // To open a device, or a pipe that somebody waits at, would already do something to it: it is looked at
    // first, and again in case it was replaced in between.
    if (fstatat(AT_FDCWD, path.c_str(), &status, refusesLinks ? AT_SYMLINK_NOFOLLOW : 0) != 0)
        return {};
    FileDescriptor file;
    if (S_ISREG(status.st_mode)) {
        constexpr int kFlags = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;
        file = FileDescriptor(open(path.c_str(), refusesLinks ? kFlags | O_NOFOLLOW : kFlags));
        if (!file || fstat(file.get(), &status) != 0)
            return {};
    }
    if (S_ISREG(status.st_mode) && static_cast<size_t>(status.st_size) <= limit)
        return file;
    errno = S_ISREG(status.st_mode) ? EFBIG : EINVAL;
    return {};
}

ssize_t readBytes(const FileDescriptor& file, char* bytes, size_t size)
{
    size_t filled = 0;
    while (filled < size) {
        const ssize_t count = read(file.get(), bytes + filled, size - filled);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return -1;
        if (count == 0)
            break; // somebody cut the file short
        filled += static_cast<size_t>(count);
    }
    return static_cast<ssize_t>(filled);
}

std::optional<std::string> readInstalledFile(const std::string& path, size_t limit)
{
    struct stat status = {};
    const FileDescriptor file = openFile(path, limit, Links::Followed, status);
    std::string bytes(file ? static_cast<size_t>(status.st_size) : 0, '\0');
    const ssize_t count = file ? readBytes(file, bytes.data(), bytes.size()) : -1;
    if (count < 0)
        return std::nullopt;
    bytes.resize(static_cast<size_t>(count));
    return bytes;
}

std::string faultOfInstalledFile(const std::string& path, size_t size, const char* digest)
{
    const std::optional<std::string> bytes = readInstalledFile(path, size);
    if (!bytes)
        return g_strerror(errno);
    const base::GStr found {g_compute_checksum_for_data(
        G_CHECKSUM_MD5, reinterpret_cast<const guchar*>(bytes->data()), bytes->size())};
    return found && std::string_view {found.get()} == digest
        ? ""
        : "it is damaged, or not the one that belongs to this library";
}

} // namespace orbis::files
