/// Toolkit objects that a class deletes in an order of its own.
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

} // namespace TesselUI
