// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Places and distances: the safe area, the card's edge, texts to each other and to the hairline, the card's
/// picture and spinner.
#include "Rules.h"
#include "Scripts.h"
#include "Surface.h"

#include <algorithm>
#include <cmath>

namespace gallery {

namespace {

/// Televisions may cut off this share of the picture on each side.
constexpr double kUnsafe = 0.05;

// Distances, pixels on a screen of 1080 lines.
constexpr double kToEdge = 24; ///< of what is on the card to its edge
constexpr double kBetweenTexts = 4; ///< of letters to those of another text
constexpr double kToHairline = 8; ///< of letters and pictures to the line below the title
constexpr double kToButton = 12;
constexpr double kRim = 16; ///< of the card with its round corners, which may be drawn in other colours

constexpr double kThickestLine = 5;
constexpr double kShortestHairline = 0.6; ///< of the card's width
constexpr double kSmallestSpinner = 36;
constexpr double kLargestSpinner = 150;
constexpr double kSmallestPicture = 120;

/// Least contrast of parts of a user interface that are no texts.
constexpr double kPartContrast = 3.0;
constexpr double kLineContrast = 1.5; ///< of what only divides

void checkSafeArea(Case& one)
{
    const Image& whole = one.views.whole;
    const int side = static_cast<int>(std::lround(whole.width * kUnsafe));
    const int edge = static_cast<int>(std::lround(whole.height * kUnsafe));
    const Box safe {side, edge, whole.width - 2 * side, whole.height - 2 * edge};
    const Box& card = one.scene.card;
    if (card.isEmpty() || !safe.contains(card))
        one.report("safe-area", "the card is " + describe(card));
    for (const Text& text : one.scene.texts) {
        if (!card.contains(text.box))
            one.report("safe-area", text.plain + ": " + describe(text.box) + " is not on the card");
    }
    for (const Button& button : one.scene.buttons) {
        if (!card.contains(button.box))
            one.report("safe-area", button.label + ": " + describe(button.box) + " is not on the card");
    }
    // Half a title or a stump of a button beside a question is neither the one popup nor the other.
    for (const Box& covered : one.scene.coveredCards) {
        if (!card.contains(covered))
            one.report("uncovered", "the popup behind shows beside the card: " + describe(covered));
    }
}

void takeLeast(double& least, double value)
{
    least = least < 0 ? value : std::min(least, value);
}

void checkEdge(Case& one, const Box& box, const std::string& what)
{
    const Box& card = one.scene.card;
    if (box.isEmpty())
        return;
    const double least = one.at1080(
        std::min({box.x - card.x, card.right() - box.right(), box.y - card.y, card.bottom() - box.bottom()}));
    takeLeast(one.measured.toEdge, least);
    if (least < kToEdge - 0.5)
        one.report("edge", what + ": " + number(least) + " px to the card's edge");
}

/// The distance of two boxes that do not meet, along the axis on which they are apart; negative where they
/// meet.
int gapBetween(const Box& first, const Box& second)
{
    const int across = std::max(second.x - first.right(), first.x - second.right());
    const int down = std::max(second.y - first.bottom(), first.y - second.bottom());
    return std::max(across, down);
}

void checkGaps(Case& one)
{
    const auto& texts = one.scene.texts;
    for (size_t i = 0; i < texts.size(); ++i) {
        for (size_t j = i + 1; j < texts.size(); ++j) {
            if (texts[i].ink.isEmpty() || texts[j].ink.isEmpty())
                continue;
            const double gap = one.at1080(gapBetween(texts[i].ink, texts[j].ink));
            takeLeast(one.measured.betweenTexts, std::max(gap, 0.0));
            const std::string both = texts[i].plain + " / " + texts[j].plain;
            if (gap < 0)
                one.report("overlap", both);
            else if (gap < kBetweenTexts - 0.5)
                one.report("text-gap", both + ": " + number(gap) + " px");
        }
        for (const Button& button : one.scene.buttons) {
            const double gap = one.at1080(gapBetween(texts[i].ink, button.box));
            if (texts[i].role != Role::Label && !texts[i].ink.isEmpty() && gap < kToButton - 0.5)
                one.report("text-gap", texts[i].plain + " / " + button.label + ": " + number(gap) + " px");
        }
    }
}

/// The part of the card above its buttons, without its rim.
Box contentOf(Case& one)
{
    const Box rimless = one.scene.card.grownBy(-one.px(kRim));
    Box content = rimless;
    for (const Button& button : one.scene.buttons)
        content.height = std::min(content.height, button.box.y - one.px(kToButton) - content.y);
    return content.isEmpty() ? rimless : content;
}

Box titleOf(const Scene& scene)
{
    for (const Text& text : scene.texts) {
        if (text.role == Role::Title)
            return text.ink;
    }
    return {};
}

/// The line between the title and all else.
Box hairlineAmong(Case& one, const std::vector<Box>& bands)
{
    for (const Box& band : bands) {
        if (band.height <= one.px(kThickestLine) && band.width >= kShortestHairline * one.scene.card.width)
            return band;
    }
    return {};
}

void checkHairline(Case& one, const Box& hairline, uint32_t card)
{
    if (hairline.isEmpty()) {
        one.report("missing-hairline", "no line below the title");
        return;
    }
    const double contrast = strongestIn(one.views.withoutTexts, hairline, card);
    if (contrast < kLineContrast)
        one.report("missing-hairline", "its contrast is " + number(contrast) + ":1");
    checkEdge(one, hairline, "the hairline");
    const Box title = titleOf(one.scene);
    const double above = one.at1080(hairline.y - title.bottom());
    if (!title.isEmpty()) {
        takeLeast(one.measured.toHairline, above);
        if (above < kToHairline - 0.5)
            one.report("hairline", "the title is " + number(above) + " px above it");
    }
    for (const Text& text : one.scene.texts) {
        if (text.role == Role::Title || text.ink.isEmpty())
            continue;
        const double below = one.at1080(text.ink.y - hairline.bottom());
        takeLeast(one.measured.toHairline, below);
        if (below < kToHairline - 0.5)
            one.report("hairline", text.plain + " is " + number(below) + " px below it");
    }
}

void checkSpinner(Case& one, const std::vector<Box>& bands, uint32_t card)
{
    const auto isSpinner = [&](const Box& band) {
        const auto fits = [&](int size) {
            return size >= one.px(kSmallestSpinner)
                && size <= one.px(kLargestSpinner * one.expected.textScale);
        };
        return fits(band.width) && fits(band.height);
    };
    const auto found = std::find_if(bands.begin(), bands.end(), isSpinner);
    if (found == bands.end()) {
        one.report("missing-spinner", "nothing of its size is drawn");
        return;
    }
    const double contrast = strongestIn(one.views.withoutTexts, *found, card);
    if (contrast < kPartContrast)
        one.report("missing-spinner", "its contrast is " + number(contrast) + ":1");
    for (const Text& text : one.scene.texts) {
        const double gap = one.at1080(gapBetween(text.ink, *found));
        if (text.role == Role::Text && !text.ink.isEmpty() && gap < kBetweenTexts - 0.5)
            one.report("overlap", text.plain + ": " + number(gap) + " px to the spinner");
    }
}

void checkPicture(Case& one, const std::vector<Box>& bands, uint32_t card)
{
    const auto isPicture = [&](const Box& band) {
        return std::min(band.width, band.height) >= one.px(kSmallestPicture)
            && strongestIn(one.views.withoutTexts, band, card) >= kPartContrast;
    };
    const auto found = std::find_if(bands.begin(), bands.end(), isPicture);
    if (found == bands.end()) {
        one.report("missing-picture", "nothing of its size is drawn");
        return;
    }
    for (const Text& text : one.scene.texts) {
        if (text.role != Role::Hint && !text.ink.isEmpty() && gapBetween(text.ink, *found) < 0)
            one.report("overlap", text.plain + " is over the picture");
    }
}

} // namespace

void checkLayout(Case& one)
{
    checkSafeArea(one);
    if (one.scene.card.isEmpty())
        return;
    for (const Text& text : one.scene.texts)
        checkEdge(one, text.ink, text.plain);
    for (const Button& button : one.scene.buttons)
        checkEdge(one, button.box, button.label);
    checkGaps(one);
    const uint32_t card = colourOfCard(one.views.withoutTexts, one.scene.card);
    std::vector<Box> bands = bandsOn(one.views.withoutTexts, contentOf(one), card);
    const Box hairline = hairlineAmong(one, bands);
    checkHairline(one, hairline, card);
    bands.erase(
        std::remove_if(bands.begin(), bands.end(),
            [&](const Box& band) { return band.y <= hairline.y || band.height <= one.px(kThickestLine); }),
        bands.end());
    if (one.expected.content.hasSpinner)
        checkSpinner(one, bands, card);
    if (one.expected.content.hasPicture)
        checkPicture(one, bands, card);
}

} // namespace gallery
