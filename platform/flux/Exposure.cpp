// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Exposure.h"

#include "flux/Outline.h"
#include "flux/WindowSystem.h"

#include <Ecore_X.h>
#include <X11/Xlib.h>

#include <utility>

namespace orbis::flux {

Exposure::Exposure(Evas_Object* window)
    : m_window(window)
    , m_canvas(evas_object_evas_get(window))
{
    if (!isX11(window))
        return;
    evas_object_event_callback_add(m_window, EVAS_CALLBACK_SHOW, on_shown, this);
    evas_event_callback_add(m_canvas, EVAS_CALLBACK_RENDER_PRE, on_drawing, this);
    m_messages = ecore_event_handler_prepend(ECORE_X_EVENT_ANY, on_message, this);
    m_exposures = ecore_event_handler_prepend(ECORE_X_EVENT_WINDOW_DAMAGE, on_exposed, this);
}

Exposure::~Exposure()
{
    if (!m_messages)
        return;
    evas_object_event_callback_del_full(m_window, EVAS_CALLBACK_SHOW, on_shown, this);
    evas_event_callback_del_full(m_canvas, EVAS_CALLBACK_RENDER_PRE, on_drawing, this);
    ecore_event_handler_del(m_messages);
    ecore_event_handler_del(m_exposures);
}

/// The server keeps nothing of a window that was hidden; the canvas would draw only what has changed since.
void Exposure::on_shown(void* data, Evas*, Evas_Object*, void*)
{
    auto* self = static_cast<Exposure*>(data);
    drawAgain(self->m_canvas, wholeOf(self->m_canvas));
    self->m_isWholeNext = true;
}

void Exposure::on_drawing(void* data, Evas*, void*)
{
    auto* self = static_cast<Exposure*>(data);
    if (evas_object_visible_get(self->m_window) && std::exchange(self->m_isWholeNext, false))
        self->m_whole = NextRequest(static_cast<Display*>(ecore_x_display_get()));
}

/// Each message comes twice: as it is, and right after that as the toolkit understands it.
Eina_Bool Exposure::on_message(void* data, int, void* message)
{
    auto* self = static_cast<Exposure*>(data);
    const auto* event = static_cast<XEvent*>(message);
    self->m_isOld = event->type == Expose && event->xany.serial < self->m_whole;
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool Exposure::on_exposed(void* data, int, void* event)
{
    auto* self = static_cast<Exposure*>(data);
    const bool isOurs =
        static_cast<Ecore_X_Event_Window_Damage*>(event)->win == elm_win_xwindow_get(self->m_window);
    return std::exchange(self->m_isOld, false) && isOurs ? ECORE_CALLBACK_DONE : ECORE_CALLBACK_PASS_ON;
}

} // namespace orbis::flux
