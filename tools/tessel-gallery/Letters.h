// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A text as the letters that a viewer sees.
#pragma once

#include "Pixels.h"

#include <string>
#include <vector>

namespace gallery {

/// What a viewer takes for one letter, with the marks on it; also a blank or the end of a line.
struct Letter {
    std::string content; ///< UTF-8; "\n" where the text itself ends a line
    Box place; ///< of its line that it takes
    int line = 0;
    bool isBlank = false; ///< nothing is to be drawn
    bool isEmoji = false; ///< with colours of its own

    // What measureLetters() found.
    double drawn = 1; ///< share of its ink that is in the picture
    double contrast = 0; ///< to what is behind it; 0 for a blank or an emoji
    Box ink; ///< its pixels in the picture
    Box wholeInk; ///< what they would be if nothing was missing
};

/// What a popup's text is for.
enum class Role { Unknown, Title, Text, Pin, TvName, Label, Hint };

const char* nameOf(Role role);

/// A text that the viewer is to read: not one of a popup that lies behind another.
struct Text {
    Evas_Object* object = nullptr; ///< borrowed
    std::string plain; ///< without markup, lines joined by a blank
    Box box; ///< where it may draw
    Box lines; ///< what its lines take
    double fontSize = 0; ///< of its letters, as the toolkit has it
    double scale = 1; ///< of the screen and the viewer's settings, by which that is multiplied
    double sizePx = 0; ///< the two together, pixels of this screen
    double fullSizePx = 0; ///< the one that its style names
    bool fitsAtFullSize = true; ///< there is room for all of it then
    bool isBold = false;
    bool isCut = false; ///< ends in an ellipsis
    uint32_t withoutFont = 0; ///< a character that no font has; 0 when all are drawn
    std::vector<Letter> letters; ///< without those that an ellipsis took out
    Mask mask; ///< what its letters look like when nothing cuts, covers or hides them

    Role role = Role::Unknown;
    Box ink; ///< of all letters, in the picture; measured
    std::vector<std::string> inOtherFonts; ///< words that are not in their language's; measured
};

/// Fills in what the canvas tells of the text's letters.
void readLetters(Text& text);

/// Fills in what the picture tells of them.
/// @param whole        the picture
/// @param withoutTexts the same without texts: what is really behind them
void measureLetters(Text& text, const Image& whole, const Image& withoutTexts);

} // namespace gallery
