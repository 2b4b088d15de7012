// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Markup of texts from outside: what comes out is what the list allows, and no longer than a card holds. Set
/// and shortened it says the same, or the beginning and the end of it.
#include "Fuzz.h"
#include "flux/Contrast.h"
#include "flux/Markup.h"
#include "flux/Shortening.h"
#include "flux/Typesetting.h"

#include <algorithm>
#include <regex>

namespace {

using orbis::flux::Pieces;
using orbis::flux::piecesOf;
using orbis::flux::TextColours;

constexpr size_t kMostCharacters = 600;
constexpr size_t kMostTags = 64;

const orbis::flux::Colour kCard {14, 21, 32};

/// @return whether the attributes of a tag are those that any text may bring
bool isAllowed(const std::string& tag, const TextColours& colours)
{
    static const std::regex s_plain("/?(b|i|font|color|align)|(br|ps)/?");
    static const std::regex s_words("(font|color|align)?( ?(font=(NorvaleSans-500|Kivo400)|align=center|"
                                    "color=#([0-9A-Fa-f]{3}|[0-9A-Fa-f]{6})))+ *");
    if (std::regex_match(tag, s_plain))
        return true;
    std::smatch match;
    if (!std::regex_match(tag, s_words))
        return false;
    for (size_t at = tag.find("color=#"); at != std::string::npos; at = tag.find("color=#", at + 1)) {
        const std::string colour = tag.substr(at + 6, tag.find(' ', at) - at - 6);
        if (!colours.accent.empty() && colour == colours.accent)
            continue;
        const auto value = orbis::flux::colourOfMarkup(colour);
        if (!colours.accent.empty() || colours.ground.empty() || !value
            || orbis::flux::contrastOf(*value, kCard) < 7.0)
            return false;
    }
    return true;
}

void check(const std::string& text, const TextColours& colours)
{
    const std::string shown = orbis::flux::displayMarkup(text, colours);
    size_t tags = 0;
    size_t outside = 0;
    for (size_t i = 0; i < shown.size(); ++i) {
        if (shown[i] != '<') {
            ++outside;
            continue;
        }
        const size_t end = shown.find('>', i);
        fuzz::demand(end != std::string::npos, "a tag has an end", shown);
        fuzz::demand(isAllowed(shown.substr(i + 1, end - i - 1), colours), "only what is allowed", shown);
        i = end;
        ++tags;
    }
    fuzz::demand(tags <= kMostTags, "few tags", shown);
    fuzz::demand(outside <= kMostCharacters * 33 + 3, "few characters", shown);
    fuzz::demand(!fuzz::isUtf8(text) || fuzz::isUtf8(shown), "characters stay whole", shown);
    fuzz::demand(orbis::flux::displayMarkup(shown, colours) == shown, "nothing is left to take", shown);
    if (text.find_first_of("<") == std::string::npos && text.size() <= kMostCharacters)
        fuzz::demand(shown == text, "a text without markup stays", shown);
}

/// @return what @p markup says: without tags, blanks, marks on letters and what is not drawn
std::string sayingOf(const Pieces& pieces)
{
    std::string saying;
    for (const orbis::flux::Piece& piece : pieces) {
        const GUnicodeType type = g_unichar_type(piece.character);
        const bool isSilent = piece.isTag() || piece.isPiledMark() || type == G_UNICODE_FORMAT
            || g_unichar_isspace(piece.character) || piece.character == 0x00a0;
        saying += isSilent ? "" : piece.text;
    }
    return saying;
}

bool isEachLineEven(const Pieces& pieces)
{
    int depth = 0;
    for (const orbis::flux::Piece& piece : pieces) {
        depth += piece.beginsIsolate() ? 1 : piece.endsIsolate() ? -1 : 0;
        if (depth < 0 || depth > 1 || (piece.endsLine() && depth > 0))
            return false;
    }
    return depth == 0;
}

void checkSet(const std::string& shown, const std::string& set)
{
    // What is left out between bytes may leave a character, and between characters an entity.
    if (!fuzz::isUtf8(shown) || shown.find('&') != std::string::npos)
        return;
    fuzz::demand(
        sayingOf(piecesOf(set)) == sayingOf(piecesOf(shown)), "it says the same when it is set", set);
    fuzz::demand(fuzz::isUtf8(set), "characters stay whole when it is set", set);
}

void checkShortened(const std::string& set)
{
    const orbis::flux::Shortening shortening {set};
    const std::string ellipsis = "…";
    const Pieces whole = piecesOf(set);
    const std::string all = sayingOf(whole);
    const bool isEven = isEachLineEven(whole);
    const bool isUtf8 = fuzz::isUtf8(set);
    for (size_t count = shortening.most(); count > 0; count /= 2) {
        const std::string shortened = shortening.without(count);
        const Pieces pieces = piecesOf(shortened);
        const std::string saying = sayingOf(pieces);
        fuzz::demand(saying.size() <= all.size() + ellipsis.size(), "it is no longer", shortened);
        fuzz::demand(!isUtf8 || fuzz::isUtf8(shortened), "characters stay whole", shortened);
        fuzz::demand(shortened.find(ellipsis) != std::string::npos, "an ellipsis is there", shortened);
        fuzz::demand(isEachLineEven(pieces) || !isEven, "isolates stay even", shortened);
        if (count == shortening.most())
            fuzz::demand(saying == ellipsis, "all of it can be left out", shortened);
    }
}

void checkDrawn(const std::string& shown)
{
    using orbis::flux::Lines;
    for (const Lines lines : {Lines::One, Lines::Many}) {
        const std::string set = orbis::flux::typeset(shown, lines);
        checkSet(shown, set);
        fuzz::demand(isEachLineEven(piecesOf(set)), "each line has even isolates", set);
        if (lines == Lines::One)
            fuzz::demand(set.find("<br") == std::string::npos, "one line is one", set);
        checkShortened(set);
    }
    checkSet(shown, orbis::flux::typesetCode(shown));
}

} // namespace

void fuzz::tryInput(Input& input)
{
    const TextColours kinds[] = {{"14 21 32 255", ""}, {"14 21 32 255", "#FFE566"}, {}};
    const TextColours& colours = kinds[input.number(3)];
    const std::string text = input.rest();
    check(text, colours);
    checkDrawn(orbis::flux::displayMarkup(text, colours));
}
