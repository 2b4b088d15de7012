/// The toolkit without a screen: its loop, its clock, its keys and what it would draw.
#ifndef TESTS_TOOLKIT_H
#define TESTS_TOOLKIT_H

#include "Picture.h"
#include "flux/PopupRecord.h"
#include "flux/Record.h"
#include "flux/Textbox.h"

#include <Elementary.h>

#include <functional>
#include <string>
#include <vector>

namespace toolkit {

/// Serves what is due, with jobs and layouts, and does not wait.
void settle();

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

/// Gives the window the keys, as a window manager would.
void focusWindow(Evas_Object* window);

void keyDown(Evas_Object* window, const char* key, unsigned int afterMs = 50);
void keyUp(Evas_Object* window, const char* key, unsigned int afterMs = 50);
/// Down and up, and what follows from it.
void press(Evas_Object* window, const char* key);

/// Emits "clicked" on a button.
void click(Evas_Object* button);

/// @return the windows of this process
std::vector<Evas_Object*> windows();

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

using Box = tv::Geometry;
Box boxOf(const Evas_Object* object);

} // namespace toolkit

#endif
