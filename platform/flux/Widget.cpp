// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Widget.h"

#include "flux/Record.h"

namespace orbis::flux {

bool isUsable(const Evas_Object* object)
{
    return object && elm_object_widget_check(object) && !efl_invalidated_get(object)
        && !efl_invalidating_get(object);
}

bool canHold(const Evas_Object* container, const Evas_Object* item)
{
    if (!isUsable(item) || elm_object_top_widget_get(item) == item || evas_object_data_get(item, kPopupKey))
        return false;
    for (const Evas_Object* around = container; around; around = elm_object_parent_widget_get(around)) {
        if (around == item)
            return false;
    }
    return true;
}

void keepDirection(Evas_Object* widget, const Evas_Object* model)
{
    const Eina_Bool mirrored = model ? elm_object_mirrored_get(model) : elm_config_mirrored_get();
    elm_object_mirrored_automatic_set(widget, EINA_FALSE);
    elm_object_mirrored_set(widget, mirrored);
}

void keepDirectionOf(const Evas_Object* parent, Evas_Object* widget)
{
    while (parent && elm_object_mirrored_automatic_get(parent))
        parent = elm_object_parent_widget_get(parent);
    if (parent)
        keepDirection(widget, parent);
}

} // namespace orbis::flux
