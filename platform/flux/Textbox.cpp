// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Textbox.h"

#include "base/EflHandles.h"
#include "flux/Guard.h"
#include "flux/Look.h"
#include "flux/Markup.h"
#include "flux/Record.h"
#include "flux/Theme.h"
#include "flux/Typesetting.h"

#include <string_view>
#include <utility>

namespace orbis::flux {

namespace {

constexpr const char* kTextPart = "elm.text";

/// The toolkit shrinks a text that fills its place to the last line of pixels.
constexpr int kSlack = 4;

/// Higher than any text; of a text that does not fit the toolkit tells less.
constexpr int kMeasureHeight = 20000;

const char* alignName(Elm_Flux_Textbox_Align align)
{
    switch (align) {
    case ELM_FLUX_TEXTBOX_ALIGN_CENTER:
    case ELM_FLUX_TEXTBOX_ALIGN_LINE_CENTER:
        return "center";
    case ELM_FLUX_TEXTBOX_ALIGN_LEFT:
        return "left";
    case ELM_FLUX_TEXTBOX_ALIGN_RIGHT:
        return "right";
    }
    return nullptr;
}

std::string themeData(const TextboxRecord& record, const char* name)
{
    const char* data = edje_object_data_get(elm_layout_edje_get(record.object), name);
    return data ? data : "";
}

/// Colours that texts bring along are chosen against the usual card.
/// @return the one that replaces them, or ""
std::string replacingColour(const TextboxRecord& record)
{
    return record.contrast ? themeData(record, "contrast") : "";
}

/// A text is cut with an ellipsis where shrinking did not help; several lines wrap, inside a word
/// where they must, because names and network names need not hold a blank.
std::string styleOf(const TextboxRecord& record)
{
    std::string style = "DEFAULT='align=";
    style += alignName(record.align);
    const bool wraps = record.multiline && record.rule != ELM_FLUX_RESPONSIVE_SHRINK;
    style += wraps ? " wrap=mixed ellipsis=1.0" : " wrap=none ellipsis=1.0";
    if (const std::string language = languageStyle(); !language.empty())
        style += ' ' + language;
    const std::string replacing = replacingColour(record);
    if (!record.color.empty())
        style += " color=" + (replacing.empty() ? record.color : replacing);
    return style + "'";
}

/// What holds a text that is larger than usual has its size from it.
void tellOfSize(const TextboxRecord& record)
{
    if (elm_object_scale_get(record.object) <= 1.0)
        return;
    for (Evas_Object* around = elm_object_parent_widget_get(record.object); around;
         around = elm_object_parent_widget_get(around)) {
        if (elm_object_top_widget_get(around) != around)
            elm_object_signal_emit(around, "flux,text,changed", "");
    }
}

void showText(const TextboxRecord& record)
{
    const TextColours colours {themeData(record, "ground"), replacingColour(record)};
    const std::string markup = displayMarkup(record.text, colours);
    const bool isCode = record.size == ELM_FLUX_TEXTBOX_SIZE_DIGITS;
    elm_layout_text_set(record.object, kTextPart, (isCode ? typesetCode(markup) : typeset(markup)).c_str());
    tellOfSize(record);
}

void restyle(const TextboxRecord& record)
{
    Evas_Object* edje = elm_layout_edje_get(record.object);
    edje_object_part_text_style_user_pop(edje, kTextPart);
    edje_object_part_text_style_user_push(edje, kTextPart, styleOf(record).c_str());
    elm_object_signal_emit(
        record.object, record.rule == ELM_FLUX_RESPONSIVE_KEEP ? "flux,keep" : "flux,fit", "");
    if (record.contrast) // after the rule, which has a look of its own
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
    if (record.isAlignSet || !record.multiline)
        return;
    Evas_Object* edje = elm_layout_edje_get(record.object);
    edje_object_calc_force(edje);
    constexpr int kSecond = 1;
    if (evas_object_textblock_line_number_geometry_get(
            edje_object_part_object_get(edje, kTextPart), kSecond, nullptr, nullptr, nullptr, nullptr))
        alignToStart(record);
}

/// Text sizes are theme groups, because the toolkit shrinks a text from its group's own size only.
std::string groupOf(Elm_Flux_Textbox_Size size)
{
    const bool isLarger = size == ELM_FLUX_TEXTBOX_SIZE_SECONDARY && hasSmallDots();
    return std::to_string(size) + (isLarger ? "/dots" : "");
}

bool loadGroup(const TextboxRecord& record)
{
    if (!elm_layout_theme_set(record.object, "flux", "textbox", groupOf(record.size).c_str()))
        return false;
    restyle(record);
    showText(record);
    return true;
}

} // namespace

int naturalHeight(const TextboxRecord& record, int width)
{
    if (record.text.empty())
        return 0;
    const Evas_Object* edje = elm_layout_edje_get(record.object);
    const Evas_Object* shown = edje_object_part_object_get(edje, kTextPart);
    const base::ObjectPtr measured {evas_object_textblock_add(evas_object_evas_get(edje))};
    if (!shown || !measured)
        return 0;
    const std::string own = styleOf(record);
    const char* group = evas_textblock_style_get(evas_object_textblock_style_get(shown));
    Evas_Textblock_Style* style = evas_textblock_style_new();
    Evas_Textblock_Style* added = evas_textblock_style_new();
    evas_textblock_style_set(style, group);
    evas_textblock_style_set(added, own.c_str());
    evas_object_scale_set(measured.get(), evas_object_scale_get(shown));
    evas_object_textblock_style_set(measured.get(), style);
    evas_object_textblock_style_user_push(measured.get(), added);
    evas_object_textblock_text_markup_set(
        measured.get(), evas_object_textblock_text_markup_get(const_cast<Evas_Object*>(shown)));
    evas_object_resize(measured.get(), width, kMeasureHeight);
    int height = 0;
    evas_object_textblock_size_formatted_get(measured.get(), nullptr, &height);
    evas_textblock_style_free(style);
    evas_textblock_style_free(added);
    return height + kSlack;
}

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
        return true;
    });
}

Eina_Bool elm_flux_textbox_multiline_set(Evas_Object* textbox, Eina_Bool multiline)
{
    return changed(textbox, [&](TextboxRecord& record) {
        record.multiline = multiline;
        restyle(record);
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
