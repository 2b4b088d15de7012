// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Surface.h"

#include <algorithm>
#include <map>

namespace gallery {

namespace {

/// Of a channel: less is the same colour to a viewer.
constexpr int kSame = 10;

/// Rows and columns between the points that are looked at for the card's colour.
constexpr int kStride = 7;

bool isOther(const Image& image, int x, int y, uint32_t card)
{
    return difference(image.at(x, y), card) > kSame;
}

/// What of a row is of another colour, as a box one pixel high.
Box drawnInRow(const Image& image, const Box& area, int y, uint32_t card)
{
    int first = area.x;
    while (first < area.right() && !isOther(image, first, y, card))
        ++first;
    if (first == area.right())
        return {};
    int last = area.right() - 1;
    while (!isOther(image, last, y, card))
        --last;
    return {first, y, last - first + 1, 1};
}

} // namespace

uint32_t colourOfCard(const Image& withoutTexts, const Box& card)
{
    std::map<uint32_t, int> counts;
    const Box area = card.cutTo(withoutTexts.box());
    for (int y = area.y; y < area.bottom(); y += kStride) {
        for (int x = area.x; x < area.right(); x += kStride)
            ++counts[withoutTexts.at(x, y)];
    }
    const auto most = std::max_element(counts.begin(), counts.end(),
        [](const auto& one, const auto& other) { return one.second < other.second; });
    return most == counts.end() ? 0 : most->first;
}

std::vector<Box> bandsOn(const Image& withoutTexts, const Box& area, uint32_t card)
{
    const Box seen = area.cutTo(withoutTexts.box());
    std::vector<Box> bands;
    Box band;
    for (int y = seen.y; y <= seen.bottom(); ++y) {
        const Box row = y < seen.bottom() ? drawnInRow(withoutTexts, seen, y, card) : Box {};
        if (row.isEmpty() && !band.isEmpty()) {
            bands.push_back(band);
            band = {};
        }
        band.add(row);
    }
    return bands;
}

Box drawnIn(const Image& withoutTexts, const Box& area, uint32_t card)
{
    const Box seen = area.cutTo(withoutTexts.box());
    Box drawn;
    for (int y = seen.y; y < seen.bottom(); ++y)
        drawn.add(drawnInRow(withoutTexts, seen, y, card));
    return drawn;
}

double strongestIn(const Image& withoutTexts, const Box& area, uint32_t card)
{
    const Box seen = area.cutTo(withoutTexts.box());
    double strongest = 1;
    for (int y = seen.y; y < seen.bottom(); ++y) {
        for (int x = seen.x; x < seen.right(); ++x) {
            if (isOther(withoutTexts, x, y, card))
                strongest = std::max(strongest, contrast(withoutTexts.at(x, y), card));
        }
    }
    return strongest;
}

Box blockLike(const Image& image, const Box& area, const Box& spared, uint32_t wanted, int width, int height)
{
    const Box seen = area.cutTo(image.box());
    // For each column the number of rows above that are of the colour, without a gap.
    std::vector<int> heights(static_cast<size_t>(std::max(seen.width, 0)), 0);
    for (int y = seen.y; y < seen.bottom(); ++y) {
        int run = 0;
        for (int x = seen.x; x < seen.right(); ++x) {
            int& above = heights[static_cast<size_t>(x - seen.x)];
            const bool isLike =
                !spared.contains({x, y, 1, 1}) && difference(image.at(x, y), wanted) <= 2 * kSame;
            above = isLike ? above + 1 : 0;
            run = above >= height ? run + 1 : 0;
            if (run == width)
                return {x - width + 1, y - height + 1, width, height};
        }
    }
    return {};
}

} // namespace gallery
