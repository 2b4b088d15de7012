// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Which font a word is really drawn with: it is drawn again in the font that is meant, and the two are
/// compared.
#include "Fonts.h"
#include "Reference.h"
#include "Scripts.h"

#include <algorithm>

namespace gallery {

namespace {

/// Share of the ink that two drawings of a word have in common when they are of one font; other fonts share
/// two thirds at most.
constexpr double kSameFont = 0.8;

/// Some pixels by which a drawing may be displaced to its copy.
constexpr int kDisplaced = 1;

/// Some pixels by which letters reach beyond their place in the line; marks on them may reach farther.
constexpr int kReach = 2;

constexpr const char* kLatin = "Noto Sans";
constexpr const char* kKorean = "NanumGothic";
constexpr const char* kChinese = "WenQuanYi Micro Hei";

/// The font that is meant for a script in a language; Korean and Chinese rows are of one font, whatever is in
/// them.
const char* familyFor(Script script, const std::string& language)
{
    const bool isKorean = language == "ko";
    const bool isChinese = language.rfind("zh", 0) == 0;
    switch (script) {
    case Script::Latin:
    case Script::Cyrillic:
        return isKorean ? kKorean : isChinese ? kChinese : kLatin;
    case Script::Arabic:
        return "Noto Sans Arabic UI";
    case Script::Hebrew:
        return "Noto Sans Hebrew";
    case Script::Devanagari:
        return "Noto Sans Devanagari UI";
    case Script::Han:
        return isKorean ? kKorean : kChinese;
    case Script::Hangul:
        return kKorean;
    case Script::None:
    case Script::Other:
        break;
    }
    return nullptr;
}

struct Run {
    std::string text;
    Script script = Script::None;
    int line = 0;
    int letters = 0;
    Box place;
};

/// Letters of one script that nothing parts.
std::vector<Run> runsOf(const Text& text)
{
    std::vector<Run> runs;
    bool isNew = true;
    for (const Letter& letter : text.letters) {
        const Script script = scriptOf(firstCharacter(letter.content));
        if (letter.isBlank && !partsWords(letter.content))
            continue;
        isNew = isNew || letter.isBlank || script == Script::None || script != runs.back().script
            || letter.line != runs.back().line;
        if (letter.isBlank || script == Script::None)
            continue;
        if (isNew)
            runs.push_back({"", script, letter.line, 0, {}});
        isNew = false;
        // As they stand: a name or a pseudo-locale may turn them round.
        Run& run = runs.back();
        const bool isTurned = !isRightToLeft(script) && letter.place.x < run.place.x && run.letters > 0;
        run.text.insert(isTurned ? 0 : run.text.size(), letter.content);
        ++run.letters;
        runs.back().place.add(letter.place);
    }
    return runs;
}

/// The ink that the letters of @p text have in a place of the picture, with the coverage that its colours
/// tell.
Mask inkIn(const Box& place, int reach, const Text& text, const Image& whole, const Image& withoutTexts)
{
    const auto differenceAt = [&](int x, int y) {
        return text.mask.at(x, y) == 0 ? 0 : difference(whole.at(x, y), withoutTexts.at(x, y));
    };
    const Box seen = Box {place.x - reach, place.y, place.width + 2 * reach, place.height}.cutTo(whole.box());
    int strongest = 1;
    Box ink;
    for (int y = seen.y; y < seen.bottom(); ++y) {
        for (int x = seen.x; x < seen.right(); ++x)
            strongest = std::max(strongest, differenceAt(x, y));
    }
    const auto coverageAt = [&](int x, int y) { return std::min(255, 255 * differenceAt(x, y) / strongest); };
    for (int y = seen.y; y < seen.bottom(); ++y) {
        for (int x = seen.x; x < seen.right(); ++x) {
            if (coverageAt(x, y) > 0)
                ink.add({x, y, 1, 1});
        }
    }
    Mask mask {ink, {}};
    for (int y = ink.y; y < ink.bottom(); ++y) {
        for (int x = ink.x; x < ink.right(); ++x)
            mask.coverage.push_back(static_cast<uint8_t>(coverageAt(x, y)));
    }
    return mask;
}

/// Within the box of @p word alone: neighbours may reach into the place of what is drawn.
double sharedInk(const Mask& drawn, const Mask& word, int x0, int y0)
{
    double shared = 0;
    double all = 0;
    for (int y = 0; y < word.box.height; ++y) {
        for (int x = 0; x < word.box.width; ++x) {
            const int first = drawn.at(x0 + x, y0 + y);
            const int second = word.at(word.box.x + x, word.box.y + y);
            shared += std::min(first, second);
            all += std::max(first, second);
        }
    }
    return all > 0 ? shared / all : 0;
}

/// The most that the two have in common wherever @p word lies in what is drawn: hyphens and brackets on
/// either side may reach into its place.
double likeness(const Mask& drawn, const Mask& word)
{
    double most = 0;
    const int lowest = std::max(drawn.box.y, drawn.box.bottom() - word.box.height) + kDisplaced;
    const int last = std::max(drawn.box.x, drawn.box.right() - word.box.width) + kDisplaced;
    for (int y = drawn.box.y - kDisplaced; y <= lowest; ++y) {
        for (int x = drawn.box.x - kDisplaced; x <= last && most < kSameFont; ++x)
            most = std::max(most, sharedInk(drawn, word, x, y));
    }
    return most;
}

} // namespace

void findOtherFonts(Text& text, const std::string& language, const Image& whole, const Image& withoutTexts,
    Reference& reference)
{
    for (const Run& run : runsOf(text)) {
        const char* family = familyFor(run.script, language);
        // What is between two marks has too much of their ink in its place.
        const bool isEnough = run.letters > 2 || run.script == Script::Han || run.script == Script::Hangul;
        if (!family || !isEnough)
            continue;
        double most = -1; // nothing is drawn
        for (const bool isBold : {text.isBold, !text.isBold}) {
            const Mask& word = reference.word(run.text, {family, isBold, text.fontSize, text.scale});
            // All of what a word has beyond its place may be on one side of it.
            const int reach = kReach + std::max(0, word.box.width - run.place.width);
            const Mask drawn = inkIn(run.place, reach, text, whole, withoutTexts);
            if (most < kSameFont && !drawn.box.isEmpty())
                most = std::max(most, likeness(drawn, word));
        }
        if (most >= 0 && most < kSameFont)
            text.inOtherFonts.push_back(run.text);
    }
}

} // namespace gallery
