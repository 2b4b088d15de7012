// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Lowering.h"

#include "flux/FocusStack.h"
#include "flux/WindowSystem.h"

#include <utility>

namespace orbis::flux {

Lowering::Lowering(Evas_Object* window, std::function<void()> hidden)
    : m_window(window)
    , m_hidden(std::move(hidden))
    , m_hides(!isWayland(window))
{
}

void Lowering::lowered()
{
    if (!evas_object_visible_get(m_window))
        return;
    if (!m_hides)
        emptyNow();
    else if (FocusStack::instance().empty())
        hideNow();
    else if (!m_hideJob)
        m_hideJob.reset(ecore_job_add(on_hideJob, this));
}

void Lowering::hideNow()
{
    m_hideJob.reset();
    evas_object_hide(m_window);
    m_hidden();
    syncWindowSystem(m_window);
}

/// A window that stays is emptied: what has gone from it is taken off the screen at once, for the same
/// reason.
void Lowering::emptyNow()
{
    if (!FocusStack::instance().empty())
        return;
    elm_win_render(m_window);
    syncWindowSystem(m_window);
}

void Lowering::on_hideJob(void* data)
{
    auto* self = static_cast<Lowering*>(data);
    static_cast<void>(self->m_hideJob.release()); // it is over with this call
    self->hideNow();
}

} // namespace orbis::flux
