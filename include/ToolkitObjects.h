// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the popups do with toolkit objects again and again.
#pragma once

#include <Elementary.h>

#include <utility>

namespace TesselUI {

/// Deletes what @p object refers to, if anything, and clears it first.
inline void deleteObject(Evas_Object*& object)
{
    if (object)
        evas_object_del(std::exchange(object, nullptr));
}

/// Lets @p object take all the room it is offered. Null is ignored.
inline void fillRoom(Evas_Object* object)
{
    if (!object)
        return;
    evas_object_size_hint_weight_set(object, EVAS_HINT_EXPAND, EVAS_HINT_EXPAND);
    evas_object_size_hint_align_set(object, EVAS_HINT_FILL, EVAS_HINT_FILL);
}

/// Keeps the arrow keys from moving the focus off @p object.
inline void lockFocus(Evas_Object* object)
{
    for (Elm_Focus_Direction direction : {ELM_FOCUS_UP, ELM_FOCUS_DOWN, ELM_FOCUS_LEFT, ELM_FOCUS_RIGHT})
        elm_object_focus_next_object_set(object, object, direction);
}

/// Gives @p object the size of the window that @p parent lies in, now and whenever that changes.
inline void coverWindow(Evas_Object* parent, Evas_Object* object)
{
    evas_object_size_hint_weight_set(object, EVAS_HINT_EXPAND, EVAS_HINT_EXPAND);
    elm_win_resize_object_add(elm_object_top_widget_get(parent), object);
}

} // namespace TesselUI
