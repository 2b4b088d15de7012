#include "flux/KeyGuard.h"

#include <Ecore_X.h>
#include <X11/Xlib.h>

namespace orbis::flux {

namespace {

/// The keys that Elementary's standard profile activates a button with.
constexpr const char* kActivationKeys[] = {"Return", "KP_Enter", "space"};

/// Size of the X server's bit vector of pressed keys.
constexpr int kKeymapBytes = 32;

/// Longer than the delay before the first repeat of any keyboard or remote, milliseconds.
constexpr unsigned int kLongestRepeatMs = 1000;

} // namespace

KeyGuard::KeyGuard(Evas_Object* window)
    : m_watcher(evas_object_rectangle_add(evas_object_evas_get(window)))
{
    // A shared grab is served before the focused object, with the same event record.
    for (const char* key : kActivationKeys) {
        // Without its grab a key would merely act as often as it repeats.
        const Eina_Bool grabbed = evas_object_key_grab(m_watcher, key, 0, 0, EINA_FALSE);
        static_cast<void>(grabbed);
    }
    evas_object_event_callback_add(m_watcher, EVAS_CALLBACK_KEY_DOWN, on_keyDown, this);
    evas_object_event_callback_add(m_watcher, EVAS_CALLBACK_KEY_UP, on_keyUp, this);
    evas_object_event_callback_add(m_watcher, EVAS_CALLBACK_DEL, on_watcherDeleted, this);
}

KeyGuard::~KeyGuard()
{
    evas_object_del(m_watcher);
}

void KeyGuard::holdPressedKeys()
{
    auto* display = static_cast<Display*>(ecore_x_display_get());
    if (!display)
        return;
    char pressed[kKeymapBytes] = {};
    XQueryKeymap(display, pressed);
    for (const char* key : kActivationKeys) {
        const unsigned int code = XKeysymToKeycode(display, XStringToKeysym(key));
        if (code != 0 && (static_cast<unsigned char>(pressed[code / 8]) >> (code % 8)) & 1U)
            m_down[key] = ecore_x_current_time_get();
    }
}

void KeyGuard::on_keyDown(void* data, Evas*, Evas_Object*, void* eventInfo)
{
    auto* event = static_cast<Evas_Event_Key_Down*>(eventInfo);
    auto& down = static_cast<KeyGuard*>(data)->m_down;
    const auto [entry, isNew] = down.try_emplace(event->keyname, event->timestamp);
    const unsigned int elapsed = event->timestamp - entry->second;
    entry->second = event->timestamp;
    if (!isNew && elapsed <= kLongestRepeatMs)
        event->event_flags = static_cast<Evas_Event_Flags>(event->event_flags | EVAS_EVENT_FLAG_ON_HOLD);
}

void KeyGuard::on_keyUp(void* data, Evas*, Evas_Object*, void* eventInfo)
{
    static_cast<KeyGuard*>(data)->m_down.erase(static_cast<Evas_Event_Key_Up*>(eventInfo)->keyname);
}

void KeyGuard::on_watcherDeleted(void* data, Evas*, Evas_Object*, void*)
{
    static_cast<KeyGuard*>(data)->m_watcher = nullptr;
}

} // namespace orbis::flux
