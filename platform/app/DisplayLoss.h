// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The window, or the whole display, being taken away from outside.
#pragma once

#include <Elementary.h>

namespace orbis::app {

/// Watches one window while it lives; the application is ended with APP_EXIT_DISPLAY_LOST (app.h) when the
/// window system destroys the window or goes itself. To be destroyed before the window is deleted.
class DisplayLoss {
public:
    /// @param window  borrowed
    explicit DisplayLoss(const Evas_Object* window);
    ~DisplayLoss();
    DisplayLoss(const DisplayLoss&) = delete;
    DisplayLoss& operator=(const DisplayLoss&) = delete;

    /// Watches the display before there is a window.
    static void watchConnection();

private:
    static Eina_Bool on_destroyed(void* data, int, void* event);

    Ecore_X_Window m_window;
    Ecore_Event_Handler* m_destroyed = nullptr;
};

/// The application runs on, but nothing it shows can be seen any more: ends it the orderly way.
void displayLost(const char* what);

} // namespace orbis::app
