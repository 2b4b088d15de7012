// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What is drawn on a card beside texts, found in its pixels alone.
#pragma once

#include "Pixels.h"

#include <vector>

namespace gallery {

/// @return the colour that most of the card has
uint32_t colourOfCard(const Image& withoutTexts, const Box& card);

/// Parts of the card that are not of its colour, from the top down, each a band of rows that follow one
/// another; its width is that of what is drawn.
std::vector<Box> bandsOn(const Image& withoutTexts, const Box& area, uint32_t card);

/// @return what is drawn in @p area, in any other colour than @p card
Box drawnIn(const Image& withoutTexts, const Box& area, uint32_t card);

/// @return the strongest contrast to @p card in @p area
double strongestIn(const Image& withoutTexts, const Box& area, uint32_t card);

/// @return a block of at least @p width by @p height in @p area, outside of @p spared, that has about the
/// colour
/// @p wanted; empty when there is none
Box blockLike(const Image& image, const Box& area, const Box& spared, uint32_t wanted, int width, int height);

} // namespace gallery
