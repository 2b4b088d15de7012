// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the window's own system is asked for, past the toolkit.
#pragma once

#include "flux/Outline.h"

#include <Elementary.h>

#include <functional>

namespace orbis::flux {

bool isX11(const Evas_Object* window);
bool isWayland(const Evas_Object* window);

/// Returns once the window system has taken in everything that was drawn, shown or hidden so far.
void syncWindowSystem(const Evas_Object* window);

/// @return whether a window on X11 is mixed with what is behind it, pixel by pixel
bool mixesTransparency(const Evas_Object* window);

/// What the X server fills a window with where nobody has drawn yet. The window mixes transparency.
void setBackground(const Evas_Object* window, const Tint& colour);

/// Has the X server fill a part of a window again, without asking anybody to draw there.
void clearToBackground(const Evas_Object* window, const Area& area);

/// Has the X server draw in a part of a window what it has in another of the same size, which is on the
/// screen. Nothing is answered, where a picture of the toolkit's waits for the server.
void copyWithin(const Evas_Object* window, const Area& from, const Area& to);

/// Tells when the window system has taken in what was drawn: everything that it reported before the answer,
/// keys and clicks among it, happened before. The order of events on one connection says so, and no clock is
/// compared. Main loop only; lives no longer than its window.
class DrawnMark {
public:
    /// @param arrived  called from the event queue, between the events from before and those from after
    DrawnMark(Evas_Object* window, std::function<void()> arrived);
    ~DrawnMark();
    DrawnMark(const DrawnMark&) = delete;
    DrawnMark& operator=(const DrawnMark&) = delete;

    /// Sends a mark; its arrival is reported unless a later one is under way. Where there is no window system
    /// it arrives at once.
    void send();

private:
    struct Ticket; ///< of one mark on Wayland, whose answer cannot be called back

    static Eina_Bool on_property(void* data, int, void* eventInfo);
    static Eina_Bool on_answer(void* data, int, void* eventInfo);
    void arrive();

    Evas_Object* m_window; ///< borrowed
    std::function<void()> m_arrived;
    Ecore_Event_Handler* m_handler = nullptr;
    int m_underWay = 0;
};

} // namespace orbis::flux
