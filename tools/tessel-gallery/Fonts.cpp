// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Fonts.h"

#include "Scripts.h"
#include "base/FontHandles.h"

#include <Eina.h>
#include <fontconfig/fontconfig.h>

namespace gallery {

namespace {

constexpr const char* kFamily = "NorvaleSans-500";

/// @return what the family and the fonts that stand in for it can draw, which is what the toolkit asks for,
/// too
base::CharSetPtr drawable()
{
    const base::FontPatternPtr pattern {FcPatternCreate()};
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(kFamily));
    FcConfigSubstitute(nullptr, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    FcCharSet* characters = nullptr;
    FcResult result = FcResultNoMatch;
    const base::FontSetPtr fonts {FcFontSort(nullptr, pattern.get(), FcTrue, &characters, &result)};
    return base::CharSetPtr {characters};
}

} // namespace

uint32_t firstWithoutFont(const std::string& text)
{
    static const base::CharSetPtr characters = drawable();
    for (int at = 0;;) {
        const Eina_Unicode next = eina_unicode_utf8_next_get(text.c_str(), &at);
        if (next == 0)
            return 0;
        const auto character = static_cast<char32_t>(next);
        if (!isInvisible(character) && !(characters && FcCharSetHasChar(characters.get(), character)))
            return character;
    }
}

} // namespace gallery
