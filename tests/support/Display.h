// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A TV screen: an X server without hardware, with a window manager and a remote control.
#ifndef TESSEL_TESTS_DISPLAY_H
#define TESSEL_TESTS_DISPLAY_H

#include "Folders.h"
#include "Picture.h"
#include "Process.h"

#include <functional>

namespace tv {

class Display {
public:
    static constexpr Geometry kScreen {0, 0, 1920, 1080};

    /// @throws std::runtime_error when the display or its window manager does not start
    Display() { start(); }
    /// Begins afresh, also after kill(): with a plain screen, the pointer out of the way. @throws as above
    void start();
    bool isUp() const { return m_server->running(); }

    const std::string& name() const { return m_name; } ///< for DISPLAY

    /// Presses and releases a key at once, whatever the program is doing (TvBox::press() is the viewer's
    /// way); names as in X11 ("Return", "XF86Back").
    void key(const std::string& name) const { control({"key", name}); }
    void keyDown(const std::string& name) const { control({"keydown", name}); }
    void keyUp(const std::string& name) const { control({"keyup", name}); }

    /// Presses the pointer's first button there, and takes the pointer out of the way again.
    void click(int x, int y) const;

    /// Gives the screen another size, at most the one it began with.
    void resize(int width, int height);

    /// @return where the viewable window of a process is, nothing when it has none
    std::optional<Geometry> visibleWindow(int pid) const;
    /// @return the number of the viewable window of a process, "" when it has none
    std::string windowOf(int pid) const;
    /// @return whether a window of the process gets the keys
    bool hasKeys(int pid) const;
    /// @return whether a window gets the keys whose title begins so
    bool givesKeysTo(const std::string& title) const;

    Picture picture() const;
    /// @return the picture once nothing but a spinner has changed for a moment
    Picture settledPicture() const
    {
        return settled([this] { return picture(); });
    }
    /// @return whether anything but the plain screen can be seen
    bool showsAnything() const { return picture() != m_plain; }
    bool waitForPicture(const std::function<bool(const Picture&)>& condition) const;

    /// Ends the window manager; windows stay as they are.
    void stopManager() { m_manager.reset(); }
    /// Starts the window manager. @throws std::runtime_error when it does not come up
    void startManager();
    /// Destroys a window that belongs to somebody else.
    void destroyWindow(const std::string& window) const { control({"windowclose", window}); }
    /// Breaks the connection of the window's owner.
    void disconnect(const std::string& window) const { control({"windowkill", window}); }
    /// SIGSTOP stalls it: it takes what is sent, and answers nothing until SIGCONT.
    void signal(int number) { m_server->signal(number); }
    /// Ends the display at once, as a crash would; returns when it is gone.
    void kill();

    /// Starts a program on this display.
    std::unique_ptr<Process> start(const std::vector<std::string>& arguments) const;

private:
    std::optional<std::string> control(std::vector<std::string> arguments) const;
    std::vector<std::string> environment() const;

    Folders m_folders;
    std::unique_ptr<Process> m_server;
    std::string m_name;
    Geometry m_screen = kScreen;
    std::unique_ptr<Process> m_manager; // goes before the server it talks to
    Picture m_plain;
};

} // namespace tv

#endif
