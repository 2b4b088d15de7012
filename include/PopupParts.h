// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What popups are built of: the content of those that show progress, buttons with a read-out, and their way
/// off the screen.
#pragma once

#include <Elementary.h>

#include <initializer_list>
#include <string>

namespace TesselUI {

/// The card's content: a row of progress indicator and first line, and a second line below.
struct ProgressLayouts {
    Evas_Object* main; ///< stacked; child of the popup
    Evas_Object* content; ///< the row; item of main
};

/// Makes the box that fills @p window, shown; null when it cannot be made.
Evas_Object* addProgressBox(Evas_Object* window);

/// Makes both layouts, the row appended.
ProgressLayouts addProgressLayouts(Evas_Object* popup);

/// Makes @p main the content of @p popup.
void setProgressContent(Evas_Object* popup, Evas_Object* main);

/// Appends the small progress indicator to the row.
Evas_Object* addProgressIndicator(Evas_Object* content);

/// Append a text of several lines, markup: beside the indicator, below the row.
void addFirstLine(Evas_Object* content, const char* text);
void addSecondLine(Evas_Object* main, const char* text);

/// Makes a button of the default look in @p slot of @p popup.
/// @param clicked  its handler, called with @p data (borrowed)
Evas_Object* addPopupButton(
    Evas_Object* popup, const std::string& label, int slot, Evas_Smart_Cb clicked, const void* data);

/// Hides @p objects and lowers @p window, which takes the picture along when no popup is up any more. Null
/// objects and a null window are left out.
void leaveScreen(Evas_Object* window, std::initializer_list<Evas_Object*> objects);

/// Registers what the screen reader says on @p button: @p context and @p name the first time, then the name.
/// Both are markup and are cut to the record's size.
void attachReadOut(Evas_Object* button, const std::string& context, const std::string& name);

} // namespace TesselUI
