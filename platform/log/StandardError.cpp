// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "log/StandardError.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <fcntl.h>
#include <glib.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orbis::log {

namespace {

/// Once more, because the flags of the descriptor that we have are shared with other processes.
files::FileDescriptor openWithoutWaiting()
{
    return files::FileDescriptor(open("/proc/self/fd/2", O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
}

bool mayWait(mode_t mode)
{
    return S_ISFIFO(mode) || S_ISCHR(mode);
}

} // namespace

void ignoreBrokenPipes()
{
    struct sigaction action = {};
    if (sigaction(SIGPIPE, nullptr, &action) == 0 && action.sa_handler == SIG_DFL) {
        action.sa_handler = SIG_IGN;
        sigaction(SIGPIPE, &action, nullptr);
    }
}

void neverWaitForStandardError()
{
    struct stat status = {};
    if (fstat(STDERR_FILENO, &status) != 0 || !mayWait(status.st_mode))
        return;
    if (const files::FileDescriptor own = openWithoutWaiting())
        dup2(own.get(), STDERR_FILENO);
}

int StandardError::look()
{
    struct stat status = {};
    if (fstat(STDERR_FILENO, &status) != 0)
        return -errno;
    if (m_kind != Kind::None && status.st_dev == m_device && status.st_ino == m_inode)
        return 0;
    m_own = files::FileDescriptor();
    m_rest.clear();
    m_device = status.st_dev;
    m_inode = status.st_ino;
    classify(status.st_mode);
    return 0;
}

void StandardError::classify(mode_t mode)
{
    if (S_ISSOCK(mode)) {
        m_kind = g_log_writer_is_journald(STDERR_FILENO) ? Kind::Journal : Kind::Socket;
    } else if (mayWait(mode)) {
        m_own = openWithoutWaiting();
        m_kind = m_own ? Kind::Own : Kind::Shared;
    } else {
        m_kind = Kind::File;
    }
}

int StandardError::write(std::string_view line)
{
    if (!m_rest.empty()) {
        std::string rest;
        const int result = writeAll(m_rest, rest);
        if (result < 0)
            return result;
        m_rest = std::move(rest);
        if (!m_rest.empty())
            return -EAGAIN;
    }
    return writeAll(line, m_rest);
}

/// @param rest  set to what follows the part that was taken
int StandardError::writeAll(std::string_view line, std::string& rest)
{
    std::string_view left = line;
    while (!left.empty()) {
        const ssize_t written = writeSome(left);
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0 && left.size() == line.size())
            return -errno;
        if (written < 0) {
            rest = left;
            return 0;
        }
        left.remove_prefix(static_cast<size_t>(written));
    }
    return 0;
}

ssize_t StandardError::writeSome(std::string_view bytes) const
{
    switch (m_kind) {
    case Kind::None:
        errno = EBADF;
        return -1;
    case Kind::File:
        return ::write(STDERR_FILENO, bytes.data(), bytes.size());
    case Kind::Socket:
    case Kind::Journal:
        return send(STDERR_FILENO, bytes.data(), bytes.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
    case Kind::Own:
        return ::write(m_own.get(), bytes.data(), bytes.size());
    case Kind::Shared:
        break;
    }
    // A pipe that is ready takes so much at once, unless somebody else fills it in between.
    pollfd ready {STDERR_FILENO, POLLOUT, 0};
    if (poll(&ready, 1, 0) == 0) {
        errno = EAGAIN;
        return -1;
    }
    return ::write(STDERR_FILENO, bytes.data(), std::min(bytes.size(), size_t {PIPE_BUF}));
}

} // namespace orbis::log
