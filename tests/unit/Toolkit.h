// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The toolkit without a screen: its loop, its clock, its keys and what it would draw.
#ifndef TESTS_TOOLKIT_H
#define TESTS_TOOLKIT_H

#include "Canvas.h" // IWYU pragma: export
#include "flux/PopupRecord.h"
#include "flux/Record.h"
#include "flux/Textbox.h"

#include <Elementary.h>

#include <functional>
#include <string>
#include <vector>

namespace toolkit {

/// The loop's clock stands still, however slow the machine is, but for this and in runUntil(): moves it ahead
/// in steps of at most @p step seconds and serves what comes due at each.
void advance(double seconds, double step = 1.0);

/// Runs the loop in real time until the condition holds. @return false when it does not in time
bool runUntil(const std::function<bool()>& condition, double seconds = 8.0);

/// Called at each elm_exit(), which is also noted in the journal as "T exit"; empty for none. A loop that is
/// driven by hand goes on after it.
extern std::function<void()> s_onExit;

/// The moments that the platform was told of; for the cases to clear.
extern std::vector<std::string> s_markers;

/// Emits "clicked" on a button.
void click(Evas_Object* button);

/// @return everything on the window's canvas, lowest first, children behind what they belong to
std::vector<Evas_Object*> objects(const Evas_Object* window);

/// @return the visible styled widgets of one kind, lowest first
template <typename Record>
std::vector<Record*> shown(const Evas_Object* window)
{
    std::vector<Record*> result;
    for (Evas_Object* object : objects(window)) {
        if (Record* record = orbis::flux::recordOf<Record>(object); record && evas_object_visible_get(object))
            result.push_back(record);
    }
    return result;
}

using orbis::flux::PopupRecord;
using orbis::flux::TextboxRecord;

/// @return the topmost popup, or null
PopupRecord* topPopup(const Evas_Object* window);

/// @return the texts that are not empty, from top to bottom
std::vector<std::string> textsOf(const Evas_Object* window);

/// @return what draws a group of a theme on the window; null when it is not shown
Evas_Object* shownGroup(const Evas_Object* window, const std::string& group);

/// @return how opaque a part of a layout is drawn, 0 to 255
int strength(const Evas_Object* layout, const char* part);

} // namespace toolkit

#endif
