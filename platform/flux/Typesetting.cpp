// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Typesetting.h"

#include "base/Markup.h"

#include <glib.h>

#include <algorithm>
#include <iterator>
#include <string_view>
#include <vector>

namespace orbis::flux {

namespace {

constexpr const char* kWordJoiner = "\u2060";
constexpr const char* kThinSpace = "\u2009";
constexpr const char* kGroupSpace = "\u2002";

/// The last characters of a text without blanks that stay together.
constexpr size_t kLastCharacters = 3;

constexpr gunichar kLeftToRightMark = 0x200e;
constexpr gunichar kRightToLeftMark = 0x200f;
constexpr gunichar kLeftToRightEmbedding = 0x202a;
constexpr gunichar kRightToLeftOverride = 0x202e;
constexpr gunichar kFirstIsolate = 0x2066;
constexpr gunichar kLastIsolate = 0x2068;
constexpr gunichar kPopIsolate = 0x2069;

/// A tag, or a character, which may be written as an entity.
struct Piece {
    std::string text;
    gunichar character = 0; ///< 0 for a tag and for what is no character

    bool isTag() const { return text.size() > 1 && text.front() == '<'; }
    bool beginsIsolate() const { return character >= kFirstIsolate && character <= kLastIsolate; }
    bool endsIsolate() const { return character == kPopIsolate; }
    bool isMark() const { return character == kLeftToRightMark || character == kRightToLeftMark; }
    bool isForced() const { return character >= kLeftToRightEmbedding && character <= kRightToLeftOverride; }
    bool isBlank() const { return character == ' '; }
    bool isInvisible() const { return beginsIsolate() || endsIsolate() || isMark(); }
};

using Pieces = std::vector<Piece>;

gunichar characterOf(const std::string& text)
{
    if (text.front() != '&') {
        const gunichar character = g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
        return character >= 0x110000 ? 0 : character;
    }
    if (text.size() < 4 || text[1] != '#')
        return '&'; // any that is drawn
    const bool isHexadecimal = text[2] == 'x' || text[2] == 'X';
    return static_cast<gunichar>(
        g_ascii_strtoull(text.c_str() + (isHexadecimal ? 3 : 2), nullptr, isHexadecimal ? 16 : 10));
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

Pieces piecesOf(std::string_view text)
{
    Pieces pieces;
    while (!text.empty()) {
        const size_t length = lengthOfPiece(text);
        Piece piece {std::string(text.substr(0, length))};
        if (!piece.isTag())
            piece.character = characterOf(piece.text);
        pieces.push_back(std::move(piece));
        text.remove_prefix(length);
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

/// @return whether a line ends with it for certain
bool endsLine(const Piece& piece)
{
    const std::string_view text = piece.text;
    return text.substr(0, 3) == "<br" || text.substr(0, 3) == "<ps" || piece.character == '\n';
}

bool isWrittenFromRight(const Piece& piece)
{
    constexpr GUnicodeScript kScripts[] = {G_UNICODE_SCRIPT_ARABIC, G_UNICODE_SCRIPT_HEBREW,
        G_UNICODE_SCRIPT_SYRIAC, G_UNICODE_SCRIPT_THAANA, G_UNICODE_SCRIPT_NKO};
    return std::find(std::begin(kScripts), std::end(kScripts), g_unichar_get_script(piece.character))
        != std::end(kScripts);
}

/// A name that is written from right to left is what its letters say, whatever marks were put around it.
/// @param name  what stands in an isolate
void dropForcedDirection(Pieces::const_iterator begin, Pieces::const_iterator end, Pieces& name)
{
    const bool isFromRight = std::any_of(begin, end, isWrittenFromRight);
    for (auto piece = begin; piece != end; ++piece) {
        const bool isMarkAround = piece->isMark() && (piece == begin || std::next(piece) == end);
        if (!isFromRight || !(piece->isForced() || isMarkAround))
            name.push_back(*piece);
    }
}

void dropForcedDirection(Pieces& line)
{
    Pieces kept;
    for (auto piece = line.cbegin(); piece != line.cend();) {
        kept.push_back(*piece);
        if (!piece++->beginsIsolate())
            continue;
        const auto end = std::find_if(piece, line.cend(), [](const Piece& one) { return one.endsIsolate(); });
        dropForcedDirection(piece, end, kept);
        piece = end;
    }
    line = std::move(kept);
}

bool isolatesAreEven(const Pieces& line)
{
    int depth = 0;
    for (const Piece& piece : line) {
        depth += piece.beginsIsolate() ? 1 : piece.endsIsolate() ? -1 : 0;
        if (depth < 0 || depth > 1)
            return false;
    }
    return depth == 0;
}

/// A name stands in an isolate. One that it opens itself and does not end would take that one's end, and one
/// that it ends and did not open would end that one too early: only the outermost is kept.
void evenIsolates(Pieces& line)
{
    if (isolatesAreEven(line))
        return;
    const auto isEnd = [](const Piece& piece) { return piece.endsIsolate(); };
    const auto first =
        std::find_if(line.begin(), line.end(), [](const Piece& piece) { return piece.beginsIsolate(); });
    const auto last = std::find_if(line.rbegin(), std::make_reverse_iterator(first), isEnd);
    const bool isEnded = last != std::make_reverse_iterator(first);
    Pieces kept;
    for (auto piece = line.begin(); piece != line.end(); ++piece) {
        const bool isOwn = piece == first || (isEnded && piece == std::prev(last.base()));
        if (isOwn || !(piece->beginsIsolate() || piece->endsIsolate()))
            kept.push_back(*piece);
    }
    if (first != line.end() && !isEnded)
        kept.push_back({"\u2069", kPopIsolate});
    line = std::move(kept);
}

bool isHangul(gunichar character)
{
    return g_unichar_get_script(character) == G_UNICODE_SCRIPT_HANGUL;
}

bool isIdeographic(gunichar character)
{
    const GUnicodeScript script = g_unichar_get_script(character);
    return script == G_UNICODE_SCRIPT_HAN || script == G_UNICODE_SCRIPT_HIRAGANA
        || script == G_UNICODE_SCRIPT_KATAKANA;
}

/// The toolkit breaks a line between any two of Korean's syllables, and Korean only between words.
void joinKorean(Pieces& line)
{
    for (size_t i = 1; i < line.size(); ++i) {
        const Piece& former = line[i - 1];
        const Piece& piece = line[i];
        const bool isInWord = former.character != 0 && piece.character != 0 && !former.isBlank()
            && !piece.isBlank() && (isHangul(former.character) || isHangul(piece.character));
        if (isInWord)
            line[i].text.insert(0, kWordJoiner);
    }
}

/// Keeps the last characters of a text without blanks together.
void joinLastIdeographs(Pieces& line)
{
    size_t joined = 0;
    for (size_t i = line.size(); i > 1 && joined < kLastCharacters; --i) {
        Piece& piece = line[i - 1];
        if (piece.isTag() || piece.isInvisible())
            continue;
        if (piece.isBlank() || !isIdeographic(line[i - 2].character))
            return;
        piece.text.insert(0, kWordJoiner);
        ++joined;
    }
}

void setLine(Pieces& line)
{
    evenIsolates(line);
    dropForcedDirection(line);
    joinLastIdeographs(line);
    joinKorean(line);
}

/// Three characters stand together, or four where that comes out even.
size_t groupOf(size_t length)
{
    constexpr size_t kShort = 3;
    constexpr size_t kLong = 4;
    if (length <= kLong + 1)
        return length;
    return length % kShort != 0 && length % kLong == 0 ? kLong : kShort;
}

bool isCodeLetter(const Piece& piece)
{
    return piece.character != 0 && g_unichar_isalnum(piece.character);
}

} // namespace

std::string typeset(const std::string& markup)
{
    Pieces pieces = piecesOf(markup);
    std::string result;
    for (auto begin = pieces.begin(); begin != pieces.end();) {
        const auto end = std::find_if(begin, pieces.end(), endsLine);
        Pieces line(std::make_move_iterator(begin), std::make_move_iterator(end));
        setLine(line);
        result += textOf(line);
        begin = end;
        for (; begin != pieces.end() && endsLine(*begin); ++begin)
            result += begin->text;
    }
    return result;
}

std::string typesetCode(const std::string& markup)
{
    Pieces pieces = piecesOf(markup);
    const auto length = static_cast<size_t>(std::count_if(pieces.begin(), pieces.end(), isCodeLetter));
    const bool hasBlanks =
        std::any_of(pieces.begin(), pieces.end(), [](const Piece& piece) { return piece.isBlank(); });
    const size_t group = hasBlanks ? length : groupOf(length);
    size_t place = 0;
    for (Piece& piece : pieces) {
        if (piece.isBlank()) {
            piece.text = kGroupSpace; // a code is one word
            place = 0;
        } else if (isCodeLetter(piece)) {
            if (place > 0)
                piece.text.insert(0, place % group == 0 ? kGroupSpace : kThinSpace);
            ++place;
        }
    }
    return textOf(pieces);
}

} // namespace orbis::flux
