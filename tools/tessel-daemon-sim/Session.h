// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// One run of the simulator.
#pragma once

#include "Daemon.h"
#include "EventLog.h"
#include "LineSource.h"
#include "Options.h"
#include "Player.h"
#include "Scenario.h"
#include "base/GlibHandles.h"

#include <deque>
#include <memory>
#include <string>

namespace DaemonSim {

enum ExitStatus {
    kExitOk = 0,
    kExitScenarioFailed = 1,
    kExitUsage = 2,
    kExitBus = 3,
};

/// Ties the parts together: plays the scenarios first, then what comes on standard input.
class Session {
public:
    /// @param steps  the scenarios' commands
    Session(EventLog& log, const Options& options, std::deque<Step> steps);
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// Runs until the input ends, a scenario fails, or a signal comes. @return the exit status.
    int run();

private:
    static gboolean onSignal(gpointer data);

    Daemon::Callbacks daemonCallbacks();
    void onFinished(Outcome outcome);
    bool addScenario(const std::string& name);
    void advance();
    bool playNext();
    bool playTypedLine();
    bool takeViewersAnswer();
    void endWhenIdle();
    void end(int status);

    EventLog& m_log;
    base::LoopPtr m_loop;
    std::deque<Step> m_steps;
    std::string m_place; ///< of the step under way; empty for a typed command
    bool m_stay;
    bool m_withViewer;
    bool m_isTyped = false; ///< the options' scenarios are over; what is played now was typed
    bool m_ready = false;
    bool m_advancing = false;
    bool m_ended = false;
    int m_status = kExitOk;
    Daemon m_daemon;
    Player m_player;
    std::unique_ptr<LineSource> m_input;
};

} // namespace DaemonSim
