// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Display.h"

#include <algorithm>
#include <csignal>
#include <stdexcept>

namespace tv {

void Display::start()
{
    m_manager.reset();
    m_screen = kScreen;
    // A white background tells a dimmed screen from a plain one.
    m_server = std::make_unique<Process>(
        std::vector<std::string> {"Xvfb", "-displayfd", "1", "-screen", "0", "1920x1080x24", "-wr",
            "-nolisten", "tcp", "-noreset", "-fbdir", m_folders.root().string()},
        m_folders.environment());
    if (!waitUntil([this] { return !m_server->output().empty() || !isUp(); }) || m_server->output().empty())
        throw std::runtime_error("the display did not start");
    m_name = ":" + m_server->output().front();
    startManager();
    // A pointer over a button would take the focus there.
    control({"mousemove", "--sync", "1919", "1079"});
    m_plain = settledPicture();
}

/// It owns the windows before it is ready for them: what is mapped in between stays without keys, or is not
/// mapped.
void Display::startManager()
{
    m_manager = start({"openbox", "--sm-disable", "--startup", "echo ready"});
    const bool managed = waitUntil([this] {
        const std::vector<std::string>& told = m_manager->output();
        return std::find(told.begin(), told.end(), "ready") != told.end();
    });
    if (!managed)
        throw std::runtime_error("the window manager did not start");
}

std::vector<std::string> Display::environment() const
{
    std::vector<std::string> result = m_folders.environment();
    result.push_back("DISPLAY=" + m_name);
    return result;
}

std::unique_ptr<Process> Display::start(const std::vector<std::string>& arguments) const
{
    return std::make_unique<Process>(arguments, environment());
}

std::optional<std::string> Display::control(std::vector<std::string> arguments) const
{
    arguments.insert(arguments.begin(), "xdotool");
    return outputOf(arguments, environment());
}

void Display::click(int x, int y) const
{
    control({"mousemove", "--sync", std::to_string(x), std::to_string(y), "click", "1", "mousemove", "1919",
        "1079"});
}

void Display::resize(int width, int height)
{
    const std::string w = std::to_string(width);
    const std::string h = std::to_string(height);
    const std::string mode = w + "x" + h;
    // What the server knows already is refused, which does no harm.
    outputOf({"xrandr", "--newmode", mode, "25", w, w, w, w, h, h, h, h}, environment());
    outputOf({"xrandr", "--addmode", "screen", mode}, environment());
    if (!outputOf({"xrandr", "--output", "screen", "--mode", mode}, environment()))
        throw std::runtime_error("the screen does not take the size " + mode);
    m_screen = {0, 0, width, height};
}

std::optional<Geometry> Display::visibleWindow(int pid) const
{
    const std::string window = windowOf(pid);
    Geometry found;
    const std::string text = control({"getwindowgeometry", "--shell", window}).value_or("");
    if (std::sscanf(text.c_str(), "WINDOW=%*d X=%d Y=%d WIDTH=%d HEIGHT=%d", &found.x, &found.y, &found.width,
            &found.height)
        != 4)
        return std::nullopt;
    return found;
}

std::string Display::windowOf(int pid) const
{
    const std::string windows =
        control({"search", "--onlyvisible", "--pid", std::to_string(pid)}).value_or("");
    return windows.substr(0, windows.find('\n'));
}

void Display::kill()
{
    m_server->signal(SIGKILL);
    m_server->waitForExit();
}

bool Display::hasKeys(int pid) const
{
    return control({"getwindowfocus", "getwindowpid"}) == std::to_string(pid) + "\n";
}

bool Display::givesKeysTo(const std::string& title) const
{
    return control({"getwindowfocus", "getwindowname"}).value_or("").rfind(title, 0) == 0;
}

Picture Display::picture() const
{
    return readWindowDump(m_folders.root() / "Xvfb_screen0", m_screen);
}

bool Display::waitForPicture(const std::function<bool(const Picture&)>& condition) const
{
    return waitUntil([&] { return condition(picture()); });
}

} // namespace tv
