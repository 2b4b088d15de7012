// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The setup daemon of a test. The simulator is the daemon: it takes the calls of the user interface and
/// answers them as it is told to. The requests to the user interface go past it, over a connection of the
/// test's own, because the simulator sends one at a time and takes it from a line: no hundreds at once, no
/// line ends in a name and no method that there is not.
#pragma once

#include "Simulator.h"

#include <algorithm>

namespace tv {

constexpr const char* kUiName = "com.norvale.orbis.tessel.ui";
/// What the user interface answers to a request that it takes.
constexpr const char* kTaken = "(0,)";
/// Ways in which the simulator behaves.
constexpr const char* kWilling = "normal";
constexpr const char* kSilent = "silent";
constexpr const char* kRefusing = "refuse";

class Daemon : public Simulator {
public:
    /// Starts it and waits until it owns its name. @throws std::runtime_error when that fails
    Daemon(const std::string& busAddress, std::vector<std::string> environment,
        const std::vector<std::string>& options = {});
    ~Daemon() override;

    /// @return what arrived, in order, such as "StopTessel true false"
    std::vector<std::string> calls() const;
    /// Waits until @p call arrives.
    bool receives(const std::string& call) const;
    /// Empties calls(), for a program that is started again.
    void forget() { m_forgotten = output().size(); }
    /// Sets how every later call is answered, in the simulator's words; after "silent", also those before.
    void behave(const std::string& how);

    /// @return whether the process @p pid owns the user interface's name
    bool findsUi(int pid) const;
    /// Calls the bus itself. @return its answer, null for an error
    base::VariantPtr askBus(const char* method, GVariant* parameters) const;
    /// Sends a request and waits. @return the answer with its types, or the error's text
    std::string request(const std::string& method, const std::vector<std::string>& texts = {});
    /// Sends a request and goes on; the same, or the error when @p limit is over, is added to replies().
    void send(
        const std::string& method, const std::vector<std::string>& texts = {}, Milliseconds limit = kLimit);
    const std::vector<std::string>& replies() const { return m_replies; }

private:
    static void on_reply(GObject* source, GAsyncResult* result, gpointer self);

    base::GObjectPtr<GDBusConnection> m_connection;
    size_t m_forgotten = 0; ///< lines of the simulator
    std::vector<std::string> m_replies;
    size_t m_pending = 0; ///< requests without an answer yet
};

} // namespace tv
