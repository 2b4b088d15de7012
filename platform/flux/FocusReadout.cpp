#include "flux/FocusReadout.h"

#include "flux/FocusStack.h"

namespace orbis::flux {

void FocusReadout::focusMoved()
{
    if (!m_focusJob)
        m_focusJob.reset(ecore_job_add(on_focusJob, this));
}

void FocusReadout::focusLeft()
{
    if (elm_win_focus_get(m_window))
        m_spoken = nullptr;
}

void FocusReadout::readFocused()
{
    Evas_Object* focused = elm_object_focused_object_get(m_window);
    // The window getting the keys is no news: saying the name would interrupt what is being read.
    if (focused == m_spoken)
        return;
    if (!FocusStack::instance().empty() && evas_object_visible_get(m_window)) {
        m_spoken = focused;
        m_readout.speakFocused(focused);
    }
}

void FocusReadout::on_focusJob(void* data)
{
    auto* self = static_cast<FocusReadout*>(data);
    static_cast<void>(self->m_focusJob.release()); // it is over with this call
    self->readFocused();
}

} // namespace orbis::flux
