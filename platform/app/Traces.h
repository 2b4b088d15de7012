// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Files that exist only while the process runs.
#pragma once

#include <string>

namespace orbis::app {

/// A file that is removed with its owner, or by removeTraces() when the process ends in another way. Main
/// loop only; a handful at a time.
class Trace {
public:
    enum class Whose {
        Ours, ///< nobody else can have put a file there
        IfItNamesUs, ///< ours while the file begins with this process's number and a blank
    };

    /// @param path  of a file that is there, or may come; one that is longer than a path can be is not kept
    explicit Trace(const std::string& path, Whose whose = Whose::Ours);
    ~Trace();
    Trace(const Trace&) = delete;
    Trace& operator=(const Trace&) = delete;

private:
    int m_slot = -1;
};

/// Removes the files of all traces. May be called from a signal handler.
void removeTraces() noexcept;

} // namespace orbis::app
