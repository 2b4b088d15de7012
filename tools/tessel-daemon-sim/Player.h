// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Plays one command after the other.
#pragma once

#include "Commands.h"
#include "Timer.h"

#include <functional>
#include <map>
#include <set>
#include <vector>

namespace DaemonSim {

class Daemon;
class EventLog;
struct Options;

enum class Outcome {
    Done,
    TimedOut, ///< a wait was in vain
    Failed, ///< a setting could not be written; the reason is on standard error
    Quit,
};

class Player {
public:
    /// @param onFinished  called with what became of a command, from inside play() or later
    /// @param onScenario  called to have the scenario of that name played next; false when that cannot be
    /// done
    Player(EventLog& log, Daemon& daemon, const Options& options, std::function<void(Outcome)> onFinished,
        std::function<bool(const std::string&)> onScenario);

    /// Plays a command. Only while isBusy() is false.
    void play(const Command& command);
    bool isBusy() const { return m_busy; }

    /// @return whether a command goes on only when the viewer has looked or pressed.
    bool isAwaitingViewer() const { return m_awaitsViewer; }
    void goOn();

    /// Tells of something that happened, so that a wait, present or later, can be fulfilled.
    void note(const Event& event);

private:
    void start(const RequestCommand& command);
    void start(const SleepCommand& command);
    void start(const WaitCommand& command);
    void start(const SetIntCommand& command);
    void start(const SetStringCommand& command);
    void start(const UnsetCommand& command);
    void start(const BehaveCommand& command);
    void start(const ViaCommand& command);
    void start(const RestartCommand& command);
    void start(const ViewerCommand& command);
    void start(const ScenarioCommand& command);
    void start(const EchoCommand& command);
    void start(const HelpCommand& command);
    void start(const QuitCommand& command);

    bool hasHappened(const Event& awaited) const;
    void giveUpWait(double seconds);
    void finish(Outcome outcome);

    EventLog& m_log;
    Daemon& m_daemon;
    Via m_via;
    double m_pauseDivisor;
    bool m_withViewer;
    std::function<void(Outcome)> m_onFinished;
    std::function<bool(const std::string&)> m_onScenario;
    bool m_busy = false;
    bool m_awaitsViewer = false;
    Timer m_timer; ///< of a sleep or a wait
    std::vector<Event> m_missing; ///< what the present wait still waits for
    /// What came since the last wait of its kind: the flags of each call, once.
    std::map<EventKind, std::set<std::vector<bool>>> m_past;
};

} // namespace DaemonSim
