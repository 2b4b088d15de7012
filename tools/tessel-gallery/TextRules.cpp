// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Every text that is wanted is there, and each of its letters can be seen and read.
#include "Rules.h"
#include "Scripts.h"

#include <algorithm>
#include <string>

namespace gallery {

namespace {

/// Least size of letters on a screen of 1080 lines, pixels.
constexpr int kSmallestText = 24;

/// Least contrasts of texts.
constexpr double kTextContrast = 7.0;
constexpr double kTextHighContrast = 12.0;

/// Share of a letter's ink that has to be there: one row or column of a small letter is more than the rest.
constexpr double kWhole = 0.97;
/// Less than that is not that letter.
constexpr double kNothing = 0.3;

void checkPresence(Case& one)
{
    for (const Wanted& wanted : assignRoles(one.expected.content, one.scene)) {
        if (!wanted.isOptional)
            one.report(std::string("missing-") + nameOf(wanted.role), wanted.text);
    }
    for (const Text& text : one.scene.texts) {
        if (text.role == Role::Unknown && !readable(text.plain).empty())
            one.report("unexpected", text.plain);
    }
}

/// The side at which the most of @p letter is missing.
const char* sideOf(const Letter& letter)
{
    const Box& all = letter.wholeInk;
    const Box& ink = letter.ink;
    const int sides[] = {
        ink.x - all.x, all.right() - ink.right(), ink.y - all.y, all.bottom() - ink.bottom()};
    constexpr const char* kNames[] = {"left", "right", "top", "bottom"};
    return kNames[std::max_element(std::begin(sides), std::end(sides)) - std::begin(sides)];
}

void checkLetters(Case& one, const Text& text)
{
    std::string hidden;
    std::string cut;
    const char* side = "";
    for (const Letter& letter : text.letters) {
        const uint32_t first = firstCharacter(letter.content);
        // A character without a font is drawn as a box, or not at all.
        if (letter.isBlank || letter.place.isEmpty() || (one.expected.hasAnyCharacter && first < ' '))
            continue;
        if (letter.drawn < kNothing) {
            hidden += letter.content;
        } else if (letter.drawn < kWhole) {
            cut += letter.content;
            side = sideOf(letter);
        }
    }
    if (text.ink.isEmpty() && !readable(text.plain).empty())
        one.report(std::string("missing-") + nameOf(text.role), text.plain + ": nothing of it is drawn");
    else if (!hidden.empty())
        one.report("hidden-letters", text.plain + ": \"" + hidden + "\" cannot be seen");
    if (!cut.empty() && !text.ink.isEmpty())
        one.report("cut-letters", text.plain + ": \"" + cut + "\", at the " + side);
}

double contrastOf(const Text& text)
{
    double least = 0;
    for (const Letter& letter : text.letters) {
        if (!letter.isBlank && !letter.isEmoji && letter.contrast > 0)
            least = least == 0 ? letter.contrast : std::min(least, letter.contrast);
    }
    return least;
}

void checkSize(Case& one, const Text& text)
{
    const double size = text.sizePx / one.expected.scale;
    if (size < kSmallestText - 0.5)
        one.report("small-text", text.plain + ": " + number(size) + " px");
    const double full = text.fullSizePx / one.expected.scale;
    if (size < full - 0.5 && text.fitsAtFullSize && !one.expected.mayBeCut)
        one.report("shrunk",
            text.plain + ": " + number(size) + " px, although there is room for " + number(full) + " px");
}

void checkText(Case& one, const Text& text)
{
    if (text.plain.find("_SID_") != std::string::npos)
        one.report("raw-id", text.plain);
    if (text.withoutFont != 0 && !one.expected.hasAnyCharacter)
        one.report("no-font", text.plain + ": character " + std::to_string(text.withoutFont));
    if (text.isCut && !one.expected.mayBeCut)
        one.report("ellipsis", text.plain);
    if (!text.lines.isEmpty() && !text.box.contains(text.lines))
        one.report("overflow", text.plain + ": lines " + describe(text.lines) + " in " + describe(text.box));
    checkSize(one, text);
    checkLetters(one, text);
    const double least = one.expected.contrast ? kTextHighContrast : kTextContrast;
    const double contrast = contrastOf(text);
    one.measured.textContrasts.push_back(contrast);
    if (contrast > 0 && contrast < least)
        one.report("contrast", text.plain + ": " + number(contrast) + ":1");
    std::string words;
    for (const std::string& word : text.inOtherFonts)
        words += " " + word;
    if (!words.empty())
        one.report("font", text.plain + ": not in the language's font:" + words);
}

bool isInText(const Scene& scene, const Box& pixel)
{
    return std::any_of(
        scene.texts.begin(), scene.texts.end(), [&](const Text& text) { return text.box.contains(pixel); });
}

/// Letters are drawn nowhere but in their texts' boxes.
void checkInk(Case& one)
{
    const Image& whole = one.views.whole;
    int strayed = 0;
    for (int y = 0; y < whole.height; ++y) {
        for (int x = 0; x < whole.width; ++x) {
            if (whole.at(x, y) != one.views.withoutTexts.at(x, y) && !isInText(one.scene, {x, y, 1, 1}))
                ++strayed;
        }
    }
    if (strayed > 0)
        one.report("ink", std::to_string(strayed) + " pixels of letters outside of their texts");
}

} // namespace

void checkTexts(Case& one)
{
    checkPresence(one);
    for (const Text& text : one.scene.texts)
        checkText(one, text);
    checkInk(one);
}

} // namespace gallery
