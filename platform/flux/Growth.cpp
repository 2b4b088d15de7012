// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Growth.h"

#include "elm_flux.h"
#include "flux/Progressbar.h"
#include "flux/Record.h"
#include "flux/TextFit.h"
#include "flux/TextboxRecord.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <numeric>
#include <vector>

namespace orbis::flux {

namespace {

/// An item of a layout whose texts are larger than usual, pixels.
struct GrownItem {
    Evas_Object* object;
    int width, height;
    int indent; ///< from where lines begin
};

int grown(const LayoutRecord& record, double units)
{
    return static_cast<int>(std::lround(elm_flux_unit_to_pixel(units) * elm_object_scale_get(record.object)));
}

/// @return whether it is a picture, or holds nothing else
bool isPicture(const Evas_Object* item)
{
    if (!recordOf<LayoutRecord>(item))
        return !recordOf<TextboxRecord>(item) && !isProgressbar(item);
    const std::vector<Evas_Object*> inside = layoutItems(item);
    return !inside.empty() && std::all_of(inside.begin(), inside.end(), isPicture);
}

/// Texts are as high as their lines, at the size that the viewer chose; pictures do not grow.
GrownItem growItem(const LayoutRecord& record, Evas_Object* item, int room)
{
    GrownItem result {item, 0, 0, 0};
    const auto* place = recordOf<ItemRecord>(item);
    if (!place)
        return result;
    if (place->indent > 0)
        result.indent = grown(record, place->indent) + elm_flux_unit_to_pixel(place->indentGap);
    room = std::max(0, room - result.indent);
    if (isPicture(item)) {
        result.width = std::min(elm_flux_unit_to_pixel(place->width), room);
        result.height = elm_flux_unit_to_pixel(place->height);
        return result;
    }
    result.width = std::min(grown(record, place->width), room);
    result.height = isProgressbar(item) ? grown(record, place->height) : heightNeeded(item, result.width);
    return result;
}

std::vector<GrownItem> growItems(const LayoutRecord& record, int width)
{
    std::vector<GrownItem> items;
    for (Evas_Object* item : layoutItems(record.object)) {
        items.push_back(growItem(record, item, width));
        if (record.type == ELM_FLUX_LAYOUT_HORIZONTAL)
            width = std::max(0, width - items.back().width - elm_flux_unit_to_pixel(record.gap));
    }
    return items;
}

int heightOf(const LayoutRecord& record, const std::vector<GrownItem>& items)
{
    int sum = 0;
    int highest = 0;
    for (const GrownItem& item : items) {
        sum += item.height;
        highest = std::max(highest, item.height);
    }
    if (record.type == ELM_FLUX_LAYOUT_HORIZONTAL)
        return highest;
    const int gaps = std::max(0, static_cast<int>(items.size()) - 1);
    return sum + gaps * elm_flux_unit_to_pixel(record.gap);
}

/// Each gives a part of what it can give.
void shrinkTexts(std::vector<GrownItem>& items, int missing)
{
    std::vector<int> spare;
    for (const GrownItem& item : items) {
        const auto* text = recordOf<TextboxRecord>(item.object);
        spare.push_back(text ? std::max(0, item.height - leastHeight(*text, item.width)) : 0);
    }
    const int all = std::accumulate(spare.begin(), spare.end(), 0);
    if (missing <= 0 || all <= 0)
        return;
    const int given = std::min(missing, all);
    for (size_t i = 0; i < items.size(); ++i) // rounded up, so that none is missing
        items[i].height -= std::min(spare[i], static_cast<int>((int64_t {spare[i]} * given + all - 1) / all));
}

/// Where there is not room for all, pictures give way first, down to three fifths of their size; then texts
/// are made to shrink.
void fitItems(const LayoutRecord& record, std::vector<GrownItem>& items, int room)
{
    constexpr double kMostGiven = 0.4;
    room = std::max(0, room);
    for (GrownItem& item : items) {
        const int missing = heightOf(record, items) - room;
        if (missing > 0 && isPicture(item.object))
            item.height -= std::min(missing, static_cast<int>(item.height * kMostGiven));
    }
    shrinkTexts(items, heightOf(record, items) - room);
    const int needed = heightOf(record, items);
    if (needed <= room)
        return;
    for (GrownItem& item : items) {
        if (!isPicture(item.object))
            item.height = static_cast<int>(int64_t {item.height} * room / needed);
    }
}

} // namespace

int heightNeeded(Evas_Object* item, int width)
{
    if (const auto* text = recordOf<TextboxRecord>(item))
        return naturalHeight(*text, width);
    const auto* record = recordOf<LayoutRecord>(item);
    if (!record)
        return 0;
    const int sides = elm_flux_unit_to_pixel(record->left) + elm_flux_unit_to_pixel(record->right);
    const int ends = elm_flux_unit_to_pixel(record->top) + elm_flux_unit_to_pixel(record->bottom);
    return heightOf(*record, growItems(*record, std::max(0, width - sides))) + ends;
}

void arrangeGrown(const LayoutRecord& record, const ItemRoom& area)
{
    const bool horizontal = record.type == ELM_FLUX_LAYOUT_HORIZONTAL;
    const bool mirrored = elm_object_mirrored_get(record.object);
    std::vector<GrownItem> items = growItems(record, area.width);
    if (!horizontal)
        fitItems(record, items, area.height);
    int offset = horizontal ? 0 : std::max(0, area.height - heightOf(record, items)) / 2;
    for (const GrownItem& item : items) {
        const int height = horizontal ? std::min(item.height, area.height) : item.height;
        const int y = area.y + (horizontal ? (area.height - height) / 2 : offset);
        const int middle = (area.width - item.width) / 2;
        const int x = horizontal ? offset : item.indent > 0 ? item.indent : middle;
        evas_object_geometry_set(
            item.object, area.x + (mirrored ? area.width - x - item.width : x), y, item.width, height);
        offset += (horizontal ? item.width : height) + elm_flux_unit_to_pixel(record.gap);
    }
}

} // namespace orbis::flux
