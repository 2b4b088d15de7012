// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Typesetting.h"

#include "flux/Pieces.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace orbis::flux {

namespace {

constexpr const char* kWordJoiner = "\u2060";
constexpr const char* kThinSpace = "\u2009";
constexpr const char* kGroupSpace = "\u2002";
constexpr const char* kPopIsolate = "\u2069";

constexpr const char* kNoBreakSpace = "\u00a0";

/// The last characters of a text without blanks that stay together.
constexpr size_t kLastCharacters = 3;

/// A last word of no more characters stays with the one before it.
constexpr size_t kShortWord = 3;

/// Hardly any writing piles up more on a letter; what is more would be drawn over the lines around.
constexpr int kMostPiledMarks = 3;

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
        const bool isMarkAround = piece->isDirectionMark() && (piece == begin || std::next(piece) == end);
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
        kept.push_back(piecesOf(kPopIsolate).front());
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

/// A short word does not stand alone on the last line.
void joinLastWord(Pieces& line)
{
    size_t length = 0;
    for (auto piece = line.rbegin(); piece != line.rend() && length <= kShortWord; ++piece) {
        if (piece->isBlank() && length > 0) {
            const bool isWordBefore = std::next(piece) != line.rend() && !std::next(piece)->isBlank();
            if (isWordBefore)
                *piece = piecesOf(kNoBreakSpace).front();
            return;
        }
        const bool isDrawn = !piece->isTag() && !piece->isInvisible() && !piece->isPiledMark();
        length += isDrawn && !piece->isBlank() ? 1 : 0;
    }
}

void dropPiledMarks(Pieces& line)
{
    int piled = 0;
    const auto isTooMuch = [&](const Piece& piece) {
        piled = piece.isPiledMark() ? piled + 1 : piece.isTag() || piece.isInvisible() ? piled : 0;
        return piled > kMostPiledMarks && piece.isPiledMark();
    };
    line.erase(std::remove_if(line.begin(), line.end(), isTooMuch), line.end());
}

/// What parts the words of a name that has lines of its own parts them where all of it is on one.
void joinLines(Pieces::iterator begin, Pieces::iterator end)
{
    for (auto piece = begin; piece != end; ++piece) {
        if (piece->endsLine() || piece->character == '\n' || piece->character == '\t')
            *piece = piecesOf(" ").front();
    }
}

/// A name that stands in an isolate is a part of its sentence and ends no line of it.
void joinLinesOfNames(Pieces& pieces)
{
    const auto isEnd = [](const Piece& piece) { return piece.endsIsolate(); };
    for (auto piece = pieces.begin(); piece != pieces.end();) {
        if (!piece++->beginsIsolate())
            continue;
        int depth = 1;
        auto end = piece;
        for (; end != pieces.end() && depth > 0; ++end)
            depth += end->beginsIsolate() ? 1 : end->endsIsolate() ? -1 : 0;
        if (depth > 0) // one of them is the name's own
            end = std::find_if(pieces.rbegin(), std::make_reverse_iterator(piece), isEnd).base();
        joinLines(piece, end);
        piece = std::max(piece, end);
    }
}

void setLine(Pieces& line)
{
    dropPiledMarks(line);
    evenIsolates(line);
    dropForcedDirection(line);
    joinLastWord(line);
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

std::string typeset(const std::string& markup, Lines lines)
{
    Pieces pieces = piecesOf(markup);
    if (lines == Lines::One)
        joinLines(pieces.begin(), pieces.end());
    else
        joinLinesOfNames(pieces);
    const auto endsLine = [](const Piece& piece) { return piece.endsLine(); };
    std::string result;
    for (auto begin = pieces.begin(); begin != pieces.end();) {
        const auto end = std::find_if(begin, pieces.end(), endsLine);
        Pieces line(std::make_move_iterator(begin), std::make_move_iterator(end));
        setLine(line);
        result += textOf(line);
        begin = end;
        for (; begin != pieces.end() && begin->endsLine(); ++begin)
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
    const size_t group = std::max<size_t>(1, hasBlanks ? length : groupOf(length));
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
