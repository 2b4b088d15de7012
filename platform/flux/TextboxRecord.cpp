// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/TextboxRecord.h"

#include "flux/Look.h"

namespace orbis::flux {

std::string themeData(const TextboxRecord& record, const char* name)
{
    const char* data = edje_object_data_get(elm_layout_edje_get(record.object), name);
    return data ? data : "";
}

bool wraps(const TextboxRecord& record)
{
    return record.multiline && record.rule != ELM_FLUX_RESPONSIVE_SHRINK;
}

/// Several lines wrap, inside a word where they must, because names and network names need not hold a blank.
std::string styleOf(const TextboxRecord& record)
{
    std::string style = std::string("align=") + alignName(record.align);
    style += wraps(record) ? " wrap=mixed" : " wrap=none";
    if (const std::string language = languageStyle(); !language.empty())
        style += ' ' + language;
    const std::string replacing = replacingColour(record);
    if (!record.color.empty())
        style += " color=" + (replacing.empty() ? record.color : replacing);
    return style;
}

std::string userStyle(const std::string& style, const TextPlace& place)
{
    std::string all = "DEFAULT='" + style;
    if (place.size > 0)
        all += " font_size=" + std::to_string(place.size);
    if (const std::string margin = std::to_string(place.margin); place.margin > 0)
        all.append(" left_margin=").append(margin).append(" right_margin=").append(margin);
    return all + "'";
}

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

std::string replacingColour(const TextboxRecord& record)
{
    return record.contrast ? themeData(record, "contrast") : "";
}

} // namespace orbis::flux
