// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Pixels.h"

#include "base/EflHandles.h"

#include <Ecore_Evas.h>

#include <algorithm>
#include <array>
#include <cmath>

namespace gallery {

namespace {

using Colour = std::array<double, 3>; ///< red, green, blue, 0 to 255

constexpr Colour kSky {34, 74, 128};
constexpr Colour kHorizon {247, 200, 148};
constexpr Colour kSea {20, 56, 84};
constexpr Colour kSun {255, 246, 214};

constexpr double kHorizonAt = 0.66; ///< of the height
constexpr double kSunRadius = 0.13; ///< of the height

Colour mixed(const Colour& from, const Colour& to, double share)
{
    Colour result {};
    for (size_t i = 0; i < result.size(); ++i)
        result[i] = from[i] + (to[i] - from[i]) * share;
    return result;
}

uint32_t packed(const Colour& colour)
{
    uint32_t result = 0xFF;
    for (const double value : colour)
        result = result << 8 | static_cast<uint32_t>(std::lround(value));
    return result;
}

/// The light that a channel's value stands for.
double lightOf(int value)
{
    static const std::array<double, 256> s_lights = [] {
        std::array<double, 256> lights {};
        for (size_t i = 0; i < lights.size(); ++i) {
            const double share = static_cast<double>(i) / 255;
            lights[i] = share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
        }
        return lights;
    }();
    return s_lights[static_cast<size_t>(value)];
}

double luminance(uint32_t colour)
{
    return 0.2126 * lightOf(channel(colour, 0)) + 0.7152 * lightOf(channel(colour, 1))
        + 0.0722 * lightOf(channel(colour, 2));
}

/// @param above  with its colours already multiplied by its opacity
uint32_t over(uint32_t above, uint32_t behind)
{
    uint32_t through = 255 - (above >> 24);
    if (through == 0)
        return above;
    through += through >> 7; // of 256
    // Two channels at a time.
    const uint32_t redBlue = (behind & 0xFF00FFU) * through >> 8 & 0xFF00FFU;
    const uint32_t green = (behind & 0xFF00U) * through >> 8 & 0xFF00U;
    return 0xFF000000U | (above + redBlue + green);
}

/// What the canvas shows in @p area, over @p behind.
void compose(const Evas_Object* window, const Image& behind, const Box& area, Image& image)
{
    Ecore_Evas* canvas = ecore_evas_ecore_evas_get(evas_object_evas_get(window));
    ecore_evas_manual_render(canvas);
    const auto* drawn = static_cast<const uint32_t*>(ecore_evas_buffer_pixels_get(canvas));
    if (!drawn)
        return;
    for (int y = area.y; y < area.bottom(); ++y) {
        const size_t row = static_cast<size_t>(y) * behind.width;
        for (size_t i = row + area.x; i < row + area.right(); ++i)
            image.pixels[i] = over(drawn[i], behind.pixels[i]);
    }
}

} // namespace

Box Box::cutTo(const Box& other) const
{
    Box result {std::max(x, other.x), std::max(y, other.y), 0, 0};
    result.width = std::max(0, std::min(right(), other.right()) - result.x);
    result.height = std::max(0, std::min(bottom(), other.bottom()) - result.y);
    return result;
}

void Box::add(const Box& other)
{
    if (other.isEmpty())
        return;
    if (isEmpty()) {
        *this = other;
        return;
    }
    const int rightmost = std::max(right(), other.right());
    const int lowest = std::max(bottom(), other.bottom());
    x = std::min(x, other.x);
    y = std::min(y, other.y);
    width = rightmost - x;
    height = lowest - y;
}

Image filmPicture(int width, int height)
{
    Image image {width, height, {}};
    image.pixels.reserve(static_cast<size_t>(width) * height);
    for (int y = 0; y < height; ++y) {
        const double down = y / static_cast<double>(height);
        const Colour row = down < kHorizonAt
            ? mixed(kSky, kHorizon, down / kHorizonAt)
            : mixed(kHorizon, kSea, std::sqrt((down - kHorizonAt) / (1 - kHorizonAt)));
        for (int x = 0; x < width; ++x) {
            const double fromSun = std::hypot(x - 0.7 * width, y - 0.52 * height) / (kSunRadius * height);
            const bool isSun = down < kHorizonAt && fromSun < 1;
            image.pixels.push_back(packed(isSun ? kSun : row));
        }
    }
    return image;
}

Image grab(const Evas_Object* window, const Image& behind)
{
    Image image {behind.width, behind.height, {}};
    image.pixels.resize(behind.pixels.size());
    compose(window, behind, behind.box(), image);
    return image;
}

Image grabAgain(const Evas_Object* window, const Image& behind, const Image& former, const Box& area)
{
    Image image = former;
    compose(window, behind, area.cutTo(behind.box()), image);
    return image;
}

bool savePng(const Image& image, const std::string& path)
{
    const base::CanvasPtr canvas {ecore_evas_buffer_new(1, 1)};
    Evas_Object* object = evas_object_image_add(ecore_evas_get(canvas.get()));
    evas_object_image_size_set(object, image.width, image.height);
    evas_object_image_data_copy_set(object, const_cast<uint32_t*>(image.pixels.data()));
    // More takes longer and saves next to nothing.
    return evas_object_image_save(object, path.c_str(), nullptr, "compress=4");
}

double contrast(uint32_t one, uint32_t other)
{
    constexpr double kFlare = 0.05;
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + kFlare) / (darker + kFlare);
}

int channel(uint32_t colour, int index)
{
    return static_cast<int>(colour >> (16 - 8 * index) & 0xFF);
}

int difference(uint32_t one, uint32_t other)
{
    int greatest = 0;
    for (int i = 0; one != other && i < 3; ++i)
        greatest = std::max(greatest, std::abs(channel(one, i) - channel(other, i)));
    return greatest;
}

std::string describe(const Box& box)
{
    return std::to_string(box.width) + "x" + std::to_string(box.height) + " at " + std::to_string(box.x) + ","
        + std::to_string(box.y);
}

} // namespace gallery
