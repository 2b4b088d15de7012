// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/TextMeasure.h"

#include "flux/TextboxRecord.h"

namespace orbis::flux {

namespace {

/// Higher than any text; of a text that does not fit the toolkit tells less.
constexpr int kMeasureHeight = 20000;

/// @return the scale that a part of @p edje has once that is laid out again
double scaleOf(const Evas_Object* edje)
{
    const double own = edje_object_scale_get(edje);
    return own > 0 ? own : edje_scale_get();
}

} // namespace

TextMeasure::TextMeasure(const TextboxRecord& record, Breaks breaks)
    : m_style(styleOf(record))
{
    if (breaks == Breaks::BetweenWords)
        m_style += " wrap=word"; // the last one counts
    const Evas_Object* edje = elm_layout_edje_get(record.object);
    const Evas_Object* shown = edje_object_part_object_get(edje, TextboxRecord::kPart);
    const Evas_Textblock_Style* group = shown ? evas_object_textblock_style_get(shown) : nullptr;
    if (!group)
        return;
    m_text.reset(evas_object_textblock_add(evas_object_evas_get(edje)));
    const base::TextblockStylePtr usual {evas_textblock_style_new()};
    evas_textblock_style_set(usual.get(), evas_textblock_style_get(group));
    evas_object_scale_set(m_text.get(), scaleOf(edje));
    evas_object_textblock_style_set(m_text.get(), usual.get());
    setSize(0);
}

void TextMeasure::setSize(int size)
{
    if (!m_text)
        return;
    const base::TextblockStylePtr own {evas_textblock_style_new()};
    evas_textblock_style_set(own.get(), userStyle(m_style, {size, 0}).c_str());
    evas_object_textblock_style_user_pop(m_text.get());
    evas_object_textblock_style_user_push(m_text.get(), own.get());
}

Extent TextMeasure::of(const std::string& markup, int width) const
{
    Extent extent;
    if (!m_text)
        return extent;
    evas_object_textblock_text_markup_set(m_text.get(), markup.c_str());
    evas_object_resize(m_text.get(), width, kMeasureHeight);
    evas_object_textblock_size_formatted_get(m_text.get(), &extent.width, &extent.height);
    return extent;
}

std::vector<int> lineWidths(const Evas_Object* textblock)
{
    std::vector<int> widths;
    int width = 0;
    while (textblock
        && evas_object_textblock_line_number_geometry_get(
            textblock, static_cast<int>(widths.size()), nullptr, nullptr, &width, nullptr))
        widths.push_back(width);
    return widths;
}

} // namespace orbis::flux
