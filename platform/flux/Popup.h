/// Inside of the styled popup, for the other parts of the widget set.
#pragma once

#include "app/Language.h"
#include "elm_flux.h"

#include <array>

namespace orbis::flux {

struct PopupRecord {
    static constexpr const char* kKey = "orbis.flux.popup";

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
    app::LanguageHold language; ///< what is up keeps its texts
};

/// Gives the focus to the button of @p popup that had it last, else to the one that was asked for, else to
/// the first there is.
void focusPopup(Evas_Object* popup);

/// Makes the row of the buttons, which places them by itself.
void addButtonRow(PopupRecord& record);

/// Gives the card its size, which is the content's or, where they need more, the buttons'; and places those.
void arrangePopup(PopupRecord& record);

/// Puts @p button into the empty @p slot, and takes it out of the slot it was in.
void takeButton(PopupRecord& record, Evas_Object* button, int slot);

/// Empties @p slot; the button is left alone.
void forgetButton(PopupRecord& record, int slot);

/// @return the slot of @p button, -1 when it is null or in none
int slotOf(const PopupRecord& record, const Evas_Object* button);

bool hasNoButton(const PopupRecord& record);

} // namespace orbis::flux
