// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the X server asks to be drawn again.
#pragma once

#include "base/EflHandles.h"

namespace orbis::flux {

/// A window that comes on the screen is drawn at once, and the server's message that nothing is in it yet
/// arrives after that: the toolkit would draw all of it a second time. The messages from before the picture
/// are dropped; requests have numbers, and each message tells which was the last that the server knew of.
/// Must go before its window.
class Exposure {
public:
    explicit Exposure(Evas_Object* window);
    ~Exposure();
    Exposure(const Exposure&) = delete;
    Exposure& operator=(const Exposure&) = delete;

private:
    static void on_shown(void* data, Evas*, Evas_Object*, void*);
    static void on_drawing(void* data, Evas*, void*);
    static Eina_Bool on_message(void* data, int, void* message);
    static Eina_Bool on_exposed(void* data, int, void* event);

    Evas_Object* m_window; ///< borrowed
    Evas* m_canvas; ///< borrowed
    Ecore_Event_Handler* m_messages = nullptr;
    Ecore_Event_Handler* m_exposures = nullptr;
    bool m_isWholeNext = false; ///< the next picture is of all that the window has
    unsigned long m_whole = 0; ///< the number of the first request for the last such picture
    bool m_isOld = false; ///< the message that comes next is from before that
};

} // namespace orbis::flux
