// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// When something is read out, and what.
#pragma once

#include "base/EflHandles.h"
#include "flux/PopupRecord.h"
#include "flux/Readout.h"
#include "flux/StillWorking.h"

#include <string>

namespace orbis::flux {

struct SpokenPart;

/// Has what is on top in a window read out: a popup whole when it comes up, whoever has the focus; then each
/// button that the focus comes to, each text that comes up in it, that it still works or goes soon, and all
/// of it again when the viewer asks for it. The widgets say what they are. The focused one is asked for its
/// own information once for each time that the focus comes to it, and not believed where it is of something
/// else. Nothing of it happens while the reader is off. Must go before its window. Main loop only.
class FocusReadout {
public:
    explicit FocusReadout(Evas_Object* window);
    FocusReadout(const FocusReadout&) = delete;
    FocusReadout& operator=(const FocusReadout&) = delete;

    /// The focus came to a button, a text has come up, or the window. All is looked at once the loop is idle
    /// again.
    void somethingChanged();

    /// The focus left a button. When the whole window lost the keys, the button still has the focus in it.
    void focusLeft();

    /// Ends what is being said; the popup on top has not been announced, unless it was there before.
    void topPopupChanged();

    /// Ends what is being said; it is said again when the window comes back.
    void windowGone();

    /// The viewer presses a key that may have no other use than to ask for all again.
    void upOrDown();

    /// @param left  seconds until @p popup goes
    void givesUp(Evas_Object* popup, int left);

private:
    static void on_lookJob(void* data);
    static void on_keyJob(void* data);

    void look();
    bool isListenedTo();
    std::string takeInformation(Evas_Object* focused);
    void announce(PopupRecord& popup, const std::vector<SpokenPart>& parts, const std::string& information);
    void tellNews(PopupRecord& popup, const std::vector<SpokenPart>& parts, bool hasMoved);
    void repeat();
    void readerSwitched();
    void workGoesOn();
    void heard(const PopupRecord& popup);
    void stop();

    Evas_Object* m_window; ///< borrowed
    const Evas_Object* m_focused = nullptr; ///< borrowed, only compared: had the focus at the last look
    const Evas_Object* m_named = nullptr; ///< borrowed, only compared: the button whose name was said last
    const Evas_Object* m_beforeKey =
        nullptr; ///< borrowed, only compared: had the focus when a key was pressed
    bool m_wasOn = false; ///< the reader, at the last look
    Readout m_readout;
    StillWorking m_stillWorking;
    base::JobPtr m_lookJob; ///< let go by the job itself, as the other
    base::JobPtr m_keyJob;
};

} // namespace orbis::flux
