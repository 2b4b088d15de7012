// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a screen shows, pixel by pixel.
#ifndef TESSEL_TESTS_PICTURE_H
#define TESSEL_TESTS_PICTURE_H

#include <cstdint>
#include <filesystem>
#include <functional>
#include <vector>

namespace tv {

struct Geometry {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    bool operator==(const Geometry& other) const
    {
        return x == other.x && y == other.y && width == other.width && height == other.height;
    }
};
std::ostream& operator<<(std::ostream& out, const Geometry& geometry);

struct Picture {
    std::vector<uint32_t> pixels = std::vector<uint32_t>(1920 * 1080); ///< 0xRRGGBB, rows from the top

    /// @return how many pixels differ
    size_t differences(const Picture& other) const;
    /// @return how many pixels have this colour
    size_t count(uint32_t colour) const;
    bool operator==(const Picture& other) const { return pixels == other.pixels; }
    bool operator!=(const Picture& other) const { return pixels != other.pixels; }
};

/// Takes pictures until nothing but a spinner has changed for a moment.
/// @return the last one
Picture settled(const std::function<Picture()>& take);

/// Reads an X window dump of a whole screen, 32 bits a pixel, lowest byte first; what lies beside @p screen
/// is black.
/// @throws std::runtime_error for one that is too short
Picture readWindowDump(const std::filesystem::path& file, const Geometry& screen);

/// Reads a portable pixmap, three bytes a pixel, of at most the size of a Picture; what lies beside it is
/// black.
/// @throws std::runtime_error for one that is too short or too large
Picture readPixmap(const std::filesystem::path& file);

} // namespace tv

#endif
