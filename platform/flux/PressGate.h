// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Which presses count.
#pragma once

#include "flux/LoopEnd.h"
#include "flux/WindowSystem.h"

#include <Elementary.h>

#include <set>
#include <string>

namespace orbis::flux {

class KeyGuard;

/// Drops the keys and clicks that the viewer made before what they would act on had been drawn: while a call
/// blocks the loop, presses wait in the window system's queue and would answer whatever comes up next. After
/// an answer, and once the loop's end was asked for, nothing counts that was pressed before the picture that
/// follows. What is dropped is logged. One gate a window; sees what the window system delivers, not what
/// is fed to the canvas directly.
class PressGate {
public:
    /// @param keys  borrowed; is told of the dropped keys, because one that stays down is held
    PressGate(Evas_Object* window, KeyGuard& keys);
    ~PressGate();
    PressGate(const PressGate&) = delete;
    PressGate& operator=(const PressGate&) = delete;

    /// What a press would act on is another thing from here on. Presses count again once the picture that
    /// follows has been drawn.
    void pictureChanges();

private:
    enum class Picture {
        Seen, ///< presses count
        Changed, ///< not drawn yet
        BeingDrawn,
        Drawn, ///< what was pressed before may still be under way
    };

    static Eina_Bool on_keyDown(void* data, int, void* eventInfo);
    static Eina_Bool on_keyUp(void* data, int, void* eventInfo);
    static Eina_Bool on_buttonDown(void* data, int, void* eventInfo);
    static Eina_Bool on_buttonUp(void* data, int, void* eventInfo);
    static void on_drawing(void* data, Evas*, void*);
    static void on_drawn(void* data, Evas*, void*);

    /// @return why a press does not count now; null when it does
    const char* objection() const;
    template <typename Event>
    bool isForWindow(const Event& event) const;

    Evas_Object* m_window; ///< borrowed
    KeyGuard& m_keys;
    Picture m_picture = Picture::Seen;
    std::set<std::string> m_droppedKeys; ///< still down: their repeats need no line in the log
    std::set<unsigned int> m_droppedButtons; ///< still down, of a pointing device
    Ecore_Event_Handler* m_handlers[4] = {};
    DrawnMark m_mark;
    LoopEnd m_end;
};

} // namespace orbis::flux
