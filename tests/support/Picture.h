/// What a screen shows, pixel by pixel.
#ifndef TESSEL_TESTS_PICTURE_H
#define TESSEL_TESTS_PICTURE_H

#include <cstdint>
#include <filesystem>
#include <vector>

namespace tv {

struct Picture {
    std::vector<uint32_t> pixels = std::vector<uint32_t>(1920 * 1080); ///< 0xRRGGBB, rows from the top

    /// @return how many pixels differ
    size_t differences(const Picture& other) const;
    /// @return how many pixels have exactly this colour
    size_t count(uint32_t colour) const;
    bool operator==(const Picture& other) const { return pixels == other.pixels; }
    bool operator!=(const Picture& other) const { return pixels != other.pixels; }
};

/// Reads an X window dump of a whole screen, 32 bits a pixel, lowest byte first.
/// @throws std::runtime_error for anything else
Picture readWindowDump(const std::filesystem::path& file);

} // namespace tv

#endif
