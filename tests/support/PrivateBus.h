// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A message bus of the test's own, in the place of the system bus.
#ifndef TESSEL_TESTS_PRIVATE_BUS_H
#define TESSEL_TESTS_PRIVATE_BUS_H

#include "Folders.h"
#include "Process.h"

#include <csignal>

namespace tv {

class PrivateBus {
public:
    /// @throws std::runtime_error when the bus does not come up
    PrivateBus() { restart(); }

    /// Stays the same when the bus is started again.
    const std::string& address() const { return m_address; }
    bool isUp() const { return m_process->running(); }
    /// Ends the bus at once, as a crash would; returns when it is gone.
    void kill();
    /// Starts the bus afresh, at the same place. @throws std::runtime_error
    void restart();
    /// Lets the bus take connections and messages but answer nothing, until it goes on.
    void stall() { m_process->signal(SIGSTOP); }
    void goOn() { m_process->signal(SIGCONT); }

private:
    Folders m_folders;
    std::string m_address = "unix:path=" + (m_folders.root() / "bus").string();
    std::unique_ptr<Process> m_process;
};

} // namespace tv

#endif
