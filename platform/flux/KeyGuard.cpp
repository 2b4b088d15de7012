#include "flux/KeyGuard.h"

#include "flux/WindowSystem.h"

#include <Ecore_X.h>
#include <X11/Xlib.h>

#include <utility>

namespace orbis::flux {

namespace {

/// The keys that Elementary's standard profile activates a button with.
constexpr const char* kActivationKeys[] = {"Return", "KP_Enter", "space"};

/// Longer than the delay before the first repeat of any keyboard or remote, milliseconds.
constexpr unsigned int kLongestRepeatMs = 1000;

} // namespace

KeyGuard::KeyGuard(Evas_Object* window)
    : m_window(window)
    , m_watcher(evas_object_rectangle_add(evas_object_evas_get(window)))
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
    // The keys come in between the events, as they were at that moment: asking would tell a later state, in
    // which the press that is still in the queue counts as held.
    if (isX11(window))
        m_keymaps = ecore_event_handler_add(ECORE_X_EVENT_ANY, on_windowSystemEvent, this);
    windowShown();
}

KeyGuard::~KeyGuard()
{
    if (m_keymaps)
        ecore_event_handler_del(m_keymaps);
    evas_object_del(m_watcher);
}

void KeyGuard::windowShown()
{
    // The toolkit has no name of its own for these events.
    if (m_keymaps)
        ecore_x_event_mask_set(
            elm_win_xwindow_get(m_window), static_cast<Ecore_X_Event_Mask>(KeymapStateMask));
}

void KeyGuard::windowFocused()
{
    if (!m_keymaps)
        m_down.clear();
}

void KeyGuard::hold(const std::string& key, unsigned int time)
{
    m_down[key] = time;
}

/// @param pressed  a bit for each key of the keyboard
void KeyGuard::takeKeymap(const char* pressed)
{
    auto* display = static_cast<Display*>(ecore_x_display_get());
    for (const char* key : kActivationKeys) {
        const unsigned int code = XKeysymToKeycode(display, XStringToKeysym(key));
        if (code != 0 && (static_cast<unsigned char>(pressed[code / 8]) >> (code % 8)) & 1U)
            m_down.try_emplace(key, std::nullopt);
        else
            m_down.erase(key);
    }
}

Eina_Bool KeyGuard::on_windowSystemEvent(void* data, int, void* eventInfo)
{
    if (const auto* event = static_cast<XEvent*>(eventInfo); event->type == KeymapNotify)
        static_cast<KeyGuard*>(data)->takeKeymap(event->xkeymap.key_vector);
    return ECORE_CALLBACK_PASS_ON;
}

void KeyGuard::on_keyDown(void* data, Evas*, Evas_Object*, void* eventInfo)
{
    auto* event = static_cast<Evas_Event_Key_Down*>(eventInfo);
    auto& down = static_cast<KeyGuard*>(data)->m_down;
    const auto [entry, isNew] = down.try_emplace(event->keyname, event->timestamp);
    const auto before = std::exchange(entry->second, event->timestamp);
    const bool isRepeat = !isNew && (!before || event->timestamp - *before <= kLongestRepeatMs);
    if (isRepeat)
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
