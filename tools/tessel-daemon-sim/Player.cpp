// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Player.h"

#include "Daemon.h"
#include "EventLog.h"
#include "JsonRequest.h"
#include "Names.h"
#include "Options.h"
#include "Settings.h"

#include <algorithm>
#include <cstdio>
#include <utility>

namespace DaemonSim {

namespace {

constexpr double kFastDivisor = 4;

bool flagsFit(const Event& awaited, const std::vector<bool>& flags)
{
    return awaited.flags.empty() || awaited.flags == flags;
}

Outcome outcomeOf(bool success)
{
    return success ? Outcome::Done : Outcome::Failed;
}

} // namespace

Player::Player(EventLog& log, Daemon& daemon, const Options& options, std::function<void(Outcome)> onFinished,
    std::function<bool(const std::string&)> onScenario)
    : m_log(log)
    , m_daemon(daemon)
    , m_via(options.via)
    , m_pauseDivisor(options.fast ? kFastDivisor : 1)
    , m_withViewer(options.withViewer)
    , m_onFinished(std::move(onFinished))
    , m_onScenario(std::move(onScenario))
{
}

void Player::play(const Command& command)
{
    m_busy = true;
    std::visit([this](const auto& any) { start(any); }, command);
}

void Player::finish(Outcome outcome)
{
    m_busy = false;
    m_onFinished(outcome);
}

void Player::note(const Event& event)
{
    const auto awaited = std::find_if(m_missing.begin(), m_missing.end(),
        [&](const Event& each) { return each.kind == event.kind && flagsFit(each, event.flags); });
    if (awaited == m_missing.end()) {
        m_past[event.kind].insert(event.flags);
        return;
    }
    m_missing.erase(awaited);
    // Not from inside the caller, which may have an answer to send first.
    if (m_missing.empty())
        m_timer.start(0, [this] { finish(Outcome::Done); });
}

bool Player::hasHappened(const Event& awaited) const
{
    if (awaited.kind == EventKind::UiAppeared && m_daemon.isUiPresent())
        return true;
    const auto past = m_past.find(awaited.kind);
    return past != m_past.end()
        && std::any_of(past->second.begin(), past->second.end(),
            [&](const std::vector<bool>& flags) { return flagsFit(awaited, flags); });
}

void Player::start(const WaitCommand& command)
{
    for (const Event& awaited : command.events) {
        if (!hasHappened(awaited))
            m_missing.push_back(awaited);
    }
    for (const Event& awaited : command.events)
        m_past.erase(awaited.kind);
    if (m_missing.empty())
        finish(Outcome::Done);
    else
        m_timer.start(command.seconds, [this, seconds = command.seconds] { giveUpWait(seconds); });
}

void Player::giveUpWait(double seconds)
{
    std::string line = "timeout";
    for (const Event& awaited : m_missing)
        line += " " + toText(awaited);
    char limit[48] = "";
    snprintf(limit, sizeof limit, " within %g", seconds);
    m_missing.clear();
    m_log.event(line + limit);
    finish(Outcome::TimedOut);
}

void Player::start(const RequestCommand& command)
{
    const auto json = m_via == Via::Settings ? toJson(command) : std::nullopt;
    if (!json) {
        m_daemon.send(command, [this] { finish(Outcome::Done); });
        return;
    }
    m_log.event("request " + toText(command));
    finish(outcomeOf(writeString(m_log, kRequestKey, *json)));
}

void Player::start(const SleepCommand& command)
{
    if (m_withViewer) {
        m_log.event("viewer looks");
        m_awaitsViewer = true;
        return;
    }
    m_timer.start(command.seconds / m_pauseDivisor, [this] { finish(Outcome::Done); });
}

void Player::start(const SetIntCommand& command)
{
    finish(outcomeOf(writeInt(m_log, command.key, command.value)));
}

void Player::start(const SetStringCommand& command)
{
    finish(outcomeOf(writeString(m_log, command.key, command.value)));
}

void Player::start(const UnsetCommand& command)
{
    finish(outcomeOf(removeKey(m_log, command.key)));
}

void Player::start(const BehaveCommand& command)
{
    m_daemon.setBehaviour(command.behaviour);
    m_log.event("behave " + toText(command.behaviour));
    finish(Outcome::Done);
}

void Player::start(const ViaCommand& command)
{
    m_via = command.via;
    m_log.event("via " + toText(command.via));
    finish(Outcome::Done);
}

void Player::start(const RestartCommand& command)
{
    m_daemon.restart(command.seconds, [this] { finish(Outcome::Done); });
}

void Player::start(const ViewerCommand& command)
{
    std::string line = "viewer press";
    for (const std::string& key : command.keys)
        line += " " + key;
    m_log.event(line);
    m_awaitsViewer = m_withViewer;
    if (!m_awaitsViewer)
        finish(Outcome::Done);
}

void Player::goOn()
{
    m_awaitsViewer = false;
    finish(Outcome::Done);
}

void Player::start(const ScenarioCommand& command)
{
    finish(outcomeOf(m_onScenario(command.name)));
}

void Player::start(const EchoCommand& command)
{
    m_log.event(command.text);
    finish(Outcome::Done);
}

void Player::start(const HelpCommand&)
{
    fputs(commandHelp().c_str(), stdout);
    fflush(stdout);
    finish(Outcome::Done);
}

void Player::start(const QuitCommand&)
{
    finish(Outcome::Quit);
}

} // namespace DaemonSim
