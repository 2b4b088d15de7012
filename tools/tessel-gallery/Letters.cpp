// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Letters.h"

#include "Scripts.h"
#include "base/EflHandles.h"

#include <algorithm>

namespace gallery {

namespace {

/// Of a letter's own strongest pixel; the rest is the blur of its edges.
constexpr double kStrong = 0.6;

/// Less is a difference that nobody sees.
constexpr int kSeen = 20;

/// What covers less of a pixel tells nothing of the letter's colour.
constexpr int kTelling = 100;

constexpr double kEnoughOfEmoji = 0.5;

base::CursorPtr cursorOf(const Evas_Object* textblock)
{
    return base::CursorPtr {evas_object_textblock_cursor_new(textblock)};
}

/// One character of a textblock, or a tag that stands for one.
std::string contentAt(const Evas_Textblock_Cursor* cursor)
{
    const base::MallocStr markup {evas_textblock_cursor_content_get(cursor)};
    const std::string content = markup ? markup.get() : "";
    if (content == "<br>" || content == "<br/>" || content == "<ps>" || content == "<ps/>" || content == "\n")
        return "\n";
    if (content.size() > 1 && content.front() == '&') {
        const char* plain = evas_textblock_escape_string_get(content.c_str());
        return plain ? plain : content;
    }
    return content.size() > 1 && content.front() == '<' ? "" : validUtf8(content.c_str());
}

/// Adds the character at @p cursor to @p letter. @return whether it is on a line
bool addCharacter(const Evas_Textblock_Cursor* cursor, const Text& text, Letter& letter)
{
    letter.content += contentAt(cursor);
    Box place;
    const int line =
        evas_textblock_cursor_char_geometry_get(cursor, &place.x, &place.y, &place.width, &place.height);
    if (line < 0)
        return false;
    place.x += text.box.x;
    place.y += text.box.y;
    letter.place.add(place);
    letter.line = line;
    return true;
}

void addLetter(Text& text, Letter& letter, bool isOnLine)
{
    const uint32_t first = firstCharacter(letter.content);
    if (isOnLine && isMark(first) && !text.letters.empty()) { // of the letter before it
        text.letters.back().content += letter.content;
        text.letters.back().place.add(letter.place);
        return;
    }
    letter.isBlank = readable(letter.content).empty();
    letter.isEmoji = isEmoji(first);
    if (!isOnLine)
        text.isCut |= !letter.isBlank;
    else if (!letter.content.empty())
        text.letters.push_back(std::move(letter));
}

/// The strongest pixel of a letter when it is drawn alone.
int strongestOf(const Mask& mask, const Box& place)
{
    int strongest = 0;
    for (int y = place.y; y < place.bottom(); ++y) {
        for (int x = place.x; x < place.right(); ++x)
            strongest = std::max<int>(strongest, mask.at(x, y));
    }
    return strongest;
}

/// The colour that was mixed with @p behind to give @p seen.
uint32_t unmixed(uint32_t seen, uint32_t behind, int coverage)
{
    uint32_t result = 0xFF;
    for (int i = 0; i < 3; ++i) {
        const int from = channel(behind, i);
        const int value = from + (channel(seen, i) - from) * 255 / coverage;
        result = result << 8 | static_cast<uint32_t>(std::clamp(value, 0, 255));
    }
    return result;
}

double middleOf(std::vector<double>& values)
{
    if (values.empty())
        return 1; // not a pixel can be told from what is behind
    const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
    std::nth_element(values.begin(), middle, values.end());
    return *middle;
}

void measure(Letter& letter, const Mask& mask, const Image& whole, const Image& withoutTexts)
{
    const int least = std::max(1, static_cast<int>(kStrong * strongestOf(mask, letter.place)));
    int expected = 0;
    int drawn = 0;
    std::vector<double> contrasts;
    for (int y = letter.place.y; y < letter.place.bottom(); ++y) {
        for (int x = letter.place.x; x < letter.place.right(); ++x) {
            const int coverage = mask.at(x, y);
            if (coverage < least)
                continue;
            ++expected;
            letter.wholeInk.add({x, y, 1, 1});
            if (!whole.box().contains({x, y, 1, 1}))
                continue;
            const uint32_t seen = whole.at(x, y);
            const uint32_t behind = withoutTexts.at(x, y);
            const bool isSeen = difference(seen, behind) >= kSeen;
            drawn += isSeen;
            if (isSeen)
                letter.ink.add({x, y, 1, 1});
            if (coverage >= std::min(least, kTelling))
                contrasts.push_back(contrast(unmixed(seen, behind, coverage), behind));
        }
    }
    letter.drawn = expected > 0 ? drawn / static_cast<double>(expected) : 0;
    if (!letter.isEmoji)
        letter.contrast = middleOf(contrasts);
    // Its own colours may be those of the card.
    if (letter.isEmoji && letter.drawn > kEnoughOfEmoji)
        letter.drawn = 1;
}

} // namespace

const char* nameOf(Role role)
{
    switch (role) {
    case Role::Title:
        return "title";
    case Role::Text:
        return "text";
    case Role::Pin:
        return "pin";
    case Role::TvName:
        return "tv-name";
    case Role::Label:
        return "label";
    case Role::Hint:
        return "hint";
    case Role::Unknown:
        break;
    }
    return "unknown";
}

void readLetters(Text& text)
{
    const base::CursorPtr at = cursorOf(text.object);
    const base::CursorPtr next = cursorOf(text.object);
    for (bool isMore = true; isMore;) {
        evas_textblock_cursor_copy(at.get(), next.get());
        isMore = evas_textblock_cursor_cluster_next(next.get());
        Letter letter;
        bool isOnLine = false;
        do
            isOnLine |= addCharacter(at.get(), text, letter);
        while (evas_textblock_cursor_char_next(at.get()) && isMore
            && evas_textblock_cursor_compare(at.get(), next.get()) < 0);
        addLetter(text, letter, isOnLine);
        if (isMore)
            evas_textblock_cursor_copy(next.get(), at.get());
    }
    // Some letters that an ellipsis took out have a place on the line all the same.
    if (text.isCut)
        text.letters.erase(std::remove_if(text.letters.begin(), text.letters.end(),
                               [&](const Letter& letter) {
                                   return !letter.isBlank && strongestOf(text.mask, letter.place) == 0;
                               }),
            text.letters.end());
}

void measureLetters(Text& text, const Image& whole, const Image& withoutTexts)
{
    for (Letter& letter : text.letters) {
        if (letter.isBlank)
            continue;
        measure(letter, text.mask, whole, withoutTexts);
        text.ink.add(letter.ink);
    }
}

} // namespace gallery
