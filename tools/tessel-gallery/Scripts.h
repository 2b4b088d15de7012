// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the letters of the world's scripts ask of whoever draws them.
#pragma once

#include <cstdint>
#include <string>

namespace gallery {

/// Stands for what is left out of a text.
inline constexpr const char* kEllipsis = "…";

enum class Script { None, Latin, Cyrillic, Arabic, Hebrew, Devanagari, Han, Hangul, Other };

/// @return None for what belongs to no script, such as digits and punctuation
Script scriptOf(uint32_t character);

bool isRightToLeft(Script script);

/// Blanks of any width, and what is not drawn: controls, joiners, marks of direction and variation.
bool isInvisible(uint32_t character);

/// Emoji have colours of their own, and what joins or varies them is drawn with them.
bool isEmoji(uint32_t character);

/// What is drawn above, below or in the letter before it.
bool isMark(uint32_t character);

/// Brackets, colons, full stops and the like.
bool isPunctuation(uint32_t character);

/// A line may end behind @p character although no blank follows, or begin with it.
bool allowsBreakAfter(uint32_t character);

/// @return the first character of UTF-8, 0 for none
uint32_t firstCharacter(const std::string& text);

/// @return @p text without what is not drawn, every run of blanks as one, none at its ends
std::string readable(const std::string& text);

/// @return whether @p content, which is not drawn, parts words, as a blank does and a mark of direction does
/// not
bool partsWords(const std::string& content);

/// @return @p word without brackets, full stops and the like at its ends
std::string withoutMarksAround(const std::string& word);

/// @return @p text without blanks
std::string withoutBlanks(const std::string& text);

/// @return @p text in valid UTF-8: names need not be, and the report has to
std::string validUtf8(const char* text);

} // namespace gallery
