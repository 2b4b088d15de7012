// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "PrivateBus.h"

#include <stdexcept>

namespace tv {

void PrivateBus::restart()
{
    m_process.reset();
    // A session's bus lets everybody own every name.
    m_process = std::make_unique<Process>(
        std::vector<std::string> {"dbus-daemon", "--session", "--address=" + m_address, "--nofork",
            "--nopidfile", "--print-address=1"},
        m_folders.environment());
    if (!waitUntil([this] { return !m_process->output().empty() || !isUp(); }) || m_process->output().empty())
        throw std::runtime_error("the private bus did not start");
}

void PrivateBus::kill()
{
    m_process->signal(SIGKILL);
    m_process->waitForExit();
}

} // namespace tv
