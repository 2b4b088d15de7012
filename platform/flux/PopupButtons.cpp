// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/PopupButtons.h"

#include "flux/Button.h"
#include "flux/FocusStack.h"
#include "flux/Growth.h"
#include "flux/Look.h"
#include "flux/Record.h"
#include "flux/Unit.h"
#include "flux/WindowHost.h"

#include <algorithm>
#include <cmath>

namespace orbis::flux {

namespace {

constexpr const char* kContentPart = "elm.swallow.content";
constexpr const char* kButtonsPart = "elm.swallow.buttons";

// Layout units.
constexpr double kButtonHeight = 10.0;
constexpr double kButtonGap = 3.0;
constexpr double kSingleButtonWidth = 44.0;

int grown(const PopupRecord& record, double units)
{
    return elm_flux_unit_to_pixel(units * record.textScale);
}

int buttonCount(const PopupRecord& record)
{
    return static_cast<int>(
        std::count_if(record.buttons.begin(), record.buttons.end(), [](auto* button) { return button; }));
}

struct Room {
    int width, height;
};

/// @return what the widest and highest card has for its content, pixels as all that follows
Room roomOf(const PopupRecord& record)
{
    Evas_Object* edje = elm_layout_edje_get(record.object);
    edje_object_calc_force(edje);
    Room room {};
    int left = 0;
    int right = 0;
    edje_object_part_geometry_get(edje, "room", nullptr, nullptr, &room.width, &room.height);
    edje_object_part_geometry_get(edje, "left", nullptr, nullptr, &left, nullptr);
    edje_object_part_geometry_get(edje, "right", nullptr, nullptr, &right, nullptr);
    return {std::max(0, room.width - left - right), room.height};
}

/// A card grows with the size of its texts as far as the screen allows.
int contentWidth(const PopupRecord& record)
{
    const int usual = elm_flux_unit_to_pixel(std::max(record.contentWidth, record.leastWidth));
    const double scale = record.textScale;
    if (scale <= 1.0)
        return usual;
    const int wanted = static_cast<int>(std::lround(usual * scale));
    return std::max(usual, std::min(wanted, roomOf(record).width));
}

int contentHeight(const PopupRecord& record)
{
    const int usual = elm_flux_unit_to_pixel(std::max(record.contentHeight, record.leastHeight));
    if (record.textScale <= 1.0)
        return usual;
    Evas_Object* content = elm_layout_content_get(record.object, kContentPart);
    const int room = roomOf(record).height;
    return room > 0 ? std::clamp(heightNeeded(content, contentWidth(record)), std::min(usual, room), room)
                    : usual;
}

/// One button has a width of its own; two share the content's width.
int buttonWidth(const PopupRecord& record)
{
    const int single = grown(record, kSingleButtonWidth);
    const int shared = contentWidth(record) - elm_flux_unit_to_pixel(kButtonGap);
    return buttonCount(record) > 1 ? std::max(shared / 2, single / 2) : single;
}

int rowWidth(const PopupRecord& record)
{
    const int count = buttonCount(record);
    return count * buttonWidth(record) + std::max(0, count - 1) * elm_flux_unit_to_pixel(kButtonGap);
}

int cardWidth(const PopupRecord& record)
{
    return std::max(contentWidth(record), rowWidth(record));
}

/// The buttons have their sizes from here: the toolkit's own boxes would go by hints, which it overwrites
/// when the theme, the direction or the scale changes.
void arrangeRow(Evas_Object* canvasBox, Evas_Object_Box_Data* boxData, void* data)
{
    const auto& record = *static_cast<PopupRecord*>(data);
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    evas_object_geometry_get(canvasBox, &x, &y, &width, &height);
    const int each = buttonWidth(record);
    const int high = elm_flux_unit_to_pixel(kButtonHeight * cardScale());
    const int step = each + elm_flux_unit_to_pixel(kButtonGap);
    const bool mirrored = elm_object_mirrored_get(record.object);
    const int left = x + (width - rowWidth(record)) / 2;
    int place = mirrored ? left + (buttonCount(record) - 1) * step : left;
    const Eina_List* node = nullptr;
    void* entry = nullptr;
    EINA_LIST_FOREACH(boxData->children, node, entry)
    {
        evas_object_geometry_set(
            static_cast<Evas_Object_Box_Option*>(entry)->obj, place, y + (height - high) / 2, each, high);
        place += mirrored ? -step : step;
    }
}

/// While a popup loses the focus, the toolkit passes it through the other button: that does not count.
void on_buttonFocused(void* data, Evas_Object* button, void*)
{
    auto& record = *static_cast<PopupRecord*>(data);
    Evas_Object* top = FocusStack::instance().top();
    if (!top || top == record.object)
        record.lastFocus = button;
}

void on_focusJob(void* data)
{
    auto& record = *static_cast<PopupRecord*>(data);
    record.focusJob = nullptr;
    if (FocusStack::instance().top() == record.object)
        focusPopup(record.object);
}

void on_buttonDeleted(void* data, Evas*, Evas_Object* button, void*)
{
    auto& record = *static_cast<PopupRecord*>(data);
    const int slot = slotOf(record, button);
    if (slot < 0)
        return;
    forgetButton(record, slot);
    arrangePopup(record);
    // The toolkit leaves the keys with nobody; they go to the other button once this one is gone.
    if (!hasNoButton(record) && !record.focusJob)
        record.focusJob = ecore_job_add(on_focusJob, &record);
}

/// What was pressed up to now was not meant for the buttons as they are from here on.
void tellOfChange(const PopupRecord& record)
{
    if (WindowHost* host = WindowHost::of(record.window))
        host->pictureChanges();
}

void sizeCard(const PopupRecord& record)
{
    const int width = contentWidth(record);
    const int card = cardWidth(record);
    evas_object_size_hint_min_set(record.size, card, contentHeight(record));
    // The largest size is the hint that the toolkit leaves alone: the content stands in the middle of a card
    // that is wider for its buttons' sake.
    constexpr int kNone = -1;
    evas_object_size_hint_max_set(
        elm_layout_content_get(record.object, kContentPart), card > width ? width : kNone, kNone);
}

} // namespace

void addButtonRow(PopupRecord& record)
{
    record.row = elm_box_add(record.object);
    elm_box_layout_set(record.row, arrangeRow, &record, nullptr);
    elm_object_part_content_set(record.object, kButtonsPart, record.row);
}

void growPopup(PopupRecord& record)
{
    if (record.textScale <= 1.0)
        return;
    sizeCard(record);
    elm_box_recalculate(record.row);
}

void arrangePopup(PopupRecord& record)
{
    sizeCard(record);
    elm_box_unpack_all(record.row);
    for (Evas_Object* button : record.buttons) {
        if (button)
            elm_box_pack_end(record.row, button);
    }
}

void coverBelow(PopupRecord& record)
{
    const auto* below = recordOf<PopupRecord>(FocusStack::instance().top());
    if (!below || below == &record || below->window != record.window)
        return;
    const double scale = record.textScale;
    record.leastWidth = unitsOf(cardWidth(*below)) / scale;
    record.leastHeight = unitsOf(contentHeight(*below));
    arrangePopup(record);
}

void takeButton(PopupRecord& record, Evas_Object* button, int slot)
{
    auto* taken = recordOf<ButtonRecord>(button);
    forgetButton(record, slotOf(record, button));
    record.buttons[slot] = button;
    taken->popup = record.object;
    evas_object_event_callback_add(button, EVAS_CALLBACK_DEL, on_buttonDeleted, &record);
    evas_object_smart_callback_add(button, "focused", on_buttonFocused, &record);
    tellOfChange(record);
}

void forgetButton(PopupRecord& record, int slot)
{
    Evas_Object* button = slot >= 0 ? record.buttons[slot] : nullptr;
    if (!button)
        return;
    evas_object_event_callback_del_full(button, EVAS_CALLBACK_DEL, on_buttonDeleted, &record);
    evas_object_smart_callback_del_full(button, "focused", on_buttonFocused, &record);
    if (auto* left = recordOf<ButtonRecord>(button))
        left->popup = nullptr;
    record.buttons[slot] = nullptr;
    if (record.lastFocus == button)
        record.lastFocus = nullptr;
    tellOfChange(record);
}

int slotOf(const PopupRecord& record, const Evas_Object* button)
{
    const auto found = std::find(record.buttons.begin(), record.buttons.end(), button);
    return button && found != record.buttons.end() ? static_cast<int>(found - record.buttons.begin()) : -1;
}

bool hasNoButton(const PopupRecord& record)
{
    return buttonCount(record) == 0;
}

Evas_Object* buttonToFocus(const PopupRecord& record)
{
    Evas_Object* target = record.lastFocus ? record.lastFocus : record.buttons[record.focusedSlot];
    for (Evas_Object* button : record.buttons) {
        if (!target)
            target = button;
    }
    return target;
}

void focusPopup(Evas_Object* popup)
{
    const auto* record = recordOf<PopupRecord>(popup);
    Evas_Object* target = record ? buttonToFocus(*record) : nullptr;
    if (!target)
        return;
    elm_object_signal_emit(target, "flux,focus,still", "");
    elm_object_focus_set(target, EINA_TRUE);
}

} // namespace orbis::flux
