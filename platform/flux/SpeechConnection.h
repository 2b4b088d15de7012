// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A conversation with the machine's speech service.
#pragma once

#include "base/Handles.h"

#include <libspeechd.h>
#include <signal.h>

#include <memory>
#include <string>

namespace orbis::flux {

struct Utterance {
    std::string text; ///< one line
    std::string language; ///< as the service writes them, for instance "pt-br"
};

/// Where the speech service is and who speaks, read from the environment once: what reads it later could meet
/// a thread that writes it.
struct SpeechService {
    SpeechService();

    std::string socket; ///< a path; empty when there is none, see `problem`
    std::string user;
    std::string problem; ///< why there is no path
};

/// Every call waits for the service's answer, for ever when the service is stuck in its midst: not for the
/// main loop. Used by one thread, which has all signals blocked.
class SpeechConnection {
public:
    /// @param signals  what the service has blocked when it is started here
    SpeechConnection(SpeechService service, const sigset_t& signals);

    /// Connects unless it is connected. A service that does not run is started, but only once each time that
    /// it is gone. @return whether there is a connection; else why not is in problem()
    bool open();
    bool isOpen() const { return m_connection != nullptr; }

    /// Closes the connection when they fail. @return whether the service accepted it
    bool say(const Utterance& utterance);
    bool cancel();

    const std::string& problem() const { return m_problem; }

private:
    bool connect(bool startsService);
    bool send(const std::string& command);

    SpeechService m_service;
    sigset_t m_signals;
    std::string m_problem;
    bool m_mayStart = true;
    base::CHandle<SPDConnection, spd_close> m_connection;
};

} // namespace orbis::flux
