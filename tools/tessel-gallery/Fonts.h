// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The fonts that texts are drawn with.
#pragma once

#include "Letters.h"

#include <cstdint>
#include <string>

namespace gallery {

class Reference;

/// @return the first character of @p text that none of the machine's fonts for the program's family has, 0
/// for
///         none; marks that are not drawn need no font
uint32_t firstWithoutFont(const std::string& text);

/// Fills in which words of @p text, whose letters are measured, are not drawn with the font that is meant for
/// their script in @p language, judged by what is in the picture.
void findOtherFonts(Text& text, const std::string& language, const Image& whole, const Image& withoutTexts,
    Reference& reference);

} // namespace gallery
