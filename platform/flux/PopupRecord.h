// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Inside of the styled popup, for the other parts of the widget set.
#pragma once

#include "app/Language.h"
#include "elm_flux.h"
#include "flux/Record.h"

#include <array>
#include <string>
#include <vector>

namespace orbis::flux {

/// What a viewer who listens has been told of a popup since it was shown.
struct Told {
    bool isAnnounced = false;
    bool isGivingUp = false; ///< that it goes by itself soon
    std::vector<std::string> texts;
    std::vector<std::string> further; ///< parts that are said in the place of its texts
};

struct PopupRecord {
    static constexpr const char* kKey = kPopupKey;

    ~PopupRecord();

    Evas_Object* object = nullptr; ///< the popup itself
    Evas_Object* window = nullptr; ///< borrowed; the window it covers
    Evas_Object* size = nullptr; ///< invisible object of the content's size
    Evas_Object* row = nullptr; ///< box of the buttons
    Elm_Flux_Popup_Style style = ELM_FLUX_POPUP_STYLE_DEFAULT;
    std::array<Evas_Object*, ELM_FLUX_POPUP_BUTTONS> buttons {}; ///< borrowed; null for an empty slot
    int focusedSlot = 0;
    Evas_Object* lastFocus = nullptr; ///< the button that had the focus last; one of buttons, or null
    Ecore_Job* focusJob = nullptr; ///< cleared by the job itself
    double contentWidth = 0; ///< layout units, as the height
    double contentHeight = 0;
    double leastWidth = 0; ///< of the card's content, so that it covers the card below; units, as the height
    double leastHeight = 0;
    double textScale = 1.0; ///< how much larger than usual the texts are
    Told told;
    bool isTimeMoved = false; ///< the time left is less than when it was drawn
    app::LanguageHold language; ///< what is up keeps its texts
};

} // namespace orbis::flux
