// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Weston.h"

#include <stdexcept>

namespace tv {

Weston::Weston(TvBox& box, int idleSeconds, bool inAWindow)
{
    constexpr const char* kSocket = "wayland-test";
    const auto settings = box.folders.root() / "weston.ini";
    writeFile(settings, "[shell]\npanel-position=none\n");
    const std::string backend = inAWindow ? "x11-backend.so" : "headless-backend.so";
    m_process = std::make_unique<Process>(
        std::vector<std::string> {"weston", "--backend=" + backend, "--use-pixman", "--width=1920",
            "--height=1080", std::string("--socket=") + kSocket, "--idle-time=" + std::to_string(idleSeconds),
            "--config=" + settings.string()},
        box.environment());
    m_socket = box.folders.session() / kSocket;
    if (!waitUntil([&] { return std::filesystem::exists(m_socket) || !m_process->running(); })
        || !m_process->running())
        throw std::runtime_error("the compositor did not start");
    box.setVariable("WAYLAND_DISPLAY", kSocket);
    box.setVariable("ELM_DISPLAY", "wl");
}

} // namespace tv
