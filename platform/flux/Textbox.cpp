#include "flux/Textbox.h"

#include "flux/Markup.h"
#include "flux/Record.h"
#include "flux/Theme.h"

#include <algorithm>
#include <utility>

namespace orbis::flux {

namespace {

constexpr const char* kTextPart = "elm.text";

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

/// Colours that texts bring along are chosen against the usual card.
/// @return the one that replaces them, or ""
std::string replacingColour(const TextboxRecord& record)
{
    const char* accent = edje_object_data_get(elm_layout_edje_get(record.object), "contrast");
    return record.contrast && accent ? accent : "";
}

/// A text is cut with an ellipsis where shrinking did not help; several lines wrap, inside a word
/// where they must, because names and network names need not hold a blank.
std::string styleOf(const TextboxRecord& record)
{
    std::string style = "DEFAULT='align=";
    style += alignName(record.align);
    const bool wraps = record.multiline && record.rule != ELM_FLUX_RESPONSIVE_SHRINK;
    style += wraps ? " wrap=mixed ellipsis=1.0" : " wrap=none ellipsis=1.0";
    const std::string replacing = replacingColour(record);
    if (!record.color.empty())
        style += " color=" + (replacing.empty() ? record.color : replacing);
    return style + "'";
}

void showText(const TextboxRecord& record)
{
    const std::string markup = displayMarkup(record.text, replacingColour(record));
    elm_layout_text_set(record.object, kTextPart, markup.c_str());
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

void on_contrast(void* data, Evas_Object*, const char*, const char*)
{
    auto& record = *static_cast<TextboxRecord*>(data);
    if (std::exchange(record.contrast, true))
        return;
    showText(record);
    restyle(record);
}

/// Text sizes are theme groups, because the toolkit shrinks a text from its group's own size only.
bool loadGroup(const TextboxRecord& record)
{
    if (!elm_layout_theme_set(record.object, "flux", "textbox", std::to_string(record.size).c_str()))
        return false;
    restyle(record);
    showText(record);
    return true;
}

} // namespace

} // namespace orbis::flux

using namespace orbis::flux;

Evas_Object* elm_flux_textbox_add(Evas_Object* parent)
{
    Evas_Object* textbox = addThemedLayout(parent, "textbox", "11");
    if (!textbox)
        return nullptr;
    auto* record = attachRecord<TextboxRecord>(textbox);
    record->contrast = highContrast();
    elm_object_signal_callback_add(textbox, "HC", "", on_contrast, record);
    loadGroup(*record);
    return textbox;
}

Eina_Bool elm_flux_textbox_text_set(Evas_Object* textbox, const char* text)
{
    auto* record = recordOf<TextboxRecord>(textbox);
    if (!record)
        return EINA_FALSE;
    record->text = text ? text : "";
    showText(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_textbox_multiline_set(Evas_Object* textbox, Eina_Bool multiline)
{
    auto* record = recordOf<TextboxRecord>(textbox);
    if (!record)
        return EINA_FALSE;
    record->multiline = multiline;
    restyle(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_textbox_size_set(Evas_Object* textbox, Elm_Flux_Textbox_Size size)
{
    auto* record = recordOf<TextboxRecord>(textbox);
    if (!record
        || (size != ELM_FLUX_TEXTBOX_SIZE_DIGITS && size != ELM_FLUX_TEXTBOX_SIZE_BODY
            && size != ELM_FLUX_TEXTBOX_SIZE_SECONDARY))
        return EINA_FALSE;
    record->size = size;
    return loadGroup(*record);
}

Eina_Bool elm_flux_textbox_align_set(Evas_Object* textbox, Elm_Flux_Textbox_Align align)
{
    auto* record = recordOf<TextboxRecord>(textbox);
    if (!record || !alignName(align))
        return EINA_FALSE;
    record->align = align;
    restyle(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_textbox_responsive_rule_set(Evas_Object* textbox, Elm_Flux_Responsive_Rule rule)
{
    auto* record = recordOf<TextboxRecord>(textbox);
    if (!record || rule < ELM_FLUX_RESPONSIVE_KEEP || rule > ELM_FLUX_RESPONSIVE_WRAP)
        return EINA_FALSE;
    record->rule = rule;
    restyle(*record);
    return EINA_TRUE;
}

Eina_Bool elm_flux_textbox_color_preset_set(Evas_Object* textbox, const char* preset)
{
    auto* record = recordOf<TextboxRecord>(textbox);
    if (!record || !preset)
        return EINA_FALSE;
    // Presets are data of the theme, so that the palette stays in one place.
    const char* color = edje_object_data_get(elm_layout_edje_get(textbox), preset);
    if (!color)
        return EINA_FALSE;
    record->color = color;
    restyle(*record);
    return EINA_TRUE;
}
