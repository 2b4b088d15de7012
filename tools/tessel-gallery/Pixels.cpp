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

int channel(uint32_t colour, int index)
{
    return static_cast<int>(colour >> (16 - 8 * index) & 0xFF);
}

double luminance(uint32_t colour)
{
    constexpr std::array<double, 3> kWeights {0.2126, 0.7152, 0.0722};
    double result = 0;
    for (int i = 0; i < 3; ++i) {
        const double value = channel(colour, i) / 255.0;
        result += kWeights[i] * (value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4));
    }
    return result;
}

/// @param above  with its colours already multiplied by its opacity
uint32_t over(uint32_t above, uint32_t behind)
{
    const int through = 255 - static_cast<int>(above >> 24);
    uint32_t result = 0xFF;
    for (int i = 0; i < 3; ++i)
        result = result << 8
            | static_cast<uint32_t>(std::min(255, channel(above, i) + channel(behind, i) * through / 255));
    return result;
}

} // namespace

Box Box::cutTo(const Box& other) const
{
    Box result {std::max(x, other.x), std::max(y, other.y), 0, 0};
    result.width = std::max(0, std::min(right(), other.right()) - result.x);
    result.height = std::max(0, std::min(bottom(), other.bottom()) - result.y);
    return result;
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
    Ecore_Evas* canvas = ecore_evas_ecore_evas_get(evas_object_evas_get(window));
    ecore_evas_manual_render(canvas);
    const auto* drawn = static_cast<const uint32_t*>(ecore_evas_buffer_pixels_get(canvas));
    Image image = behind;
    for (size_t i = 0; drawn && i < image.pixels.size(); ++i)
        image.pixels[i] = over(drawn[i], behind.pixels[i]);
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

} // namespace gallery
