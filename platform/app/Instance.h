// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// One running instance of an application.
#pragma once

#include "app/Launches.h"
#include "app/Traces.h"
#include "files/FileDescriptor.h"

#include <optional>
#include <string>

namespace orbis::app {

/// The claim to be the one running instance of an application: a file lock in the runtime folder, which the
/// system drops with the process. Main loop only.
class Instance {
public:
    enum class Claim {
        First, ///< this process is the instance
        Handed, ///< another is, and serves the launch
        Denied, ///< another is, and the launch cannot be handed to it; standard error tells why
        Unknown, ///< the runtime folder cannot be used, which standard error tells: nobody can know
    };

    /// Tries to become the instance of @p application; hands @p parameters over when another process is.
    /// While that one can neither accept nor refuse, because it starts, ends or is blocked, this waits for
    /// whichever comes first: its answer or its end, but no longer than a minute, which is more than the two
    /// longest calls that can block it.
    Claim claim(const std::string& application, const LaunchParameters& parameters);

    /// The launches that come later; none when this is not the first.
    Launches& launches() { return m_launches; }

    /// Gives the claim up.
    void release();

private:
    enum class Lock { Taken, Busy, Foreign, Impossible };

    Lock tryLock(int folder, const std::string& name);
    void becomeFirst(int folder, const std::string& path, const std::string& application);

    files::FileDescriptor m_lock; // declared first: the files go while it is held
    std::optional<Trace> m_lockFile;
    std::optional<Trace> m_socketFile;
    Launches m_launches;
};

} // namespace orbis::app
