// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Widget factory and focus chains: the toolkit objects of a screen, made in one uniform way.
///
/// Every function that takes a parent answers null to a null parent and logs it. What is made belongs to its
/// parent object and goes with it, or earlier with evas_object_del(). Texts are borrowed. Main loop only.
#pragma once

#include "Export.h"

#include <Elementary.h>

namespace TesselUI {

/// Whether the viewer touched the remote or the pointer; only raised here, read and cleared by whoever wants
/// to know.
extern TESSEL_API bool time_flag;

/// Raises time_flag.
TESSEL_API void Reset_Time();

/// The same, as a handler of object events.
TESSEL_API void Reset_Time_Flag(void* data, Evas* canvas, Evas_Object* object, void* event);

} // namespace TesselUI

extern "C" {

/// Makes a layout of a group of the program's theme, which fills what it is put into.
/// @param x,y           pixels; -1 for either: not moved
/// @param width,height  pixels of the design, scaled by the toolkit; -1 for either: not resized
TESSEL_API Evas_Object* createLayout(
    Evas_Object* parent, const char* group, int x, int y, int width, int height);

/// Makes a standard popup. @param style  of the toolkit's theme
TESSEL_API Evas_Object* createPopup(Evas_Object* parent, const char* style);

/// Makes an image of the program's image folder and shows it.
/// @param fileName  nullable: an empty image, not shown
/// @param part      nullable: the part of @p parent that the image becomes the content of
TESSEL_API Evas_Object* createImage(Evas_Object* parent, const char* fileName, const char* part);

/// Makes a box that takes all the room it is offered.
TESSEL_API Evas_Object* createBox(Evas_Object* parent);

/// Makes an icon of the program's image folder, not shown. @param fileName  nullable: an empty icon
TESSEL_API Evas_Object* createIcon(Evas_Object* parent, const char* fileName);

/// Makes a label and shows it. @param style,text  nullable
TESSEL_API Evas_Object* createLabel(Evas_Object* parent, const char* style, const char* text);

/// Makes a button for the remote control and shows it: pointing at it focuses it.
/// @param clicked  nullable, called with @p data (borrowed)
TESSEL_API Evas_Object* createButton(
    Evas_Object* parent, const char* style, Evas_Smart_Cb clicked, const char* text, void* data);

/// Makes a timer of the main loop. @param interval  seconds
/// @return owned by the caller, until @p callback ends it
TESSEL_API Ecore_Timer* createTimer(double interval, Ecore_Task_Cb callback, void* data);

/// Tells the theme of @p layout the background colour of the high-contrast look (message 1, four integers).
TESSEL_API void SetHigh_ContrastBg(Evas_Object* layout);

// Focus chains of a column or row. A null entry is skipped; its neighbours are left to the toolkit's own
// search in its direction. The cyclic ones lead from the last to the first.
TESSEL_API void set_focus_chain_up_down(Evas_Object** objects, int count);
TESSEL_API void set_focus_chain_left_right(Evas_Object** objects, int count);

// Keep the keys of two directions from moving the focus off each object.
TESSEL_API void single_chain_set_focus_LEFTRIGHT(Evas_Object** objects, int count);
TESSEL_API void single_chain_set_focus_DOWNUP(Evas_Object** objects, int count);
}
