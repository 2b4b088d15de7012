// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Contrast.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace orbis::flux {

namespace {

constexpr int kLargest = 255;

double lightOf(int value)
{
    const double share = value / static_cast<double>(kLargest);
    return share <= 0.03928 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
}

double luminanceOf(const Colour& colour)
{
    return 0.2126 * lightOf(colour.red) + 0.7152 * lightOf(colour.green) + 0.0722 * lightOf(colour.blue);
}

std::optional<int> numberOf(std::string_view digits, int base)
{
    int number = 0;
    const char* end = digits.data() + digits.size();
    const auto result = std::from_chars(digits.data(), end, number, base);
    if (digits.empty() || digits.front() == '-' || result.ec != std::errc() || result.ptr != end
        || number > kLargest)
        return std::nullopt;
    return number;
}

} // namespace

std::optional<Colour> colourOfMarkup(std::string_view text)
{
    constexpr size_t kColours = 3;
    if (text.empty() || text.front() != '#')
        return std::nullopt;
    text.remove_prefix(1);
    const size_t width = text.size() / kColours;
    if (text.size() % kColours != 0 || (width != 1 && width != 2))
        return std::nullopt;
    int values[kColours] = {};
    for (size_t i = 0; i < kColours; ++i) {
        const auto value = numberOf(text.substr(i * width, width), 16);
        if (!value)
            return std::nullopt;
        values[i] = width == 1 ? *value * 17 : *value;
    }
    return Colour {values[0], values[1], values[2]};
}

std::optional<Colour> colourOfTheme(std::string_view text)
{
    int values[4] = {};
    for (int& value : values) {
        const size_t end = std::min(text.find(' '), text.size());
        const auto number = numberOf(text.substr(0, end), 10);
        if (!number)
            return std::nullopt;
        value = *number;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    if (!text.empty())
        return std::nullopt;
    return Colour {values[0], values[1], values[2]};
}

double contrastOf(const Colour& one, const Colour& other)
{
    const auto [darker, lighter] = std::minmax({luminanceOf(one), luminanceOf(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace orbis::flux
