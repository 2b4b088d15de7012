// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Layout.h"
#include "elm_flux.h"

#include "flux/Growth.h"
#include "flux/LayoutRecord.h"
#include "flux/Progressbar.h"
#include "flux/Record.h"
#include "flux/Textbox.h"
#include "flux/Theme.h"
#include "flux/Unit.h"
#include "flux/Widget.h"

#include <algorithm>
#include <utility>

namespace orbis::flux {

namespace {

constexpr const char* kBoxPart = "elm.swallow.box";

/// How far a text may reach above and below its place, layout units: the rows of secondary text are a little
/// lower than the font's own lines, and its letters must not be cut.
constexpr double kTextOverhang = 0.75;

/// What the room of empty texts gives to part two texts that stand one below the other, layout units: their
/// rows leave no more than some writing needs for its marks.
constexpr double kTextGap = 1.0;

/// How far the digits of a code stand below the middle of their place, layout units: the text above has that
/// much less room below it than they have above the buttons.
constexpr double kCodeDrop = 3.5;

/// Beside a spinner stands what goes on, and below that with whom: the row leaves the upper end of its place
/// empty, so that the two are near to each other, layout units.
constexpr double kSpinnerRowDrop = 3.0;

struct Size {
    int width, height;
};

Size sizeOf(const Evas_Object* item)
{
    const auto* record = recordOf<ItemRecord>(item);
    return record ? Size {elm_flux_unit_to_pixel(record->width), elm_flux_unit_to_pixel(record->height)}
                  : Size {};
}

ItemRoom innerArea(const LayoutRecord& record, Evas_Object* canvasBox)
{
    ItemRoom area {};
    evas_object_geometry_get(canvasBox, &area.x, &area.y, &area.width, &area.height);
    const int left = elm_flux_unit_to_pixel(record.left);
    const int top = elm_flux_unit_to_pixel(record.top);
    area.x += left;
    area.y += top;
    area.width = std::max(0, area.width - left - elm_flux_unit_to_pixel(record.right));
    area.height = std::max(0, area.height - top - elm_flux_unit_to_pixel(record.bottom));
    return area;
}

/// Places one item at @p offset along the layout's direction, centred across it, and cut to the room there
/// is, so that nothing leaves the layout. @return the length it takes along the direction
int placeItem(Evas_Object* item, const ItemRoom& area, bool horizontal, bool mirrored, int offset)
{
    auto [width, height] = sizeOf(item);
    const auto* record = recordOf<ItemRecord>(item);
    const auto* text = recordOf<TextboxRecord>(item);
    const double drop = text && text->size == ELM_FLUX_TEXTBOX_SIZE_DIGITS ? kCodeDrop : 0.0;
    const int indent =
        record ? elm_flux_unit_to_pixel(record->indent) + elm_flux_unit_to_pixel(record->indentGap) : 0;
    const int shift = record ? elm_flux_unit_to_pixel(record->shift + drop) : 0;
    width = std::min(width, horizontal ? std::max(0, area.width - offset) : area.width);
    const int left = record ? elm_flux_unit_to_pixel(record->shift) : 0;
    height = std::max(0, height - left);
    height = std::min(height, horizontal ? area.height : std::max(0, area.height - offset));
    int x = area.x + (area.width - width) / 2;
    int y = area.y + (area.height - height) / 2;
    if (horizontal)
        x = mirrored ? area.x + area.width - offset - width : area.x + offset;
    else
        y = area.y + offset + shift;
    if (indent > 0) {
        width = std::max(0, std::min(width, area.width - indent));
        x = mirrored ? area.x + area.width - indent - width : area.x + indent;
    }
    const int overhang = text ? elm_flux_unit_to_pixel(kTextOverhang) : 0;
    evas_object_geometry_set(item, x, y - overhang, width, height + 2 * overhang);
    return horizontal ? width : left + height;
}

/// A text that has a stack to itself stands in its middle, pixels from the top.
int offsetOfLoneText(const Evas_Object_Box_Data* boxData, const ItemRoom& area)
{
    const Evas_Object* lone = nullptr;
    if (eina_list_count(boxData->children) == 1)
        lone = static_cast<Evas_Object_Box_Option*>(eina_list_data_get(boxData->children))->obj;
    if (!recordOf<TextboxRecord>(lone))
        return 0;
    return std::max(0, area.height - sizeOf(lone).height) / 2;
}

bool isText(const Evas_Object* item, bool isEmpty)
{
    const auto* text = recordOf<TextboxRecord>(item);
    return text && text->text.empty() == isEmpty;
}

/// Takes from the room of empty texts what parts the others.
class TextGaps {
public:
    explicit TextGaps(const Eina_List* children)
    {
        const Eina_List* node = nullptr;
        void* entry = nullptr;
        const Evas_Object* former = nullptr;
        int spare = 0;
        EINA_LIST_FOREACH(children, node, entry)
        {
            const Evas_Object* item = static_cast<Evas_Object_Box_Option*>(entry)->obj;
            spare += isText(item, true) ? sizeOf(item).height : 0;
            m_left += isBelowText(former, item) ? elm_flux_unit_to_pixel(kTextGap) : 0;
            former = item;
        }
        m_left = std::min(m_left, spare);
        m_owed = m_left;
    }

    /// @return what is to be left empty above @p item, pixels
    int above(const Evas_Object* item)
    {
        const bool isParted = isBelowText(std::exchange(m_former, item), item);
        const int gap = isParted ? std::min(m_left, elm_flux_unit_to_pixel(kTextGap)) : 0;
        m_left -= gap;
        return gap;
    }

    /// @return what @p item is to be lower than it was appended, pixels
    int takenFrom(const Evas_Object* item)
    {
        const int taken = isText(item, true) ? std::min(m_owed, sizeOf(item).height) : 0;
        m_owed -= taken;
        return taken;
    }

private:
    static bool isBelowText(const Evas_Object* former, const Evas_Object* item)
    {
        return isText(former, false) && isText(item, false);
    }

    const Evas_Object* m_former = nullptr;
    int m_left = 0; ///< of the gaps' sum, not given yet, pixels
    int m_owed = 0; ///< not taken yet
};

/// The items have the sizes they were appended with; what the toolkit's own boxes would make of hints and
/// weights does not come into it.
void arrange(Evas_Object* canvasBox, Evas_Object_Box_Data* boxData, void* data)
{
    const auto& record = *static_cast<LayoutRecord*>(data);
    const ItemRoom area = innerArea(record, canvasBox);
    if (elm_object_scale_get(record.object) > 1.0) {
        arrangeGrown(record, area);
        return;
    }
    const bool horizontal = record.type == ELM_FLUX_LAYOUT_HORIZONTAL;
    const bool mirrored = elm_object_mirrored_get(record.object);
    const int gap = elm_flux_unit_to_pixel(record.gap);
    int offset = horizontal ? 0 : offsetOfLoneText(boxData, area);
    TextGaps textGaps {horizontal ? nullptr : boxData->children};
    const Eina_List* node = nullptr;
    void* entry = nullptr;
    EINA_LIST_FOREACH(boxData->children, node, entry)
    {
        auto* item = static_cast<Evas_Object_Box_Option*>(entry)->obj;
        offset += textGaps.above(item);
        offset += placeItem(item, area, horizontal, mirrored, offset) + gap - textGaps.takenFrom(item);
    }
}

void arrangeAgain(const LayoutRecord& record)
{
    elm_box_recalculate(record.box);
}

/// @return the spinner of a row, or null
const Evas_Object* spinnerOf(const Evas_Object* row)
{
    for (const Evas_Object* item : layoutItems(row)) {
        if (isProgressbar(item))
            return item;
    }
    return nullptr;
}

/// A spinner and the texts beside and below it have one axis: the texts begin where the first one begins.
void alignWithSpinner(const LayoutRecord& record, Evas_Object* item, ItemRecord& place)
{
    auto* text = recordOf<TextboxRecord>(item);
    if (!text)
        return;
    if (spinnerOf(record.object)) {
        alignToStart(*text);
        return;
    }
    for (Evas_Object* row : layoutItems(record.object)) {
        const Evas_Object* spinner = spinnerOf(row);
        if (!spinner)
            continue;
        alignToStart(*text);
        place.indent = recordOf<ItemRecord>(spinner)->width;
        place.indentGap = recordOf<LayoutRecord>(row)->gap;
        recordOf<ItemRecord>(row)->shift = kSpinnerRowDrop;
    }
}

/// So the toolkit also tells that its scale is another one.
void on_themeChanged(void* data, Evas_Object*, void*)
{
    arrangeAgain(*static_cast<LayoutRecord*>(data));
}

void on_textChanged(void* data, Evas_Object*, const char*, const char*)
{
    arrangeAgain(*static_cast<LayoutRecord*>(data));
}

/// A layout has no look of its own: what it is told goes to its items.
void on_signal(void*, Evas_Object* layout, const char* emission, const char* source)
{
    for (Evas_Object* item : layoutItems(layout))
        elm_object_signal_emit(item, emission, source);
}

} // namespace

Evas_Object* outermostLayout(Evas_Object* widget)
{
    Evas_Object* outermost = nullptr;
    for (; widget; widget = elm_object_parent_widget_get(widget)) {
        if (recordOf<LayoutRecord>(widget))
            outermost = widget;
    }
    return outermost;
}

} // namespace orbis::flux

using namespace orbis::flux;

Evas_Object* elm_flux_layout_add(Evas_Object* parent)
{
    Evas_Object* layout = addThemedLayout(parent, "layout", "1");
    if (!layout)
        return nullptr;
    auto* record = attachRecord<LayoutRecord>(layout);
    record->box = elm_box_add(layout);
    elm_box_layout_set(record->box, arrange, record, nullptr);
    for (const char* emission : {"HC", "flux,popup,shown", "flux,popup,hidden"})
        elm_object_signal_callback_add(layout, emission, "", on_signal, nullptr);
    elm_object_signal_callback_add(layout, "flux,text,changed", "", on_textChanged, record);
    elm_object_part_content_set(layout, kBoxPart, record->box);
    evas_object_smart_callback_add(layout, "theme,changed", on_themeChanged, record);
    return layout;
}

Eina_Bool elm_flux_layout_type_set(Evas_Object* layout, Elm_Flux_Layout_Type type)
{
    auto* record = recordOf<LayoutRecord>(layout);
    if (!record || (type != ELM_FLUX_LAYOUT_VERTICAL && type != ELM_FLUX_LAYOUT_HORIZONTAL))
        return EINA_FALSE;
    record->type = type;
    arrangeAgain(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_layout_gap_set(Evas_Object* layout, double units)
{
    auto* record = recordOf<LayoutRecord>(layout);
    if (!record || !(units >= 0.0))
        return EINA_FALSE;
    record->gap = units;
    arrangeAgain(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_layout_padding_set(
    Evas_Object* layout, double left, double right, double top, double bottom)
{
    auto* record = recordOf<LayoutRecord>(layout);
    if (!record || !(left >= 0.0 && right >= 0.0 && top >= 0.0 && bottom >= 0.0))
        return EINA_FALSE;
    record->left = left;
    record->right = right;
    record->top = top;
    record->bottom = bottom;
    arrangeAgain(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_layout_append(Evas_Object* layout, Evas_Object* item, int width_px, int height_px)
{
    auto* record = recordOf<LayoutRecord>(layout);
    if (!record || !canHold(layout, item) || width_px < 0 || height_px < 0)
        return EINA_FALSE;
    auto* size = recordOf<ItemRecord>(item);
    if (!size)
        size = attachRecord<ItemRecord>(item);
    size->width = unitsOf(width_px);
    size->height = unitsOf(height_px);
    alignWithSpinner(*record, item, *size);
    elm_box_pack_end(record->box, item);
    evas_object_show(item);
    return EINA_TRUE;
}
