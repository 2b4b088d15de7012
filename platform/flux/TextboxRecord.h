// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a text box is told, and what comes of it for the style of its text.
#pragma once

#include "elm_flux.h"

#include <string>

namespace orbis::flux {

/// What depends on the room of a text.
struct TextPlace {
    int size = 0; ///< of its letters; 0 for its group's own
    int margin = 0; ///< free at either side, pixels

    bool operator==(const TextPlace& other) const { return size == other.size && margin == other.margin; }
    bool operator!=(const TextPlace& other) const { return !(*this == other); }
};

struct TextboxRecord {
    static constexpr const char* kKey = "orbis.flux.textbox";
    static constexpr const char* kPart = "elm.text"; ///< of its theme group

    Evas_Object* object = nullptr;
    bool multiline = false;
    bool contrast = false; ///< told to by the signal "HC"
    Elm_Flux_Textbox_Size size = ELM_FLUX_TEXTBOX_SIZE_BODY;
    Elm_Flux_Textbox_Align align = ELM_FLUX_TEXTBOX_ALIGN_CENTER;
    bool isAlignSet = false; ///< by the application
    bool isFitted = false; ///< has been looked at since it or its room changed
    Elm_Flux_Responsive_Rule rule = ELM_FLUX_RESPONSIVE_WRAP;
    std::string color; ///< "#rrggbb", or empty for the theme's
    std::string text;
    bool wasEmpty = true; ///< when its layout was told of the text last
    TextPlace place; ///< of what is drawn
    std::string markup; ///< that says the same, all of it, as it would be drawn
};

/// @return what the theme says under @p name, or ""
std::string themeData(const TextboxRecord& record, const char* name);

/// @return whether a text may have several lines
bool wraps(const TextboxRecord& record);

/// @return what the box adds to the text style of its theme group, but for the size of its letters
std::string styleOf(const TextboxRecord& record);

/// @param style  of the box
/// @return all of it, as the toolkit takes it
std::string userStyle(const std::string& style, const TextPlace& place);

/// @return what the toolkit calls the alignment, null for none
const char* alignName(Elm_Flux_Textbox_Align align);

/// Colours that texts bring along are chosen against the usual card.
/// @return the one that replaces them, or ""
std::string replacingColour(const TextboxRecord& record);

} // namespace orbis::flux
