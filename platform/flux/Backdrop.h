// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What dims the picture behind the managed window, filled by the window system.
#pragma once

#include "flux/Outline.h"

#include <Elementary.h>

#include <optional>
#include <vector>

namespace orbis::flux {

/// Almost all of a picture is one colour, and to draw that costs more than all the rest. On X11 the server
/// fills it: the window's background has the colour, and the canvas draws only where there is something. The
/// objects that dim stay on the canvas, so whatever it draws is complete. Elsewhere, and where the server
/// mixes no transparent windows, the canvas draws all of it. Must go before its window.
class Backdrop {
public:
    explicit Backdrop(Evas_Object* window);
    ~Backdrop();
    Backdrop(const Backdrop&) = delete;
    Backdrop& operator=(const Backdrop&) = delete;

private:
    static void on_drawing(void* data, Evas*, void*);
    static void on_drawn(void* data, Evas*, void*);
    static void on_hidden(void* data, Evas*, Evas_Object*, void*);

    bool canFill();
    void fill(const Tint& colour);
    void leaveOut();
    void takeOver();
    std::vector<Area> rest() const;

    Evas_Object* m_window; ///< borrowed
    Evas* m_canvas; ///< borrowed
    Area m_drawn; ///< where the canvas has drawn since the window was shown
    std::optional<Tint> m_filled; ///< what the server has filled the rest with; nothing: the canvas drew it
    unsigned long m_system = 0; ///< the window system's window that the two lines below are about
    bool m_canFill = false;
};

} // namespace orbis::flux
