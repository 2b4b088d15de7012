// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What deleted widgets leave on the canvas.
#pragma once

#include <Ecore.h>
#include <Evas.h>

namespace orbis::flux {

/// The canvas lets go of deleted objects when it draws its next picture. There may be none for hours: a
/// compositor asks for pictures only while a screen shows them, and popups come and go while the screen is
/// off. Then they are let go without a picture. Belongs to one canvas and must go before it. Main loop only.
class Leftovers {
public:
    explicit Leftovers(Evas* canvas);
    ~Leftovers();
    Leftovers(const Leftovers&) = delete;
    Leftovers& operator=(const Leftovers&) = delete;

    /// A popup has been deleted.
    void add();

private:
    static void on_drawn(void* data, Evas*, void*);
    static Eina_Bool on_time(void* data);

    Evas* m_canvas; ///< borrowed
    int m_count = 0; ///< popups since the last picture
    bool m_isDark = false; ///< no picture since objects were let go without one
    Ecore_Timer* m_timer = nullptr; ///< cleared by the timer itself
};

} // namespace orbis::flux
