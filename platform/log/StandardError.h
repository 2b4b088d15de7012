// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Standard error, which others share and which may be read by nobody.
#pragma once

#include "files/FileDescriptor.h"

#include <string>
#include <string_view>
#include <sys/types.h>

namespace orbis::log {

/// A reader that went away must cost what is written to it, not the process. A handler that the application
/// has set stays. Children inherit it, unless they are started with signals of their own.
void ignoreBrokenPipes();

/// Gives this process a standard error of its own, to the same pipe or terminal, that refuses what its reader
/// does not take: libraries write there without looking. Other processes' stays as it is; programs that are
/// started later inherit this one.
void neverWaitForStandardError();

/// Writes lines to whatever standard error is at the time, without ever waiting for its reader. A line is
/// written whole or not at all: of one that fits only in part the rest is kept and written before the next.
/// The descriptor's own flags stay as they are, because other processes hold it, too. Not for two threads at
/// once.
class StandardError {
public:
    StandardError() = default;
    StandardError(const StandardError&) = delete;
    StandardError& operator=(const StandardError&) = delete;

    /// Looks at what standard error is now; to be called before each line.
    /// @return 0 or a negative errno value
    int look();

    /// @return whether it is the journal's, which takes messages in a better way
    bool isJournal() const { return m_kind == Kind::Journal; }

    /// @return the number of bytes that were taken, or a negative errno value when there were none: -EAGAIN
    /// for
    ///         a reader that does not keep up
    int write(std::string_view line);

private:
    enum class Kind {
        None,
        File, ///< does not wait
        Socket,
        Journal, ///< a socket of its
        Own, ///< a pipe or terminal, opened once more so that it does not wait
        Shared, ///< one that could not be
    };

    void classify(mode_t mode);
    int writeAll(std::string_view line, std::string& rest);
    ssize_t writeSome(std::string_view bytes) const;

    Kind m_kind = Kind::None;
    files::FileDescriptor m_own;
    dev_t m_device = 0; ///< of what was classified, as the inode
    ino_t m_inode = 0;
    std::string m_rest; ///< of a line that was begun
};

} // namespace orbis::log
