// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Fitting.h"

#include "flux/Record.h"

#include <cstring>

namespace orbis::flux {

namespace {

struct LookRecord {
    static constexpr const char* kKey = "orbis.flux.fitting";

    ~LookRecord();

    Evas_Object* object = nullptr;
    Evas* canvas = nullptr; ///< borrowed
    void (*look)(Evas_Object*) = nullptr;
};

void on_drawing(void* data, Evas*, void*)
{
    const auto* record = static_cast<LookRecord*>(data);
    if (evas_object_visible_get(record->object))
        record->look(record->object);
}

LookRecord::~LookRecord()
{
    evas_event_callback_del_full(canvas, EVAS_CALLBACK_RENDER_PRE, on_drawing, this);
}

} // namespace

void lookBeforePictures(Evas_Object* widget, void (*look)(Evas_Object* widget))
{
    auto* record = attachRecord<LookRecord>(widget);
    record->canvas = evas_object_evas_get(widget);
    record->look = look;
    evas_event_callback_add(record->canvas, EVAS_CALLBACK_RENDER_PRE, on_drawing, record);
}

bool fitsOnOneLine(const Evas_Object* widget, const char* part)
{
    const Evas_Object* text = edje_object_part_object_get(elm_layout_edje_get(widget), part);
    if (!text)
        return true;
    int width = 0;
    int height = 0;
    evas_object_geometry_get(text, nullptr, nullptr, &width, &height);
    int needed = 0;
    int high = 0;
    evas_object_textblock_size_native_get(text, &needed, &high);
    return needed <= width - kSlack && high <= height - kSlack;
}

std::string usualSize(const Evas_Object* group, double scale)
{
    const char* size = scale <= 1.0 ? edje_object_data_get(group, "usual_size") : nullptr;
    return size && *size ? std::string {" font_size="} + size : "";
}

void applySignals(Evas_Object* widget)
{
    Evas_Object* edje = elm_layout_edje_get(widget);
    edje_object_message_signal_process(edje);
    edje_object_calc_force(edje);
}

void fitLine(Evas_Object* widget, const char* part)
{
    const char* state = edje_object_part_state_get(elm_layout_edje_get(widget), part, nullptr);
    if (!state || strstr(state, "fit") || fitsOnOneLine(widget, part))
        return;
    elm_object_signal_emit(widget, "flux,fit", "");
    applySignals(widget);
}

} // namespace orbis::flux
