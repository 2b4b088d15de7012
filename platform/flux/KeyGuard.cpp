// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/KeyGuard.h"

#include "flux/WindowSystem.h"

#include <Ecore_X.h>
#include <X11/Xlib.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>

namespace orbis::flux {

namespace {

/// The keys that Elementary's standard profile activates a button with.
constexpr const char* kActivationKeys[] = {"Return", "KP_Enter", "space"};

/// The keys that lead nowhere in a popup, whose buttons stand in a row.
constexpr const char* kOtherKeys[] = {"Up", "Down"};

/// Longer than the delay before the first repeat of any keyboard or remote, milliseconds.
constexpr unsigned int kLongestRepeatMs = 1000;

} // namespace

KeyGuard::KeyGuard(Evas_Object* window, std::function<void()> upOrDown)
    : m_window(window)
    , m_upOrDown(std::move(upOrDown))
    , m_watcher(evas_object_rectangle_add(evas_object_evas_get(window)))
{
    // A shared grab is served before the focused object, with the same event record.
    const auto watch = [this](const char* key) {
        // Without its grab a key would merely act as often as it repeats.
        const Eina_Bool grabbed = evas_object_key_grab(m_watcher, key, 0, 0, EINA_FALSE);
        static_cast<void>(grabbed);
    };
    std::for_each(std::begin(kActivationKeys), std::end(kActivationKeys), watch);
    std::for_each(std::begin(kOtherKeys), std::end(kOtherKeys), watch);
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
    const unsigned long system = m_keymaps ? elm_win_xwindow_get(m_window) : 0;
    // To ask again for the same window would wait for the server while a request waits for its answer.
    if (system == std::exchange(m_system, system) || system == 0)
        return;
    // The toolkit has no name of its own for these events.
    ecore_x_event_mask_set(system, static_cast<Ecore_X_Event_Mask>(KeymapStateMask));
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
    const auto take = [&](const char* key) {
        const unsigned int code = XKeysymToKeycode(display, XStringToKeysym(key));
        if (code != 0 && (static_cast<unsigned char>(pressed[code / 8]) >> (code % 8)) & 1U)
            m_down.try_emplace(key, std::nullopt);
        else
            m_down.erase(key);
    };
    std::for_each(std::begin(kActivationKeys), std::end(kActivationKeys), take);
    std::for_each(std::begin(kOtherKeys), std::end(kOtherKeys), take);
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
    auto* self = static_cast<KeyGuard*>(data);
    const auto [entry, isNew] = self->m_down.try_emplace(event->keyname, event->timestamp);
    const auto before = std::exchange(entry->second, event->timestamp);
    const bool isRepeat = !isNew && (!before || event->timestamp - *before <= kLongestRepeatMs);
    const bool isOther =
        std::find(std::begin(kOtherKeys), std::end(kOtherKeys), std::string_view {event->keyname})
        != std::end(kOtherKeys);
    if (isRepeat && !isOther)
        event->event_flags = static_cast<Evas_Event_Flags>(event->event_flags | EVAS_EVENT_FLAG_ON_HOLD);
    else if (!isRepeat && isOther)
        self->m_upOrDown();
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
