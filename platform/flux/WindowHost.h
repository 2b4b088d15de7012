// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Who manages the application's window, as everything else in the widget set sees it.
#pragma once

#include <Elementary.h>

#include <string_view>

namespace orbis::flux {

/// Is told what happens in and to the window that it manages, and decides what comes of it. There is one at
/// most. Main loop only.
class WindowHost {
public:
    WindowHost(const WindowHost&) = delete;
    WindowHost& operator=(const WindowHost&) = delete;

    /// @return the host of @p window, or null for any other object
    static WindowHost* of(const Evas_Object* window);

    /// @return the host of whatever window is managed, or null
    static WindowHost* present() { return s_present; }

    /// From here on @p host is the one that is told; borrowed, null for none.
    static void appoint(WindowHost* host) { s_present = host; }

    /// The application emitted a signal on the window; unknown ones are ignored.
    virtual void windowSignal(std::string_view emission) = 0;

    /// @return whether the application asked for the picture behind the window to be dimmed
    virtual bool isDimmed() const = 0;

    /// Fits the toolkit's scale to the screen, as far as the screen's size is known.
    virtual void ensureScale() = 0;

    /// Another popup is on top than before, or none is up any more.
    /// @param window  that of the popup that came or went; need not be the managed one
    virtual void topPopupChanged(const Evas_Object* window) = 0;

    /// A popup of the window has been deleted.
    virtual void popupGone() = 0;

    /// What a press would act on is another thing from here on: what was pressed before that has been drawn
    /// does not count for it.
    virtual void pictureChanges() = 0;

    /// The focus came to a button of the window. Toolkit events of the kind also come in passing.
    virtual void focusMoved() = 0;

    /// A text has come up in what is on the screen.
    virtual void textsChanged() = 0;

    /// A popup goes by itself.
    /// @param left  seconds until then
    virtual void givesUp(Evas_Object* popup, int left) = 0;

    /// The focus left a button. When the whole window lost the keys, the button still has the focus in it.
    virtual void focusLeft() = 0;

protected:
    explicit WindowHost(Evas_Object* window)
        : m_window(window)
    {
    }
    ~WindowHost() = default;

    Evas_Object* const m_window; ///< borrowed; outlives its host

private:
    inline static WindowHost* s_present = nullptr;
};

inline WindowHost* WindowHost::of(const Evas_Object* window)
{
    return s_present && window && s_present->m_window == window ? s_present : nullptr;
}

} // namespace orbis::flux
