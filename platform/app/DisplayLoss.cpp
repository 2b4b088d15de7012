// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/DisplayLoss.h"

#include "app.h"
#include "app/Ending.h"

#include <Ecore_X.h>
#include <X11/Xlib.h>

namespace orbis::app {

namespace {

/// Xlib lets the process go on for nothing after this; the toolkit would end it in the middle of its own
/// clean-up, by exit().
void on_connectionLost(void*)
{
    Ending::now(APP_EXIT_DISPLAY_LOST, "the display is gone");
}

int on_xlibError(Display*)
{
    on_connectionLost(nullptr);
    return 0;
}

} // namespace

DisplayLoss::DisplayLoss(const Evas_Object* window)
    : m_window(elm_win_xwindow_get(window))
{
    if (!m_window)
        return;
    // The toolkit's own handler would first shut its connection down, with what is left of it.
    XSetIOErrorHandler(on_xlibError);
    // Before the toolkit's handler, which deletes the window: afterwards it could have been the application.
    m_destroyed = ecore_event_handler_prepend(ECORE_X_EVENT_WINDOW_DESTROY, on_destroyed, this);
}

DisplayLoss::~DisplayLoss()
{
    if (m_destroyed)
        ecore_event_handler_del(m_destroyed);
}

void DisplayLoss::watchConnection()
{
    ecore_x_io_error_handler_set(on_connectionLost, nullptr);
}

Eina_Bool DisplayLoss::on_destroyed(void* data, int, void* event)
{
    if (static_cast<Ecore_X_Event_Window_Destroy*>(event)->win == static_cast<DisplayLoss*>(data)->m_window)
        displayLost("the window was destroyed from outside");
    return ECORE_CALLBACK_PASS_ON;
}

} // namespace orbis::app
