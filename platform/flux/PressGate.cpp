// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/PressGate.h"

#include "dlog.h"
#include "flux/FocusStack.h"
#include "flux/KeyGuard.h"
#include "names/LogTag.h"

#include <Ecore_Input.h>

namespace orbis::flux {

PressGate::PressGate(Evas_Object* window, KeyGuard& keys)
    : m_window(window)
    , m_keys(keys)
    , m_mark(window, [this] {
        if (m_picture == Picture::Drawn)
            m_picture = Picture::Seen;
    })
{
    // Before the canvas gets them: what is dropped here has not happened for any widget.
    m_handlers[0] = ecore_event_handler_prepend(ECORE_EVENT_KEY_DOWN, on_keyDown, this);
    m_handlers[1] = ecore_event_handler_prepend(ECORE_EVENT_KEY_UP, on_keyUp, this);
    m_handlers[2] = ecore_event_handler_prepend(ECORE_EVENT_MOUSE_BUTTON_DOWN, on_buttonDown, this);
    m_handlers[3] = ecore_event_handler_prepend(ECORE_EVENT_MOUSE_BUTTON_UP, on_buttonUp, this);
    Evas* canvas = evas_object_evas_get(window);
    evas_event_callback_add(canvas, EVAS_CALLBACK_RENDER_PRE, on_drawing, this);
    evas_event_callback_add(canvas, EVAS_CALLBACK_RENDER_POST, on_drawn, this);
}

PressGate::~PressGate()
{
    for (Ecore_Event_Handler* handler : m_handlers)
        ecore_event_handler_del(handler);
    Evas* canvas = evas_object_evas_get(m_window);
    evas_event_callback_del_full(canvas, EVAS_CALLBACK_RENDER_PRE, on_drawing, this);
    evas_event_callback_del_full(canvas, EVAS_CALLBACK_RENDER_POST, on_drawn, this);
}

void PressGate::pictureChanges()
{
    m_picture = Picture::Changed;
    // Something has to be drawn, or nothing would ever be reported as drawn.
    evas_damage_rectangle_add(evas_object_evas_get(m_window), 0, 0, 1, 1);
}

void PressGate::on_drawing(void* data, Evas*, void*)
{
    auto* self = static_cast<PressGate*>(data);
    if (self->m_picture == Picture::Changed)
        self->m_picture = Picture::BeingDrawn;
}

/// A picture that was on its way already when something changed does not count.
void PressGate::on_drawn(void* data, Evas*, void*)
{
    auto* self = static_cast<PressGate*>(data);
    if (self->m_picture != Picture::BeingDrawn)
        return;
    self->m_picture = Picture::Drawn;
    self->m_mark.send();
}

const char* PressGate::objection() const
{
    if (m_end.isAskedFor())
        return "the program is ending";
    if (!FocusStack::instance().empty() && m_picture != Picture::Seen)
        return "what it would act on had not been drawn yet";
    return nullptr;
}

template <typename Event>
bool PressGate::isForWindow(const Event& event) const
{
    return event.event_window == elm_win_window_id_get(m_window);
}

Eina_Bool PressGate::on_keyDown(void* data, int, void* eventInfo)
{
    auto* self = static_cast<PressGate*>(data);
    const auto* event = static_cast<Ecore_Event_Key*>(eventInfo);
    const char* objection = self->isForWindow(*event) ? self->objection() : nullptr;
    if (!objection) {
        self->m_droppedKeys.erase(event->keyname); // its key-up went to another window
        return ECORE_CALLBACK_PASS_ON;
    }
    self->m_keys.hold(event->keyname, event->timestamp);
    if (self->m_droppedKeys.insert(event->keyname).second)
        dlog_print(DLOG_INFO, names::kLogTag, "Ignored a press of %s: %s", event->keyname, objection);
    return ECORE_CALLBACK_DONE;
}

Eina_Bool PressGate::on_keyUp(void* data, int, void* eventInfo)
{
    static_cast<PressGate*>(data)->m_droppedKeys.erase(static_cast<Ecore_Event_Key*>(eventInfo)->keyname);
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool PressGate::on_buttonDown(void* data, int, void* eventInfo)
{
    auto* self = static_cast<PressGate*>(data);
    const auto* event = static_cast<Ecore_Event_Mouse_Button*>(eventInfo);
    const char* objection = self->isForWindow(*event) ? self->objection() : nullptr;
    if (!objection)
        return ECORE_CALLBACK_PASS_ON;
    self->m_droppedButtons.insert(event->buttons);
    dlog_print(DLOG_INFO, names::kLogTag, "Ignored a click: %s", objection);
    return ECORE_CALLBACK_DONE;
}

/// The toolkit acts on a click a moment later, and would take the next one as well before that.
Eina_Bool PressGate::on_buttonUp(void* data, int, void* eventInfo)
{
    auto* self = static_cast<PressGate*>(data);
    const auto* event = static_cast<Ecore_Event_Mouse_Button*>(eventInfo);
    if (self->m_droppedButtons.erase(event->buttons) > 0)
        return ECORE_CALLBACK_DONE;
    if (self->isForWindow(*event))
        self->pictureChanges();
    return ECORE_CALLBACK_PASS_ON;
}

} // namespace orbis::flux
