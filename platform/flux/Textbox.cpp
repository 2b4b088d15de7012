// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Textbox.h"

#include "flux/Balance.h"
#include "flux/Fitting.h"
#include "flux/Guard.h"
#include "flux/Look.h"
#include "flux/Markup.h"
#include "flux/PopupRecord.h"
#include "flux/Record.h"
#include "flux/TextFit.h"
#include "flux/Theme.h"
#include "flux/Typesetting.h"
#include "flux/WindowHost.h"

#include <string_view>
#include <utility>

namespace orbis::flux {

namespace {

constexpr const char* kTextPart = TextboxRecord::kPart;

/// What holds a text that is larger than usual has its size from it, and gives the room of an empty one to
/// others.
void tellOfSize(TextboxRecord& record)
{
    const bool wasEmpty = std::exchange(record.wasEmpty, record.text.empty());
    if (elm_object_scale_get(record.object) <= 1.0 && wasEmpty == record.text.empty())
        return;
    for (Evas_Object* around = elm_object_parent_widget_get(record.object); around;
         around = elm_object_parent_widget_get(around)) {
        if (elm_object_top_widget_get(around) != around)
            elm_object_signal_emit(around, "flux,text,changed", "");
    }
}

void pushStyle(const TextboxRecord& record)
{
    Evas_Object* edje = elm_layout_edje_get(record.object);
    edje_object_part_text_style_user_pop(edje, kTextPart);
    edje_object_part_text_style_user_push(edje, kTextPart, userStyle(styleOf(record), record.place).c_str());
}

/// Until the next picture is prepared a text is whole, and as large as its kind usually is.
void showWhole(TextboxRecord& record)
{
    record.isFitted = false;
    const char* former = elm_layout_text_get(record.object, kTextPart);
    if (!former || former != record.markup)
        elm_layout_text_set(record.object, kTextPart, record.markup.c_str());
    const TextPlace usual {
        usualSize(elm_layout_edje_get(record.object), elm_object_scale_get(record.object)), 0};
    if (std::exchange(record.place, usual) != usual)
        pushStyle(record);
}

void showText(TextboxRecord& record)
{
    const TextColours colours {themeData(record, "ground"), replacingColour(record)};
    const std::string markup = displayMarkup(record.text, colours);
    const bool isCode = record.size == ELM_FLUX_TEXTBOX_SIZE_DIGITS;
    record.markup = isCode ? typesetCode(markup) : typeset(markup, wraps(record) ? Lines::Many : Lines::One);
    showWhole(record);
    tellOfSize(record);
}

bool fitsAsItIs(const Evas_Object* text)
{
    int width = 0;
    int height = 0;
    evas_object_textblock_size_formatted_get(text, &width, &height);
    return hasRoomFor(text, width, height);
}

/// @return what is drawn of a text, and where
std::pair<std::string, TextPlace> placed(const TextboxRecord& record, const Evas_Object* text)
{
    FittedText fitted {record.markup, record.place.size};
    if (!fitsAsItIs(text))
        fitted = textThatFits(record);
    else if (!hasStump(text))
        return {fitted.markup, record.place};
    return {fitted.markup, {fitted.size, balancingMargin(record, fitted.markup, fitted.size)}};
}

/// Before a picture is drawn: measuring takes long, and most texts fit.
void look(Evas_Object* textbox)
{
    auto& record = *recordOf<TextboxRecord>(textbox);
    Evas_Object* edje = elm_layout_edje_get(textbox);
    if (std::exchange(record.isFitted, true))
        return;
    guarded([&] {
        const auto [markup, place] = placed(record, edje_object_part_object_get(edje, kTextPart));
        if (markup == record.markup && place == record.place)
            return EINA_TRUE;
        elm_layout_text_set(textbox, kTextPart, markup.c_str());
        record.place = place;
        pushStyle(record);
        edje_object_calc_force(edje);
        return EINA_TRUE;
    });
}

/// A text of a popup that has been read out is news; that of another one is said with it.
void tellReader(const TextboxRecord& record)
{
    WindowHost* host = WindowHost::of(elm_object_top_widget_get(record.object));
    for (Evas_Object* around = record.object; host && around; around = elm_object_parent_widget_get(around)) {
        const auto* popup = recordOf<PopupRecord>(around);
        if (popup && popup->told.isAnnounced) {
            host->textsChanged();
            return;
        }
    }
}

void restyle(TextboxRecord& record)
{
    if (record.place.margin > 0)
        showWhole(record); // it was balanced for its former style
    pushStyle(record);
    if (record.contrast)
        elm_object_signal_emit(record.object, "HC", "");
}

void on_contrast(void* data, Evas_Object*, const char* emission, const char*)
{
    auto& record = *static_cast<TextboxRecord*>(data);
    const bool isOn = std::string_view {emission} == "HC";
    if (std::exchange(record.contrast, isOn) == isOn)
        return;
    guarded([&] {
        showText(record);
        restyle(record);
        return EINA_TRUE;
    });
}

/// A text of several lines is read from where they begin; one line stands in the middle.
void on_resized(void* data, Evas*, Evas_Object*, void*)
{
    auto& record = *static_cast<TextboxRecord*>(data);
    if (record.isFitted) {
        guarded([&] {
            showWhole(record);
            return EINA_TRUE;
        });
    }
    if (record.isAlignSet || !record.multiline || record.align != ELM_FLUX_TEXTBOX_ALIGN_CENTER)
        return;
    Evas_Object* edje = elm_layout_edje_get(record.object);
    edje_object_calc_force(edje);
    constexpr int kSecond = 1;
    if (evas_object_textblock_line_number_geometry_get(
            edje_object_part_object_get(edje, kTextPart), kSecond, nullptr, nullptr, nullptr, nullptr))
        alignToStart(record);
}

/// Text sizes are theme groups: each has its style, and the sizes that a text may shrink to.
std::string groupOf(Elm_Flux_Textbox_Size size)
{
    const bool isLarger = size == ELM_FLUX_TEXTBOX_SIZE_SECONDARY && hasSmallDots();
    return std::to_string(size) + (isLarger ? "/dots" : "");
}

bool loadGroup(TextboxRecord& record)
{
    if (!elm_layout_theme_set(record.object, "flux", "textbox", groupOf(record.size).c_str()))
        return false;
    restyle(record);
    showText(record);
    return true;
}

} // namespace

void alignToStart(TextboxRecord& record)
{
    const auto start =
        elm_object_mirrored_get(record.object) ? ELM_FLUX_TEXTBOX_ALIGN_RIGHT : ELM_FLUX_TEXTBOX_ALIGN_LEFT;
    if (record.isAlignSet || std::exchange(record.align, start) == start)
        return;
    guarded([&] {
        restyle(record);
        return EINA_TRUE;
    });
}

} // namespace orbis::flux

using namespace orbis::flux;

namespace {

/// @return what a setter says: whether the object is a text box and the change was made
template <typename Change>
Eina_Bool changed(const Evas_Object* textbox, const Change& change)
{
    auto* record = recordOf<TextboxRecord>(textbox);
    return record && guarded([&] { return static_cast<Eina_Bool>(change(*record)); });
}

} // namespace

Evas_Object* elm_flux_textbox_add(Evas_Object* parent)
{
    Evas_Object* textbox = nullptr;
    const bool isMade = guarded([&]() -> Eina_Bool {
        textbox = addThemedLayout(parent, "textbox", "11");
        if (!textbox)
            return EINA_FALSE;
        auto* record = attachRecord<TextboxRecord>(textbox);
        record->contrast = highContrast();
        for (const char* emission : {"HC", "flux,contrast,off"})
            elm_object_signal_callback_add(textbox, emission, "", on_contrast, record);
        evas_object_event_callback_add(textbox, EVAS_CALLBACK_RESIZE, on_resized, record);
        lookBeforePictures(textbox, look);
        restyle(*record);
        return EINA_TRUE;
    });
    if (!isMade)
        evas_object_del(std::exchange(textbox, nullptr));
    return textbox;
}

Eina_Bool elm_flux_textbox_text_set(Evas_Object* textbox, const char* text)
{
    return changed(textbox, [&](TextboxRecord& record) {
        std::string former = text ? text : "";
        std::swap(record.text, former);
        try {
            showText(record);
        } catch (const std::exception&) {
            std::swap(record.text, former); // it is still what is shown
            throw;
        }
        tellReader(record);
        return true;
    });
}

Eina_Bool elm_flux_textbox_multiline_set(Evas_Object* textbox, Eina_Bool multiline)
{
    return changed(textbox, [&](TextboxRecord& record) {
        record.multiline = multiline;
        restyle(record);
        showText(record);
        return true;
    });
}

Eina_Bool elm_flux_textbox_size_set(Evas_Object* textbox, Elm_Flux_Textbox_Size size)
{
    return changed(textbox, [&](TextboxRecord& record) {
        if (size != ELM_FLUX_TEXTBOX_SIZE_DIGITS && size != ELM_FLUX_TEXTBOX_SIZE_BODY
            && size != ELM_FLUX_TEXTBOX_SIZE_SECONDARY)
            return false;
        if (!hasThemeGroup("textbox", groupOf(size).c_str()))
            return false;
        if (std::exchange(record.size, size) == size) // to load a group takes as long as to make a widget
            return true;
        return loadGroup(record);
    });
}

Eina_Bool elm_flux_textbox_align_set(Evas_Object* textbox, Elm_Flux_Textbox_Align align)
{
    return changed(textbox, [&](TextboxRecord& record) {
        if (!alignName(align))
            return false;
        record.align = align;
        record.isAlignSet = true;
        restyle(record);
        return true;
    });
}

Eina_Bool elm_flux_textbox_responsive_rule_set(Evas_Object* textbox, Elm_Flux_Responsive_Rule rule)
{
    return changed(textbox, [&](TextboxRecord& record) {
        if (rule < ELM_FLUX_RESPONSIVE_KEEP || rule > ELM_FLUX_RESPONSIVE_WRAP)
            return false;
        record.rule = rule;
        restyle(record);
        showText(record);
        return true;
    });
}

Eina_Bool elm_flux_textbox_color_preset_set(Evas_Object* textbox, const char* preset)
{
    return changed(textbox, [&](TextboxRecord& record) {
        // Presets are data of the theme, so that the palette stays in one place.
        std::string color = preset ? themeData(record, preset) : "";
        if (color.empty())
            return false;
        record.color = std::move(color);
        restyle(record);
        return true;
    });
}
