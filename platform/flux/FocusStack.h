// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Which popup has the keys: the topmost one, and only it.
#pragma once

#include <Elementary.h>

#include <vector>

namespace orbis::flux {

/// The popups on the screen, lowest first. Focus cannot enter any but the topmost; when that goes, the one
/// below gets its focus back where it was. The lowest popup dims what is behind the window, unless the window
/// is dimmed already; each one above it veils the popups below. Popups need no managed window, so the stack
/// is there without one; when there is one, its host is told and asked. Main loop only; holds borrowed
/// objects, which remove themselves before they are deleted.
class FocusStack {
public:
    static FocusStack& instance();

    /// Gives the focus to the button of a popup that is to have it.
    using GiveFocus = void (*)(Evas_Object* popup);

    /// Puts @p popup on top (again) and moves the focus into it.
    /// @param giveFocus  called now, and whenever the popup is on top again
    void push(Evas_Object* popup, GiveFocus giveFocus);

    /// Takes @p popup off and gives the focus back to the one below; nothing when it is not there.
    void remove(Evas_Object* popup);

    /// Dims again, after the window was dimmed or undimmed.
    void updateDims();

    /// @return the topmost popup, borrowed; null when there is none
    Evas_Object* top() const;
    bool empty() const { return m_popups.empty(); }

private:
    struct Entry {
        Evas_Object* popup;
        GiveFocus giveFocus;
    };

    void take(const Evas_Object* popup);

    std::vector<Entry> m_popups;
};

} // namespace orbis::flux
