// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Inside of the styled text box, for the other parts of the widget set.
#pragma once

#include "elm_flux.h"

#include <string>

namespace orbis::flux {

struct TextboxRecord {
    static constexpr const char* kKey = "orbis.flux.textbox";

    Evas_Object* object = nullptr;
    bool multiline = false;
    bool contrast = false; ///< told to by the signal "HC"
    Elm_Flux_Textbox_Size size = ELM_FLUX_TEXTBOX_SIZE_BODY;
    Elm_Flux_Textbox_Align align = ELM_FLUX_TEXTBOX_ALIGN_CENTER;
    bool isAlignSet = false; ///< by the application
    Elm_Flux_Responsive_Rule rule = ELM_FLUX_RESPONSIVE_WRAP;
    std::string color; ///< "#rrggbb", or empty for the theme's
    std::string text;
};

/// @return how high a text is that is @p width wide and not shrunk, pixels as the width
int naturalHeight(const TextboxRecord& record, int width);

/// Has a text begin where lines begin, unless the application has chosen an alignment.
void alignToStart(TextboxRecord& record);

} // namespace orbis::flux
