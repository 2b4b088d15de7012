/// Which popup has the keys: the topmost one, and only it.
#pragma once

#include <Elementary.h>

#include <vector>

namespace orbis::flux {

/// The popups on the screen, lowest first. Focus cannot enter any but the topmost; when that goes, the one
/// below gets its focus back where it was. The lowest popup dims what is behind the window, unless the window
/// is dimmed already; each one above it veils the popups below. Main loop only; holds borrowed objects, which
/// remove themselves before they are deleted.
class FocusStack {
public:
    static FocusStack& instance();

    /// Puts @p popup on top (again) and moves the focus into it.
    void push(Evas_Object* popup);

    /// Takes @p popup off and gives the focus back to the one below; nothing when it is not there.
    void remove(Evas_Object* popup);

    /// Dims again, after the window was dimmed or undimmed.
    void updateDims();

    Evas_Object* top() const;
    bool empty() const { return m_popups.empty(); }

private:
    std::vector<Evas_Object*> m_popups;
};

} // namespace orbis::flux
