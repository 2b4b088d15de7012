// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A canvas as pixels.
#pragma once

#include <Elementary.h>

#include <cstdint>
#include <string>
#include <vector>

namespace gallery {

/// A rectangle in pixels.
struct Box {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    int right() const { return x + width; }
    int bottom() const { return y + height; }
    bool isEmpty() const { return width <= 0 || height <= 0; }
    bool contains(const Box& other) const
    {
        return other.x >= x && other.y >= y && other.right() <= right() && other.bottom() <= bottom();
    }
    Box cutTo(const Box& other) const;
    Box grownBy(int margin) const
    {
        return {x - margin, y - margin, width + 2 * margin, height + 2 * margin};
    }
    /// Makes it hold @p other, too.
    void add(const Box& other);
};

struct Image {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels; ///< opaque, 0xFFRRGGBB, rows from the top

    Box box() const { return {0, 0, width, height}; }
    uint32_t at(int x, int y) const { return pixels[static_cast<size_t>(y) * width + x]; }
};

/// How much of each pixel letters cover, 0 to 255, within a box of the canvas.
struct Mask {
    Box box;
    std::vector<uint8_t> coverage; ///< rows from the top

    uint8_t at(int x, int y) const
    {
        return box.contains({x, y, 1, 1}) ? coverage[static_cast<size_t>(y - box.y) * box.width + x - box.x]
                                          : uint8_t {0};
    }
};

/// Something like a film, bright in places, to judge the dimming above it.
Image filmPicture(int width, int height);

/// Draws the canvas of @p window, which is of the buffer engine, over @p behind.
Image grab(const Evas_Object* window, const Image& behind);

/// The same where only what lies in @p area can have changed since @p former was grabbed.
Image grabAgain(const Evas_Object* window, const Image& behind, const Image& former, const Box& area);

/// @return whether the file was written
bool savePng(const Image& image, const std::string& path);

/// Contrast of two colours, 1 to 21: that of the web's accessibility guidelines, by relative luminance.
double contrast(uint32_t one, uint32_t other);

/// @return the greatest difference of a channel, 0 to 255
int difference(uint32_t one, uint32_t other);

int channel(uint32_t colour, int index); ///< 0 to 2: red, green, blue

/// Like "120x40 at 7,8".
std::string describe(const Box& box);

} // namespace gallery
