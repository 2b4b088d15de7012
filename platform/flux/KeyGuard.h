// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Lets a held key act once.
#pragma once

#include <Elementary.h>

#include <functional>
#include <map>
#include <optional>
#include <string>

namespace orbis::flux {

/// Watches the keys that activate a button, on the whole window. A key-down that has had no key-up since
/// the one before it is a repeat: it is marked as handled before the focused widget sees it, so that a held
/// OK does not run through a confirmation that opens under it. Which keys are down when the window gets them
/// is asked of the window system, because the key-up of one that was let go meanwhile went elsewhere; where
/// it does not tell, none is, and a key-down that comes later than any repeat would is a new one. The keys up
/// and down are watched beside that, and left as they are. One guard a window.
class KeyGuard {
public:
    /// @param upOrDown  called when one of these two is pressed, before anything comes of it; not for repeats
    KeyGuard(Evas_Object* window, std::function<void()> upOrDown);
    ~KeyGuard();
    KeyGuard(const KeyGuard&) = delete;
    KeyGuard& operator=(const KeyGuard&) = delete;

    /// The window is on the screen: from here on the window system tells its keys.
    void windowShown();
    /// The window got the keys.
    void windowFocused();
    /// Counts a key that was pressed just now, and that no widget will see, as held.
    /// @param time  of the window system, milliseconds
    void hold(const std::string& key, unsigned int time);

private:
    static void on_keyDown(void* data, Evas*, Evas_Object*, void* eventInfo);
    static void on_keyUp(void* data, Evas*, Evas_Object*, void* eventInfo);
    static void on_watcherDeleted(void* data, Evas*, Evas_Object*, void*);
    static Eina_Bool on_windowSystemEvent(void* data, int, void* eventInfo);

    void takeKeymap(const char* pressed);

    Evas_Object* m_window; ///< borrowed
    std::function<void()> m_upOrDown;
    Evas_Object* m_watcher; ///< invisible object that the key grabs are registered for
    Ecore_Event_Handler* m_keymaps = nullptr; ///< where the window system tells the keys that are down
    unsigned long m_system = 0; ///< the window system's window that it was asked to tell them of
    /// The keys that are down, to the time of the last key-down, milliseconds; none when that was elsewhere.
    std::map<std::string, std::optional<unsigned int>> m_down;
};

} // namespace orbis::flux
