// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/Instance.h"

#include "files/Folders.h"
#include "names/Places.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <thread>

namespace orbis::app {

namespace {

/// A call to a daemon on the bus may block for 25 seconds, and a start makes two.
constexpr std::chrono::seconds kPatience {60};

/// A start that waits for another process looks this often whether it has ended.
constexpr std::chrono::milliseconds kLook {20};

constexpr mode_t kLockMode = 0644; ///< other users may ask for it, or they could not tell whether it is held

/// @return whether @p lock is still what its name leads to: the one who held it last removes it
bool isCurrent(int lock, int folder, const std::string& name)
{
    struct stat held = {};
    struct stat named = {};
    return fstat(lock, &held) == 0 && fstatat(folder, name.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0
        && held.st_dev == named.st_dev && held.st_ino == named.st_ino;
}

files::FileDescriptor openLock(int folder, const std::string& name)
{
    constexpr int kFlags = O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC;
    files::FileDescriptor lock(openat(folder, name.c_str(), kFlags | O_CREAT, kLockMode));
    // Somebody else's file in a folder that everybody may write to: making it is refused, asking is not.
    if (!lock && errno == EACCES) {
        files::FileDescriptor existing(openat(folder, name.c_str(), kFlags));
        if (existing || errno != ENOENT)
            return existing;
        errno = EROFS; // there is none, and none can be made
    }
    return lock;
}

Instance::Claim deny(const std::string& application, const char* reason)
{
    fprintf(stderr, "%s runs already, %s\n", application.c_str(), reason);
    return Instance::Claim::Denied;
}

Instance::Claim cannotTell(const std::string& application, const std::string& path, int error)
{
    fprintf(stderr, "%s cannot tell whether it runs already: %s: %s\n", application.c_str(), path.c_str(),
        strerror(error));
    return Instance::Claim::Unknown;
}

/// @return whether the folder is there, but for others
bool isForeign(const std::string& path)
{
    return access(path.c_str(), X_OK) != 0 && errno == EACCES;
}

} // namespace

Instance::Lock Instance::tryLock(int folder, const std::string& name)
{
    for (;;) {
        files::FileDescriptor lock = openLock(folder, name);
        if (!lock)
            return errno == EACCES || errno == EPERM ? Lock::Foreign : Lock::Impossible;
        if (flock(lock.get(), LOCK_EX | LOCK_NB) != 0)
            return errno == EWOULDBLOCK ? Lock::Busy : Lock::Impossible;
        if (!isCurrent(lock.get(), folder, name))
            continue;
        m_lock = std::move(lock);
        return Lock::Taken;
    }
}

void Instance::becomeFirst(int folder, const std::string& path, const std::string& application)
{
    m_lockFile.emplace(path + '/' + application + ".lock");
    m_socketFile.emplace(path + '/' + application + ".socket");
    if (!m_launches.open(folder, application + ".socket"))
        fprintf(stderr, "%s cannot take later launches: %s\n", application.c_str(), strerror(errno));
}

Instance::Claim Instance::claim(const std::string& application, const LaunchParameters& parameters)
{
    const std::string path = files::runtimeFolder() + names::kLaunches;
    const files::FileDescriptor folder(
        files::makeFolders(path) ? open(path.c_str(), O_DIRECTORY | O_PATH | O_CLOEXEC) : -1);
    if (!folder) {
        const int error = errno;
        return isForeign(path) ? deny(application, "or another user's folder is in its place")
                               : cannotTell(application, path, error);
    }
    const std::string file = application + ".lock";
    const auto deadline = std::chrono::steady_clock::now() + kPatience;
    for (;;) {
        const Lock lock = tryLock(folder.get(), file);
        if (lock == Lock::Taken) {
            becomeFirst(folder.get(), path, application);
            return Claim::First;
        }
        if (lock == Lock::Impossible)
            return cannotTell(application, std::string(path).append("/").append(file), errno);
        const HandOver result = lock == Lock::Foreign
            ? HandOver::Impossible
            : handOver(folder.get(), application + ".socket", parameters, deadline);
        if (result == HandOver::Accepted)
            return Claim::Handed;
        if (result == HandOver::Impossible)
            return deny(application, "and cannot be given this launch");
        if (result == HandOver::TooLate || std::chrono::steady_clock::now() >= deadline)
            return deny(application, "but does not answer");
        std::this_thread::sleep_for(kLook);
    }
}

void Instance::release()
{
    m_launches.close();
    m_socketFile.reset();
    m_lockFile.reset();
    m_lock = files::FileDescriptor();
}

} // namespace orbis::app
