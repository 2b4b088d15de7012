// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Reference.h"

#include <cmath>
#include <cstdlib>
#include <utility>

namespace gallery {

namespace {

/// Letters may reach beyond their text's box, of its letters' size.
constexpr double kReach = 1.0;

/// Longer than any card is wide, pixels.
constexpr int kLongLine = 4096;

std::string styleText(const Evas_Textblock_Style* style)
{
    const char* text = style ? evas_textblock_style_get(style) : nullptr;
    return text ? text : "";
}

/// The theme's, and what the text box adds to it, which comes last and counts.
std::string styleOf(const Evas_Object* textblock)
{
    return styleText(evas_object_textblock_style_get(textblock))
        + styleText(evas_object_textblock_style_user_peek(textblock));
}

double numberIn(const std::string& style, const std::string& name)
{
    const size_t at = style.rfind(name + '=');
    return at == std::string::npos ? 0 : strtod(style.c_str() + at + name.size() + 1, nullptr);
}

void pushStyle(Evas_Object* textblock, const Evas_Textblock_Style* style)
{
    if (!style)
        return;
    const base::TextblockStylePtr copy {evas_textblock_style_new()};
    evas_textblock_style_set(copy.get(), evas_textblock_style_get(style));
    evas_object_textblock_style_user_push(textblock, copy.get());
}

void copyFit(const Evas_Object* from, Evas_Object* to)
{
    unsigned int options = 0;
    unsigned int smallest = 0;
    unsigned int largest = 0;
    unsigned int step = 0;
    evas_textblock_fit_options_get(from, &options);
    evas_textblock_fit_size_range_get(from, &smallest, &largest);
    evas_textblock_fit_step_size_get(from, &step);
    evas_textblock_fit_size_range_set(to, smallest, largest);
    evas_textblock_fit_step_size_set(to, step);
    evas_textblock_fit_options_set(to, options);
}

Mask cutToInk(const Mask& mask)
{
    Mask ink;
    for (int y = 0; y < mask.box.height; ++y) {
        for (int x = 0; x < mask.box.width; ++x) {
            if (mask.coverage[static_cast<size_t>(y) * mask.box.width + x] > 0)
                ink.box.add({x, y, 1, 1});
        }
    }
    for (int y = ink.box.y; y < ink.box.bottom(); ++y) {
        for (int x = ink.box.x; x < ink.box.right(); ++x)
            ink.coverage.push_back(mask.coverage[static_cast<size_t>(y) * mask.box.width + x]);
    }
    ink.box.x = ink.box.y = 0;
    return ink;
}

} // namespace

double styleNumber(const Evas_Object* textblock, const std::string& name)
{
    return numberIn(styleOf(textblock), name);
}

double fullSize(const Evas_Object* textblock)
{
    return numberIn(styleText(evas_object_textblock_style_get(textblock)), "font_size");
}

bool isBold(const Evas_Object* textblock)
{
    return styleOf(textblock).find("font_weight=Bold") != std::string::npos;
}

Reference::Reference()
    : m_canvas(ecore_evas_buffer_new(1, 1))
{
    ecore_evas_alpha_set(m_canvas.get(), EINA_TRUE);
}

base::ObjectPtr Reference::copyOf(const Evas_Object* textblock)
{
    base::ObjectPtr copy {evas_object_textblock_add(ecore_evas_get(m_canvas.get()))};
    const std::string style = styleText(evas_object_textblock_style_get(textblock));
    const base::TextblockStylePtr own {evas_textblock_style_new()};
    evas_textblock_style_set(own.get(), style.c_str());
    evas_object_textblock_style_set(copy.get(), own.get());
    pushStyle(copy.get(), evas_object_textblock_style_user_peek(textblock));
    evas_object_scale_set(copy.get(), evas_object_scale_get(textblock));
    evas_object_textblock_valign_set(copy.get(), evas_object_textblock_valign_get(textblock));
    Box box;
    evas_object_geometry_get(textblock, nullptr, nullptr, &box.width, &box.height);
    evas_object_resize(copy.get(), box.width, box.height);
    const char* markup = evas_object_textblock_text_markup_get(const_cast<Evas_Object*>(textblock));
    evas_object_textblock_text_markup_set(copy.get(), markup ? markup : "");
    return copy;
}

Mask Reference::draw(Evas_Object* object, int width, int height)
{
    Mask mask {{0, 0, width, height}, {}};
    ecore_evas_resize(m_canvas.get(), width, height);
    evas_object_show(object);
    ecore_evas_manual_render(m_canvas.get());
    const auto* drawn = static_cast<const uint32_t*>(ecore_evas_buffer_pixels_get(m_canvas.get()));
    const size_t count = static_cast<size_t>(width) * height;
    mask.coverage.reserve(count);
    for (size_t i = 0; i < count; ++i)
        mask.coverage.push_back(drawn ? static_cast<uint8_t>(drawn[i] >> 24) : uint8_t {0});
    return mask;
}

Mask Reference::lettersOf(const Evas_Object* textblock)
{
    Box box;
    evas_object_geometry_get(textblock, &box.x, &box.y, &box.width, &box.height);
    const char* markup = evas_object_textblock_text_markup_get(const_cast<Evas_Object*>(textblock));
    const std::string key = styleOf(textblock) + '\n' + (markup ? markup : "") + '\n'
        + std::to_string(box.width) + 'x' + std::to_string(box.height);
    const auto [entry, isNew] = m_drawn.try_emplace(key);
    Mask& mask = entry->second;
    const double size = styleNumber(textblock, "font_size") * evas_object_scale_get(textblock);
    const int reach = static_cast<int>(std::lround(size * kReach));
    if (isNew) {
        const base::ObjectPtr copy = copyOf(textblock);
        copyFit(textblock, copy.get());
        evas_object_move(copy.get(), reach, reach);
        mask = draw(copy.get(), box.width + 2 * reach, box.height + 2 * reach);
    }
    mask.box.x = box.x - reach;
    mask.box.y = box.y - reach;
    return mask;
}

bool Reference::fitsAtFullSize(const Evas_Object* textblock)
{
    const base::ObjectPtr copy = copyOf(textblock);
    // An ellipsis makes everything fit. Only the style that is pushed last counts.
    std::string own = styleText(evas_object_textblock_style_user_peek(textblock));
    const size_t end = own.rfind('\'');
    const std::string size = std::to_string(std::lround(fullSize(textblock)));
    const std::string added = " ellipsis=-1.0 font_size=" + size;
    own = end == std::string::npos ? "DEFAULT='" + added + "'" : own.insert(end, added);
    const base::TextblockStylePtr whole {evas_textblock_style_new()};
    evas_textblock_style_set(whole.get(), own.c_str());
    evas_object_textblock_style_user_push(copy.get(), whole.get());
    Box box;
    evas_object_geometry_get(textblock, nullptr, nullptr, &box.width, &box.height);
    int width = 0;
    int height = 0;
    evas_object_textblock_size_formatted_get(copy.get(), &width, &height);
    return width <= box.width && height <= box.height;
}

const Mask& Reference::word(const std::string& text, const Font& font)
{
    const std::string key =
        text + '\n' + font.family + (font.isBold ? "*" : "") + std::to_string(font.size * font.scale);
    const auto [entry, isNew] = m_drawn.try_emplace(key);
    if (!isNew)
        return entry->second;
    std::string escaped;
    for (const char c : font.family)
        escaped.append(c == ' ' ? "\\" : "").push_back(c);
    const base::ObjectPtr object {evas_object_textblock_add(ecore_evas_get(m_canvas.get()))};
    const base::TextblockStylePtr style {evas_textblock_style_new()};
    const std::string format = "DEFAULT='font=" + escaped
        + " font_weight=" + (font.isBold ? "Bold" : "Normal")
        + " font_size=" + std::to_string(std::lround(font.size)) + " color=#ffffff wrap=none'";
    evas_textblock_style_set(style.get(), format.c_str());
    evas_object_textblock_style_set(object.get(), style.get());
    evas_object_scale_set(object.get(), font.scale);
    const base::MallocStr markup {evas_textblock_text_utf8_to_markup(object.get(), text.c_str())};
    evas_object_textblock_text_markup_set(object.get(), markup.get());
    evas_object_resize(object.get(), kLongLine, kLongLine);
    int width = 0;
    int height = 0;
    evas_object_textblock_size_formatted_get(object.get(), &width, &height);
    const int reach = static_cast<int>(std::lround(font.size * font.scale * kReach));
    evas_object_resize(object.get(), width, height);
    evas_object_move(object.get(), reach, reach);
    entry->second = cutToInk(draw(object.get(), width + 2 * reach, height + 2 * reach));
    return entry->second;
}

} // namespace gallery
