// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Backdrop.h"

#include "flux/WindowSystem.h"

#include <utility>

namespace orbis::flux {

Backdrop::Backdrop(Evas_Object* window)
    : m_window(window)
    , m_canvas(evas_object_evas_get(window))
{
    evas_event_callback_add(m_canvas, EVAS_CALLBACK_RENDER_PRE, on_drawing, this);
    evas_event_callback_add(m_canvas, EVAS_CALLBACK_RENDER_POST, on_drawn, this);
    evas_object_event_callback_add(m_window, EVAS_CALLBACK_HIDE, on_hidden, this);
}

Backdrop::~Backdrop()
{
    evas_event_callback_del_full(m_canvas, EVAS_CALLBACK_RENDER_PRE, on_drawing, this);
    evas_event_callback_del_full(m_canvas, EVAS_CALLBACK_RENDER_POST, on_drawn, this);
    evas_object_event_callback_del_full(m_window, EVAS_CALLBACK_HIDE, on_hidden, this);
}

/// The toolkit makes another window when a compositor comes or goes.
bool Backdrop::canFill()
{
    const unsigned long system = isX11(m_window) ? elm_win_xwindow_get(m_window) : 0;
    if (system != m_system) {
        m_canFill = system && mixesTransparency(m_window);
        m_filled.reset();
    }
    m_system = system;
    return m_canFill;
}

/// From now on the rest of the window is of this colour, and what the server fills later on by itself.
void Backdrop::fill(const Tint& colour)
{
    if (m_filled && *m_filled == colour)
        return;
    setBackground(m_window, colour);
    for (const Area& area : rest())
        clearToBackground(m_window, area);
    m_filled = colour;
}

/// @return what of the window the canvas need not draw
std::vector<Area> Backdrop::rest() const
{
    Area whole;
    evas_output_size_get(m_canvas, &whole.right, &whole.bottom);
    const Area inner = m_drawn.cutTo(whole);
    if (inner.isEmpty())
        return {whole};
    std::vector<Area> areas;
    for (const Area& area : {Area {0, 0, whole.right, inner.top},
             Area {0, inner.bottom, whole.right, whole.bottom}, Area {0, inner.top, inner.left, inner.bottom},
             Area {inner.right, inner.top, whole.right, inner.bottom}}) {
        if (!area.isEmpty())
            areas.push_back(area);
    }
    return areas;
}

/// The next picture has nothing there.
void Backdrop::leaveOut()
{
    for (const Area& area : rest())
        evas_obscured_rectangle_add(
            m_canvas, area.left, area.top, area.right - area.left, area.bottom - area.top);
}

/// What the server filled is the canvas's to draw from here on.
void Backdrop::takeOver()
{
    if (!std::exchange(m_filled, std::nullopt))
        return;
    for (const Area& area : rest())
        drawAgain(m_canvas, area);
}

void Backdrop::on_drawing(void* data, Evas* canvas, void*)
{
    auto* self = static_cast<Backdrop*>(data);
    evas_obscured_clear(canvas);
    if (!isX11(self->m_window))
        return;
    // A window that is off the screen is not emptied: the server forgets it, and when it comes back it is
    // drawn whole.
    if (!evas_object_visible_get(self->m_window)) {
        self->leaveOut();
        return;
    }
    if (!self->canFill())
        return;
    const Outline outline = outlineOf(canvas);
    self->m_drawn = self->m_drawn.with(outline.things);
    if (!outline.rest) {
        self->takeOver();
        return;
    }
    self->fill(*outline.rest);
    self->leaveOut();
}

void Backdrop::on_drawn(void*, Evas* canvas, void*)
{
    evas_obscured_clear(canvas);
}

/// The server fills all of the window when it is shown again.
void Backdrop::on_hidden(void* data, Evas*, Evas_Object*, void*)
{
    static_cast<Backdrop*>(data)->m_drawn = {};
}

} // namespace orbis::flux
