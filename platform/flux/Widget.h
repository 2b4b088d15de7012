/// Checks of objects that come from the application.
#pragma once

#include <Elementary.h>

namespace orbis::flux {

/// @return whether @p object is a widget, and neither null nor deleted nor being deleted
bool isUsable(const Evas_Object* object);

/// @return whether @p item can be put into @p container: usable, no window, no popup, and not the container
///         itself or something around it
bool canHold(const Evas_Object* container, const Evas_Object* item);

} // namespace orbis::flux
