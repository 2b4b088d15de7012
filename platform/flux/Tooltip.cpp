// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Tooltip.h"
#include "flux/Guard.h"
#include "flux/Layout.h"
#include "flux/Look.h"
#include "flux/Markup.h"
#include "flux/Record.h"
#include "flux/TextboxRecord.h"
#include "flux/Theme.h"
#include "flux/Typesetting.h"
#include "flux/Unit.h"
#include "flux/Widget.h"
#include "flux/WindowHost.h"

#include <algorithm>
#include <cmath>
#include <string>

namespace orbis::flux {

namespace {

constexpr const char* kTextPart = "elm.text";

/// Space between the bubble and a text below it, layout units.
constexpr double kTextGap = 1.5;

/// Leads from a target to its bubble.
constexpr const char* kHintKey = "orbis.flux.hint";

/// No screen is larger, pixels.
constexpr int kMaxSize = 65535;

struct TooltipRecord {
    static constexpr const char* kKey = "orbis.flux.tooltip";

    ~TooltipRecord();

    Evas_Object* object = nullptr;
    Evas_Object* target = nullptr; ///< borrowed; null once it is gone
    double width = 0; ///< layout units, as the height
    double height = 0;
};

struct Box {
    int x, y, width, height;
};

Box boxOf(const Evas_Object* object)
{
    Box box {};
    evas_object_geometry_get(object, &box.x, &box.y, &box.width, &box.height);
    return box;
}

/// The top of the highest text in @p layout that a bubble at @p bubble would cover, or the bubble's bottom.
int firstTextBelow(Evas_Object* layout, const Box& bubble)
{
    int limit = bubble.y + bubble.height;
    for (Evas_Object* item : layoutItems(layout)) {
        const auto* text = recordOf<TextboxRecord>(item);
        const Box box = boxOf(item);
        const bool isBelow = box.y + box.height / 2 >= bubble.y;
        if (text && !text->text.empty() && isBelow)
            limit = std::min(limit, box.y - elm_flux_unit_to_pixel(kTextGap));
        limit = std::min(limit, firstTextBelow(item, bubble));
    }
    return limit;
}

/// A hint is one line: its bubble is wider than it was asked to be rather than cut in another language.
int widthOf(const TooltipRecord& record)
{
    constexpr double kTextShare = 0.9; // of the bubble's width, in the theme
    const Evas_Object* text = edje_object_part_object_get(elm_layout_edje_get(record.object), kTextPart);
    int width = 0;
    evas_object_textblock_size_native_get(text, &width, nullptr);
    const int least = elm_flux_unit_to_pixel(record.width * elm_object_scale_get(record.object));
    return std::clamp(static_cast<int>(std::ceil(width / kTextShare)), least, 2 * least);
}

void place(const TooltipRecord& record)
{
    if (!record.target)
        return;
    const Box target = boxOf(record.target);
    const int width = widthOf(record);
    Box bubble {target.x + (target.width - width) / 2, target.y + target.height, width,
        elm_flux_unit_to_pixel(record.height * elm_object_scale_get(record.object))};
    // Texts stand right below the picture: a hint must not hide them, so it moves up over its target.
    bubble.y = firstTextBelow(outermostLayout(record.target), bubble) - bubble.height;
    evas_object_geometry_set(record.object, bubble.x, bubble.y, bubble.width, bubble.height);
}

void on_targetMoved(void* data, Evas*, Evas_Object*, void*)
{
    place(*static_cast<TooltipRecord*>(data));
}

/// So the toolkit also tells that its scale is another one.
void on_themeChanged(void* data, Evas_Object*, void*)
{
    place(*static_cast<TooltipRecord*>(data));
}

void on_targetDeleted(void* data, Evas*, Evas_Object*, void*)
{
    auto* record = static_cast<TooltipRecord*>(data);
    record->target = nullptr;
    evas_object_hide(record->object);
}

TooltipRecord::~TooltipRecord()
{
    if (!target)
        return;
    if (evas_object_data_get(target, kHintKey) == object)
        evas_object_data_del(target, kHintKey);
    evas_object_event_callback_del_full(target, EVAS_CALLBACK_MOVE, on_targetMoved, this);
    evas_object_event_callback_del_full(target, EVAS_CALLBACK_RESIZE, on_targetMoved, this);
    evas_object_event_callback_del_full(target, EVAS_CALLBACK_DEL, on_targetDeleted, this);
}

} // namespace

std::string hintOf(const Evas_Object* target)
{
    const auto* hint = static_cast<Evas_Object*>(evas_object_data_get(target, kHintKey));
    const char* text = hint && evas_object_visible_get(hint) ? elm_layout_text_get(hint, kTextPart) : nullptr;
    return text ? text : "";
}

} // namespace orbis::flux

using namespace orbis::flux;

Evas_Object* elm_flux_object_tooltip_add(Evas_Object* target, Evas_Object* parent)
{
    Evas_Object* window = isUsable(target) && isUsable(parent) ? elm_object_top_widget_get(parent) : nullptr;
    Evas_Object* tooltip = addThemedLayout(window, "tooltip", "2");
    if (!tooltip)
        return nullptr;
    auto* record = attachRecord<TooltipRecord>(tooltip);
    record->target = target;
    applyLanguage(tooltip, kTextPart);
    evas_object_data_set(target, kHintKey, tooltip);
    evas_object_smart_callback_add(tooltip, "theme,changed", on_themeChanged, record);
    evas_object_event_callback_add(target, EVAS_CALLBACK_MOVE, on_targetMoved, record);
    evas_object_event_callback_add(target, EVAS_CALLBACK_RESIZE, on_targetMoved, record);
    evas_object_event_callback_add(target, EVAS_CALLBACK_DEL, on_targetDeleted, record);
    return tooltip;
}

Eina_Bool elm_flux_object_tooltip_size_set(Evas_Object* tooltip, int width_px, int height_px)
{
    auto* record = recordOf<TooltipRecord>(tooltip);
    if (!record || width_px < 0 || height_px < 0)
        return EINA_FALSE;
    record->width = unitsOf(std::min(width_px, kMaxSize));
    record->height = unitsOf(std::min(height_px, kMaxSize));
    place(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_object_tooltip_style_set(Evas_Object* tooltip, Elm_Flux_Tooltip_Style style)
{
    return recordOf<TooltipRecord>(tooltip) && style == ELM_FLUX_TOOLTIP_STYLE_HINT;
}

Eina_Bool elm_flux_object_tooltip_text_set(Evas_Object* tooltip, const char* text)
{
    const auto* record = recordOf<TooltipRecord>(tooltip);
    const auto setText = [&] {
        return elm_layout_text_set(tooltip, kTextPart, typeset(displayMarkup(text ? text : "")).c_str());
    };
    if (!record || !guarded(setText))
        return EINA_FALSE;
    place(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_object_tooltip_orient_set(Evas_Object* tooltip, Elm_Flux_Tooltip_Orient orient)
{
    return recordOf<TooltipRecord>(tooltip) && orient == ELM_FLUX_TOOLTIP_ORIENT_BELOW;
}

Eina_Bool elm_flux_object_tooltip_show(Evas_Object* tooltip)
{
    const auto* record = recordOf<TooltipRecord>(tooltip);
    if (!record || !record->target)
        return EINA_FALSE;
    place(*record);
    evas_object_raise(tooltip);
    evas_object_show(tooltip);
    if (WindowHost* host = WindowHost::of(elm_object_top_widget_get(tooltip)))
        host->textsChanged();
    return EINA_TRUE;
}

Eina_Bool elm_flux_object_tooltip_hide(Evas_Object* tooltip)
{
    if (!recordOf<TooltipRecord>(tooltip))
        return EINA_FALSE;
    evas_object_hide(tooltip);
    return EINA_TRUE;
}
