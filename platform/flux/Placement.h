// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Where the managed window stands on the screen.
#pragma once

#include <Elementary.h>

namespace orbis::flux {

/// Gives a window the whole screen, above the others, and the toolkit the scale that fits it, and keeps both
/// when the screen changes. Must go before its window. Main loop only.
class Placement {
public:
    explicit Placement(Evas_Object* window);
    ~Placement();
    Placement(const Placement&) = delete;
    Placement& operator=(const Placement&) = delete;

    /// Fits the toolkit's scale to the screen. Some window systems tell the screen's size only after the
    /// window was made, and it may change, so this is called again before a popup is made.
    void ensureScale();

private:
    struct Size {
        int width = 0;
        int height = 0;
    };

    static Eina_Bool on_screenResized(void* data, int, void* eventInfo);
    static void on_windowResized(void* data, Evas*, Evas_Object*, void*);

    Size screenSize() const;
    void fitScale();
    void fitWindow();
    void watchScreen();

    Evas_Object* m_window; ///< borrowed
    Size m_scaledTo; ///< screen that the scale was chosen for; empty while none is known
    Ecore_Event_Handler* m_screenWatch = nullptr;
};

} // namespace orbis::flux
