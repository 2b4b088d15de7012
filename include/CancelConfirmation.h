// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The question that the progress popups ask before they give up.
#pragma once

#include <Elementary.h>

#include <vector>

namespace TesselUI {

/// Asks whether the set-up shall be cancelled, and remembers the answer. A question may be opened over an
/// open one: that is kept aside and comes back when the newer one is answered with No. What is left goes with
/// this object, so that none stays on the screen without its popup. Main loop only.
class CancelQuestion {
public:
    CancelQuestion() = default;
    ~CancelQuestion();
    CancelQuestion(const CancelQuestion&) = delete;
    CancelQuestion& operator=(const CancelQuestion&) = delete;

    /// Opens a question, unless it was answered with Yes.
    /// @param box    borrowed; what the popup is made on
    /// @param yes,no "clicked" handlers of the buttons; @p data is theirs, borrowed
    void ask(Evas_Object* box, Evas_Smart_Cb yes, Evas_Smart_Cb no, const void* data);

    /// Answers the open question with No, unless it was answered with Yes.
    void takeBack();

    /// Answers with Yes. @return false when it was before; clicks that were queued behind that do nothing
    bool answer();

    /// Takes all of it off the screen.
    void hide() const;

    /// Deletes the question that is open, not those that are kept aside.
    void deleteOpen();

private:
    Evas_Object* m_open = nullptr;
    std::vector<Evas_Object*> m_aside; ///< oldest first
    bool m_isAnswered = false;
};

} // namespace TesselUI
