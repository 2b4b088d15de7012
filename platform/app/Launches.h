// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// How a later launch hands its parameters to the instance that runs.
///
/// The launch connects to a socket of the instance, sends its parameters and waits. The instance answers when
/// its loop has nothing left to do and was not asked to end; it answers nothing when it ends, and the launch
/// then sees the connection break.
#pragma once

#include "files/FileDescriptor.h"

#include <Ecore.h>

#include <chrono>
#include <functional>
#include <list>
#include <string>
#include <vector>

namespace orbis::app {

using LaunchParameters = std::vector<std::string>; ///< each "key=value"

/// The instance's side. Main loop only.
class Launches {
public:
    using Handler = std::function<void(const LaunchParameters&)>;

    Launches() = default;
    ~Launches();
    Launches(const Launches&) = delete;
    Launches& operator=(const Launches&) = delete;

    /// Makes the socket: from now on a launch waits. @param folder  borrowed
    bool open(int folder, const std::string& name);

    /// Takes launches in, as Ecore's loop turns; to be ended with close() before Ecore is.
    void listen();

    /// Turns away whoever waits and comes.
    void close();

    /// Accepts the launches that have come in whole: each is told so, and handled. To be called only when
    /// all that came before them has been dealt with. @return whether there was one
    bool serve(const Handler& handler);

private:
    struct Guest {
        Launches* owner;
        files::FileDescriptor connection;
        Ecore_Fd_Handler* readable;
        std::string message; ///< empty until it is there
    };

    static Eina_Bool on_knock(void* data, Ecore_Fd_Handler*);
    static Eina_Bool on_message(void* data, Ecore_Fd_Handler*);

    files::FileDescriptor m_socket;
    Ecore_Fd_Handler* m_knocks = nullptr;
    std::list<Guest> m_guests;
};

/// What became of a launch that was handed over.
enum class HandOver {
    Accepted, ///< the instance serves it
    TurnedAway, ///< it ends, or is not ready to be asked
    Impossible, ///< it belongs to another user, or the parameters are too many
    TooLate, ///< it has not answered in time
};

/// The launch's side; blocks until there is an answer. @param folder  borrowed
HandOver handOver(int folder, const std::string& name, const LaunchParameters& parameters,
    std::chrono::steady_clock::time_point deadline);

} // namespace orbis::app
