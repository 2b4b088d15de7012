// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Fitting.h"

#include "flux/Look.h"
#include "flux/Record.h"

#include <cstdlib>
#include <cstring>

namespace orbis::flux {

namespace {

struct LookRecord {
    static constexpr const char* kKey = "orbis.flux.fitting";

    ~LookRecord();

    Evas_Object* object = nullptr;
    Ecore_Idle_Enterer* beforePictures = nullptr;
    void (*look)(Evas_Object*) = nullptr;
};

Eina_Bool on_idle(void* data)
{
    const auto* record = static_cast<LookRecord*>(data);
    if (evas_object_visible_get(record->object))
        record->look(record->object);
    return ECORE_CALLBACK_RENEW;
}

LookRecord::~LookRecord()
{
    if (beforePictures)
        ecore_idle_enterer_del(beforePictures);
}

} // namespace

/// The canvas draws when the loop has nothing else to do; what happens before its drawing but in the course
/// of it leaves an object that counts as changed for ever, so that no later change of it is drawn.
void lookBeforePictures(Evas_Object* widget, void (*look)(Evas_Object* widget))
{
    auto* record = attachRecord<LookRecord>(widget);
    record->look = look;
    record->beforePictures = ecore_idle_enterer_before_add(on_idle, record);
}

bool hasRoomFor(const Evas_Object* text, int width, int height)
{
    int all = 0;
    int high = 0;
    evas_object_geometry_get(text, nullptr, nullptr, &all, &high);
    return width <= all && height <= high;
}

int usualSize(const Evas_Object* group, double scale)
{
    // The lines of another font have another height.
    const bool isUsual = scale <= 1.0 && languageStyle().empty();
    const char* size = isUsual ? edje_object_data_get(group, "usual_size") : nullptr;
    return size ? atoi(size) : 0;
}

void fitLine(Evas_Object* widget, const char* part)
{
    Evas_Object* edje = elm_layout_edje_get(widget);
    const char* state = edje_object_part_state_get(edje, part, nullptr);
    if (!state || strstr(state, "fit"))
        return;
    const Evas_Object* text = edje_object_part_object_get(edje, part);
    int width = 0;
    int height = 0;
    evas_object_textblock_size_native_get(text, &width, &height); // of all of it, without an ellipsis
    if (hasRoomFor(text, width + kSlack, height + kSlack))
        return;
    elm_object_signal_emit(widget, "flux,fit", "");
    edje_object_message_signal_process(edje);
    edje_object_calc_force(edje);
}

} // namespace orbis::flux
