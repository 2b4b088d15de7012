// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Whether a colour can be read on another.
#pragma once

#include <optional>
#include <string_view>

namespace orbis::flux {

/// Red, green and blue, 0 to 255 each.
struct Colour {
    int red, green, blue;
};

/// @return the colour of "#rrggbb" or "#rgb", nothing for any other form
std::optional<Colour> colourOfMarkup(std::string_view text);

/// @return the colour of a theme's "R G B A", nothing for any other form; the opacity is not looked at
std::optional<Colour> colourOfTheme(std::string_view text);

/// @return the ratio of the two colours' luminance, 1 to 21, as accessibility guidelines reckon it
double contrastOf(const Colour& one, const Colour& other);

} // namespace orbis::flux
