/// Lets a held key act once.
#pragma once

#include <Elementary.h>

#include <map>
#include <string>

namespace orbis::flux {

/// Watches the keys that activate a button, on the whole window. A key-down that has had no key-up since
/// the one before it is a repeat: it is marked as handled before the focused widget sees it, so that a held
/// OK does not run through a confirmation that opens under it. A key-up can get lost to another window; a
/// key-down that comes later than any repeat would is therefore a new one. One guard a window.
class KeyGuard {
public:
    explicit KeyGuard(Evas_Object* window);
    ~KeyGuard();
    /// Counts the activation keys that are down right now as held: they were pressed before the window got
    /// the keys. On X11 only; elsewhere the window system delivers no repeats of such a key.
    void holdPressedKeys();

    KeyGuard(const KeyGuard&) = delete;
    KeyGuard& operator=(const KeyGuard&) = delete;

private:
    static void on_keyDown(void* data, Evas*, Evas_Object*, void* eventInfo);
    static void on_keyUp(void* data, Evas*, Evas_Object*, void* eventInfo);
    static void on_watcherDeleted(void* data, Evas*, Evas_Object*, void*);

    Evas_Object* m_watcher; ///< invisible object that the key grabs are registered for
    std::map<std::string, unsigned int> m_down; ///< key to the time of its last key-down, milliseconds
};

} // namespace orbis::flux
