// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the X server is told to draw, seen from another client.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <sys/types.h>

#include <X11/Xlib.h>

namespace bench {

struct Drawn {
    double time; ///< when the damage was heard of
    int x, y, width, height;
};

class Screen {
public:
    /// The display is that of the environment. Ends the process with a message when there is none.
    Screen();
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    /// @param className  of the windows of a program that does not tell whose they are
    /// @return the largest window of a process, shown or not; 0 when it has none yet
    Window windowOf(pid_t process, const std::string& className = "") const;
    bool isShown(Window window) const;
    /// From now on what is drawn into this window is noted.
    void watch(Window window);
    /// Serves events until @p enough says so after one, or that many seconds are over. @return what was drawn
    std::vector<Drawn> observe(double seconds, const std::function<bool(const Drawn&)>& enough = {});
    /// The same until nothing has been drawn for so long. @return what was drawn
    std::vector<Drawn> settle(double quietSeconds);
    /// Rows of a window's pixels, one after the other.
    std::vector<unsigned> rows(Window window, const std::vector<int>& which) const;
    /// @return the rows of a window in which the most changes from pixel to pixel, which are those of texts
    std::vector<int> busiestRows(Window window) const;
    /// @return how many windows, pictures and the like the X server keeps for a process that has a window
    int resourcesOf(pid_t process) const;
    int height() const;
    int width() const;
    void press(const char* key);

private:
    std::optional<Drawn> next();

    Display* m_display;
    int m_damageEvent = 0;
    unsigned long m_damage = 0;
};

} // namespace bench
