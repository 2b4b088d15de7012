// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Owner of one file descriptor.
#pragma once

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace orbis::files {

class FileDescriptor {
public:
    FileDescriptor() = default;
    explicit FileDescriptor(int descriptor)
        : m_descriptor(descriptor)
    {
    }
    FileDescriptor(FileDescriptor&& other) noexcept
        : m_descriptor(std::exchange(other.m_descriptor, -1))
    {
    }
    FileDescriptor& operator=(FileDescriptor&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~FileDescriptor()
    {
        // The error that a caller is about to report is the one before the cleaning up.
        const int error = errno;
        if (m_descriptor >= 0)
            close(m_descriptor);
        errno = error;
    }

    explicit operator bool() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; } ///< borrowed; negative when there is none

private:
    int m_descriptor = -1;
};

} // namespace orbis::files
