// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Session.h"

#include "LineReader.h"
#include "Prompt.h"

#include <glib-unix.h>

#include <algorithm>
#include <array>
#include <csignal>
#include <unistd.h>
#include <utility>

namespace DaemonSim {

Session::Session(EventLog& log, const Options& options, std::deque<Step> steps)
    : m_log(log)
    , m_loop(g_main_loop_new(nullptr, FALSE))
    , m_steps(std::move(steps))
    , m_stay(options.stay)
    , m_withViewer(options.withViewer)
    , m_daemon(log, options, daemonCallbacks())
    , m_player(
          log, m_daemon, options, [this](Outcome outcome) { onFinished(outcome); },
          [this](const std::string& name) { return addScenario(name); })
{
    if (isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1)
        m_input = std::make_unique<Prompt>(log, [this] { advance(); });
    else
        m_input = std::make_unique<LineReader>(STDIN_FILENO, [this] { advance(); });
}

Daemon::Callbacks Session::daemonCallbacks()
{
    Daemon::Callbacks callbacks;
    callbacks.onReady = [this] {
        m_ready = true;
        advance();
    };
    callbacks.onEvent = [this](const Event& event) { m_player.note(event); };
    callbacks.onIdle = [this] { advance(); };
    callbacks.onVanished = [this] { end(kExitOk); };
    callbacks.onFailed = [this] { end(kExitBus); };
    return callbacks;
}

int Session::run()
{
    constexpr std::array<int, 3> kSignals = {SIGINT, SIGTERM, SIGHUP};
    std::array<guint, kSignals.size()> sources {};
    for (size_t index = 0; index < kSignals.size(); ++index)
        sources[index] = g_unix_signal_add(kSignals[index], onSignal, this);

    m_daemon.start();
    if (!m_ended)
        g_main_loop_run(m_loop.get());
    for (const guint source : sources)
        g_source_remove(source);
    return m_status;
}

gboolean Session::onSignal(gpointer data)
{
    static_cast<Session*>(data)->end(kExitOk);
    return G_SOURCE_CONTINUE;
}

void Session::onFinished(Outcome outcome)
{
    if (outcome == Outcome::Quit) {
        end(kExitOk);
    } else if (outcome != Outcome::Done && !m_place.empty()) {
        m_log.error(m_place + ": the scenario ends here");
        m_steps.clear();
        m_status = kExitScenarioFailed;
        if (!m_isTyped)
            end(kExitScenarioFailed);
    }
    advance();
}

/// Plays as many commands as can be played now. A command that finishes at once comes back here through
/// onFinished(): the loop below goes on then, rather than one call deeper.
void Session::advance()
{
    if (!m_ready || m_advancing)
        return;
    m_advancing = true;
    while (!m_ended
        && (m_player.isAwaitingViewer() ? takeViewersAnswer() : !m_player.isBusy() && playNext())) { }
    m_advancing = false;
}

/// @return false when there is nothing to play for now.
bool Session::playNext()
{
    if (m_steps.empty() && m_withViewer) {
        endWhenIdle();
        return false;
    }
    if (m_steps.empty())
        return playTypedLine();
    const Step step = std::move(m_steps.front());
    m_steps.pop_front();
    m_place = step.place;
    m_player.play(step.command);
    return true;
}

bool Session::playTypedLine()
{
    m_place.clear();
    m_isTyped = true;
    const auto line = m_input->take();
    if (!line) {
        if (m_input->atEnd())
            endWhenIdle();
        m_input->listen();
        return false;
    }
    const ParsedLine parsed =
        line->isTooLong ? ParsedLine {std::nullopt, "the line is too long"} : parseLine(line->text);
    if (!parsed.error.empty())
        m_log.error(parsed.error);
    else if (parsed.command)
        m_player.play(*parsed.command);
    return true;
}

/// @return false when there is none for now.
bool Session::takeViewersAnswer()
{
    if (m_input->take()) {
        m_player.goOn();
        return true;
    }
    if (m_input->atEnd()) {
        m_log.error("nobody plays the viewer");
        end(kExitScenarioFailed);
    }
    m_input->listen();
    return false;
}

/// @return false when there is no such scenario, or it is wrong
bool Session::addScenario(const std::string& name)
{
    const bool isRight = loadScenario(m_log, name, m_steps);
    if (!isRight)
        m_steps.clear();
    return isRight;
}

void Session::endWhenIdle()
{
    // An answer or an order to leave that is still due belongs to the run.
    if (!m_stay && m_daemon.isIdle())
        end(kExitOk);
}

void Session::end(int status)
{
    if (m_ended)
        return;
    m_ended = true;
    m_status = std::max<int>(m_status, status);
    g_main_loop_quit(m_loop.get());
}

} // namespace DaemonSim
