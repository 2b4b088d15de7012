// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Sway.h"

#include <stdexcept>
#include <unistd.h>

namespace tv {

namespace {

/// @return the command that gives the screen a size
std::string modeOf(int width, int height)
{
    return "output HEADLESS-1 mode --custom " + std::to_string(width) + "x" + std::to_string(height)
        + "@60Hz";
}

} // namespace

Sway::Sway(TvBox& box)
    : m_box(box)
    , m_socket((box.folders.session() / "sway").string())
{
    const auto settings = box.folders.root() / "sway.config";
    const auto ready = box.folders.root() / "sway.ready";
    // Its own socket's name has a number that nobody knows before.
    writeFile(settings,
        "xwayland disable\ndefault_border none\n" + modeOf(1920, 1080) + "\nexec echo \"$WAYLAND_DISPLAY\" >"
            + ready.string() + "\n");
    auto environment = box.environment();
    for (const char* variable : {"WLR_BACKENDS=headless", "WLR_RENDERER=pixman", "WLR_LIBINPUT_NO_DEVICES=1"})
        environment.emplace_back(variable);
    environment.push_back("SWAYSOCK=" + m_socket);
    // It refuses to run as root, which it is not in a name space of its own.
    m_process = std::make_unique<Process>(std::vector<std::string> {"unshare", "--user", "--map-user=1000",
                                              "--map-group=1000", "sway", "--config", settings.string()},
        environment);
    const auto display = [&] { return readLines(ready); };
    if (!waitUntil([&] { return !display().empty() || !m_process->running(); }) || !m_process->running())
        throw std::runtime_error("the compositor did not start");
    box.setVariable("WAYLAND_DISPLAY", display().front());
    box.setVariable("ELM_DISPLAY", "wl");
}

void Sway::command(const std::vector<std::string>& arguments) const
{
    if (!outputOf(arguments, m_box.environment()))
        throw std::runtime_error("the compositor does not do as " + arguments.front() + " says");
}

void Sway::resize(int width, int height) const
{
    command({"swaymsg", "--socket", m_socket, modeOf(width, height)});
}

Picture Sway::picture() const
{
    const auto file = m_box.folders.root() / "sway.ppm";
    command({"grim", "-t", "ppm", file.string()});
    return readPixmap(file);
}

} // namespace tv
