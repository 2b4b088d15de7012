// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Pieces.h"

#include "base/Markup.h"

#include <utility>

namespace orbis::flux {

namespace {

constexpr gunichar kLeftToRightMark = 0x200e;
constexpr gunichar kRightToLeftMark = 0x200f;
constexpr gunichar kLeftToRightEmbedding = 0x202a;
constexpr gunichar kRightToLeftOverride = 0x202e;
constexpr gunichar kFirstIsolate = 0x2066;
constexpr gunichar kLastIsolate = 0x2068;
constexpr gunichar kPopIsolate = 0x2069;

gunichar characterOf(const std::string& text)
{
    if (text.front() != '&') {
        const gunichar character = g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
        return character >= 0x110000 ? 0 : character;
    }
    if (text.size() < 4 || text[1] != '#')
        return '&'; // any that is drawn
    const bool isHexadecimal = text[2] == 'x' || text[2] == 'X';
    const auto value =
        g_ascii_strtoull(text.c_str() + (isHexadecimal ? 3 : 2), nullptr, isHexadecimal ? 16 : 10);
    return value >= 0x110000 ? 0 : static_cast<gunichar>(value);
}

size_t lengthOfPiece(std::string_view text)
{
    if (const size_t tag = base::tagLength(text); tag > 0)
        return tag;
    if (const size_t entity = base::entityLength(text); entity > 0)
        return entity;
    size_t length = 1;
    while (length < text.size() && (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U)
        ++length;
    return length;
}

} // namespace

bool Piece::beginsIsolate() const
{
    return character >= kFirstIsolate && character <= kLastIsolate;
}

bool Piece::endsIsolate() const
{
    return character == kPopIsolate;
}

bool Piece::isDirectionMark() const
{
    return character == kLeftToRightMark || character == kRightToLeftMark;
}

bool Piece::isForced() const
{
    return character >= kLeftToRightEmbedding && character <= kRightToLeftOverride;
}

bool Piece::isPiledMark() const
{
    const GUnicodeType type = g_unichar_type(character);
    return type == G_UNICODE_NON_SPACING_MARK || type == G_UNICODE_ENCLOSING_MARK;
}

bool Piece::endsLine() const
{
    const std::string_view start = std::string_view {text}.substr(0, 3);
    return start == "<br" || start == "<ps";
}

Pieces piecesOf(std::string_view markup)
{
    Pieces pieces;
    while (!markup.empty()) {
        const size_t length = lengthOfPiece(markup);
        Piece piece {std::string(markup.substr(0, length))};
        if (!piece.isTag())
            piece.character = characterOf(piece.text);
        pieces.push_back(std::move(piece));
        markup.remove_prefix(length);
    }
    return pieces;
}

std::string textOf(const Pieces& pieces)
{
    std::string text;
    for (const Piece& piece : pieces)
        text += piece.text;
    return text;
}

} // namespace orbis::flux
