// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The buttons of a popup: which slot they are in, where they stand, and which of them has the focus.
#pragma once

#include "flux/PopupRecord.h"

namespace orbis::flux {

/// Gives the focus to the button of @p popup that had it last, else to the one that was asked for, else to
/// the first there is.
void focusPopup(Evas_Object* popup);

/// @return that button, null when there is none
Evas_Object* buttonToFocus(const PopupRecord& record);

/// Makes the row of the buttons, which places them by itself.
void addButtonRow(PopupRecord& record);

/// Gives the card its size, which is the content's or, where they need more, the buttons'; and places those.
void arrangePopup(PopupRecord& record);

/// Gives the card its size anew, where that depends on its texts and the screen.
void growPopup(PopupRecord& record);

/// Makes the card, which is about to be shown, at least as large as that of the popup on top, so that nothing
/// of that is left to be seen beside it.
void coverBelow(PopupRecord& record);

/// Puts @p button into the empty @p slot, and takes it out of the slot it was in.
void takeButton(PopupRecord& record, Evas_Object* button, int slot);

/// Empties @p slot; the button is left alone.
void forgetButton(PopupRecord& record, int slot);

/// @return the slot of @p button, -1 when it is null or in none
int slotOf(const PopupRecord& record, const Evas_Object* button);

bool hasNoButton(const PopupRecord& record);

} // namespace orbis::flux
