// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Speech that the main loop never waits for.
#pragma once

#include "flux/SpeechConnection.h"

#include <condition_variable>
#include <future>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace orbis::flux {

/// Speaks one utterance at a time. One that is said takes the place of those before it, spoken or waiting;
/// one that is added waits for them. The service's library waits for each answer, so a thread of its own
/// talks to it; that touches nothing else of the program and blocks all signals. It begins with the first
/// utterance. Main loop only; no call blocks, whatever the service does. A service that is absent or stuck is
/// an error line once, until it is back.
class Speech {
public:
    Speech() = default;
    /// Ends what is being said. Waits for the thread, but no longer than kEndLimit: one that is held by a
    /// stuck service is left behind and ends by itself.
    ~Speech();
    Speech(const Speech&) = delete;
    Speech& operator=(const Speech&) = delete;

    void say(Utterance utterance);
    void add(Utterance utterance);
    void silence();

private:
    /// What the thread is to do next, in this order. One that begins with silence takes the place of what
    /// waits; what is only added joins that.
    struct Order {
        bool silence = false;
        std::vector<Utterance> utterances;
        bool end = false;
    };

    /// Shared by both threads, so that one that is left behind keeps it.
    struct Orders {
        /// Waits for an order.
        Order take();
        /// @return whether what is on its way to the service is to be said no more
        bool isOverruled();
        void report(const std::string& what);

        std::mutex mutex;
        std::condition_variable changed;
        Order next;
        std::string problem; ///< for the log, which is the main loop's to write
    };

    bool start();
    void order(Order order);
    static void run(Orders& orders, SpeechConnection& connection);
    static bool speak(const std::vector<Utterance>& utterances, Orders& orders, SpeechConnection& connection);

    std::shared_ptr<Orders> m_orders;
    std::thread m_thread;
    std::future<void> m_ended;
};

} // namespace orbis::flux
