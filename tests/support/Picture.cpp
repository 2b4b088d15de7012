#include "Picture.h"

#include "Folders.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <numeric>
#include <ostream>
#include <stdexcept>
#include <string>

namespace tv {

std::ostream& operator<<(std::ostream& out, const Geometry& geometry)
{
    return out << geometry.width << "x" << geometry.height << "+" << geometry.x << "+" << geometry.y;
}

size_t Picture::differences(const Picture& other) const
{
    return std::inner_product(
        pixels.begin(), pixels.end(), other.pixels.begin(), size_t {0}, std::plus<>(), std::not_equal_to<>());
}

size_t Picture::count(uint32_t colour, int tolerance) const
{
    const auto differs = [=](uint32_t pixel, int shift) {
        return std::abs(static_cast<int>(pixel >> shift & 0xFF) - static_cast<int>(colour >> shift & 0xFF))
            > tolerance;
    };
    return static_cast<size_t>(std::count_if(pixels.begin(), pixels.end(),
        [&](uint32_t pixel) { return !differs(pixel, 0) && !differs(pixel, 8) && !differs(pixel, 16); }));
}

Geometry Picture::surrounding(uint32_t colour, int width, int height) const
{
    int left = width;
    int right = -1;
    int top = height;
    int bottom = -1;
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            if (pixels[static_cast<size_t>(y * 1920 + x)] != colour)
                continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = y;
        }
    }
    return right < 0 ? Geometry {} : Geometry {left, top, right - left + 1, bottom - top + 1};
}

Picture readWindowDump(const std::filesystem::path& file)
{
    const std::string data = readFile(file);
    Picture picture;
    // The pixels are the last of the file; before them it tells their kind.
    const size_t size = picture.pixels.size() * sizeof(uint32_t);
    if (data.size() < size)
        throw std::runtime_error("no window dump of a whole screen: " + file.string());
    std::memcpy(picture.pixels.data(), &data[data.size() - size], size);
    for (uint32_t& pixel : picture.pixels)
        pixel &= 0xFFFFFF; // the fourth byte says nothing
    return picture;
}

} // namespace tv
