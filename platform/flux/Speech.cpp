// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Speech.h"

#include "dlog.h"
#include "names/LogTag.h"

#include <algorithm>
#include <chrono>
#include <exception>
#include <iterator>
#include <utility>

namespace orbis::flux {

namespace {

/// As long as the program's end may be held up, and long enough for a service to take one more command.
constexpr std::chrono::milliseconds kEndLimit {300};

/// Blocks all signals of the calling thread, and of those that it starts, while it lives.
class SignalsBlocked {
public:
    SignalsBlocked()
    {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &m_before);
    }
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    SignalsBlocked(const SignalsBlocked&) = delete;
    SignalsBlocked& operator=(const SignalsBlocked&) = delete;

    const sigset_t& before() const { return m_before; }

private:
    sigset_t m_before {};
};

} // namespace

Speech::~Speech()
{
    if (!m_thread.joinable())
        return;
    order({true, {}, true});
    if (m_ended.wait_for(kEndLimit) == std::future_status::ready)
        m_thread.join();
    else
        m_thread.detach();
}

void Speech::say(Utterance utterance)
{
    if (!m_thread.joinable() && !start())
        return;
    order({true, {std::move(utterance)}, false});
}

void Speech::add(Utterance utterance)
{
    if (!m_thread.joinable() && !start())
        return;
    order({false, {std::move(utterance)}, false});
}

void Speech::silence()
{
    if (m_thread.joinable())
        order({true, {}, false});
}

bool Speech::start()
{
    try {
        m_orders = std::make_shared<Orders>();
        std::promise<void> ended;
        m_ended = ended.get_future();
        const SignalsBlocked blocked;
        m_thread = std::thread([orders = m_orders, ended = std::move(ended), signals = blocked.before(),
                                   service = SpeechService()]() mutable {
            try {
                SpeechConnection connection(std::move(service), signals);
                run(*orders, connection);
            } catch (const std::exception&) {
                // Without memory there is no speech.
            }
            ended.set_value();
        });
        return true;
    } catch (const std::exception& error) {
        dlog_print(DLOG_ERROR, names::kLogTag, "Nothing can be read out: %s\n", error.what());
        return false;
    }
}

void Speech::order(Order order)
{
    std::string problem;
    {
        const std::lock_guard lock(m_orders->mutex);
        if (order.silence)
            m_orders->next = std::move(order);
        else
            std::move(order.utterances.begin(), order.utterances.end(),
                std::back_inserter(m_orders->next.utterances));
        problem = std::exchange(m_orders->problem, {});
    }
    m_orders->changed.notify_one();
    if (!problem.empty())
        dlog_print(DLOG_ERROR, names::kLogTag, "The speech service is of no use: %s\n", problem.c_str());
}

Speech::Order Speech::Orders::take()
{
    std::unique_lock lock(mutex);
    changed.wait(lock, [this] { return next.silence || !next.utterances.empty() || next.end; });
    return std::exchange(next, {});
}

bool Speech::Orders::isOverruled()
{
    const std::lock_guard lock(mutex);
    return next.silence;
}

void Speech::Orders::report(const std::string& what)
{
    const std::lock_guard lock(mutex);
    problem = what;
}

void Speech::run(Orders& orders, SpeechConnection& connection)
{
    bool isSpeaking = false;
    bool isReported = false;
    for (;;) {
        const Order next = orders.take();
        if (next.silence && std::exchange(isSpeaking, false))
            connection.cancel();
        if (next.end)
            return;
        if (next.utterances.empty())
            continue;
        const bool isOpen = connection.open();
        if (!isOpen && !isReported)
            orders.report(connection.problem());
        isReported = !isOpen;
        if (isOpen && speak(next.utterances, orders, connection))
            isSpeaking = true;
    }
}

/// A service that had to be started first may be too late. @return whether it has been told anything
bool Speech::speak(const std::vector<Utterance>& utterances, Orders& orders, SpeechConnection& connection)
{
    bool isTold = false;
    for (const Utterance& utterance : utterances) {
        if (orders.isOverruled())
            break;
        isTold = true;
        // The service may have been started anew since it was last heard of.
        if (!connection.say(utterance) && !connection.isOpen() && connection.open())
            connection.say(utterance);
    }
    return isTold;
}

} // namespace orbis::flux
