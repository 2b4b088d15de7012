// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Picture.h"

#include "Folders.h"
#include "Wait.h"

#include <algorithm>
#include <cstdio>
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

size_t Picture::count(uint32_t colour) const
{
    return static_cast<size_t>(std::count(pixels.begin(), pixels.end(), colour));
}

Picture settled(const std::function<Picture()>& take)
{
    constexpr size_t kSpinner = size_t {104} * 104; // a spinner never rests
    constexpr Milliseconds kRest {250}; // no motion on the screen is slower
    Picture still = take();
    Picture now = still;
    auto since = std::chrono::steady_clock::now();
    waitUntil([&] {
        now = take();
        if (now.differences(still) > kSpinner) {
            still = now;
            since = std::chrono::steady_clock::now();
        }
        return std::chrono::steady_clock::now() - since >= kRest;
    });
    return now;
}

Picture readWindowDump(const std::filesystem::path& file, const Geometry& screen)
{
    const std::string data = readFile(file);
    Picture picture;
    // The pixels are the last of the file; before them it tells their kind.
    const size_t size = picture.pixels.size() * sizeof(uint32_t);
    if (data.size() < size)
        throw std::runtime_error("no window dump of a whole screen: " + file.string());
    std::memcpy(picture.pixels.data(), &data[data.size() - size], size);
    for (size_t i = 0; i < picture.pixels.size(); ++i) {
        const bool isSeen =
            i % 1920 < static_cast<size_t>(screen.width) && i / 1920 < static_cast<size_t>(screen.height);
        picture.pixels[i] &= isSeen ? 0xFFFFFF : 0; // the fourth byte says nothing
    }
    return picture;
}

Picture readPixmap(const std::filesystem::path& file)
{
    const std::string data = readFile(file);
    size_t width = 0;
    size_t height = 0;
    int start = 0;
    const bool isKnown = std::sscanf(data.c_str(), "P6 %zu %zu 255%*1[\n]%n", &width, &height, &start) == 2;
    constexpr size_t kWidth = 1920;
    constexpr size_t kHeight = 1080;
    const auto begin = static_cast<size_t>(start);
    if (!isKnown || start == 0 || width > kWidth || height > kHeight
        || data.size() < begin + width * height * 3)
        throw std::runtime_error("no pixmap of a screen: " + file.string());
    Picture picture;
    for (size_t i = 0; i < width * height; ++i) {
        const auto byte = [&](size_t k) {
            return uint32_t {static_cast<unsigned char>(data[begin + 3 * i + k])};
        };
        picture.pixels[i / width * kWidth + i % width] = byte(0) << 16U | byte(1) << 8U | byte(2);
    }
    return picture;
}

} // namespace tv
