// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Leftovers.h"

#include "flux/Outline.h"

#include <utility>

namespace orbis::flux {

namespace {

/// So many deleted popups are kept at most; when pictures are drawn there is seldom more than one between
/// two.
constexpr int kMost = 8;

/// From so many on they are let go at once, whatever is being drawn: popups can come faster than pictures.
constexpr int kTooMany = 64;

/// How long no picture must have been finished, seconds. A picture is drawn by another thread of the toolkit,
/// and letting go while it is at work would block until it is done.
constexpr double kQuiet = 2.0;

} // namespace

Leftovers::Leftovers(Evas* canvas)
    : m_canvas(canvas)
{
    evas_event_callback_add(m_canvas, EVAS_CALLBACK_RENDER_POST, on_drawn, this);
}

Leftovers::~Leftovers()
{
    if (m_timer)
        ecore_timer_del(m_timer);
    evas_event_callback_del_full(m_canvas, EVAS_CALLBACK_RENDER_POST, on_drawn, this);
}

void Leftovers::add()
{
    if (++m_count == kTooMany && m_timer)
        ecore_timer_del(std::exchange(m_timer, nullptr));
    if (m_count >= kMost && !m_timer)
        m_timer = ecore_timer_add(m_isDark || m_count >= kTooMany ? 0.0 : kQuiet, on_time, this);
}

void Leftovers::on_drawn(void* data, Evas*, void*)
{
    auto* self = static_cast<Leftovers*>(data);
    self->m_isDark = false;
    self->m_count = 0;
    if (self->m_timer)
        ecore_timer_del(std::exchange(self->m_timer, nullptr));
}

Eina_Bool Leftovers::on_time(void* data)
{
    auto* self = static_cast<Leftovers*>(data);
    self->m_timer = nullptr;
    evas_norender(self->m_canvas);
    self->m_isDark = true; // whatever that call told on_drawn()
    self->m_count = 0;
    // The canvas now takes what has changed for drawn.
    drawAgain(self->m_canvas, wholeOf(self->m_canvas));
    return ECORE_CALLBACK_CANCEL;
}

} // namespace orbis::flux
