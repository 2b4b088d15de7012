/// The question that the progress popups ask before they give up.
#pragma once

#include <Elementary.h>

#include <vector>

namespace TesselUI {

/// Makes and shows a popup that asks whether the set-up shall be cancelled. Main loop only.
/// @param box    borrowed; what the popup is made on
/// @param yes,no "clicked" handlers of the buttons; @p data is theirs, borrowed
/// @return the popup, owned by the caller; null when there is no window
Evas_Object* addCancelConfirmation(Evas_Object* box, Evas_Smart_Cb yes, Evas_Smart_Cb no, const void* data);

/// Confirmations that another one was opened over, oldest first. Deletes what is left of them when it goes,
/// so that none stays on the screen without its popup.
class SupersededConfirmations {
public:
    SupersededConfirmations() = default;
    ~SupersededConfirmations();
    SupersededConfirmations(const SupersededConfirmations&) = delete;
    SupersededConfirmations& operator=(const SupersededConfirmations&) = delete;

    /// Takes @p popup over; null is ignored.
    void push(Evas_Object* popup);

    /// @return the newest, handed back to the caller; null when there is none
    Evas_Object* pop();

    /// Takes them off the screen.
    void hide() const;

private:
    std::vector<Evas_Object*> m_popups;
};

} // namespace TesselUI
