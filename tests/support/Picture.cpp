#include "Picture.h"

#include "Folders.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>
#include <string>

#include <endian.h>

namespace tv {

namespace {

/// Fields of a window dump's header: 32-bit words, highest byte first.
enum HeaderWord {
    kHeaderSize = 0,
    kByteOrder = 7,
    kBitsPerPixel = 11,
    kColours = 19,
    kHeaderWords = 25,
};

constexpr size_t kColourSize = 12;

uint32_t byteAt(const std::string& data, size_t offset)
{
    return static_cast<unsigned char>(data[offset]);
}

uint32_t headerWord(const std::string& data, size_t index)
{
    const size_t at = index * 4;
    return byteAt(data, at) << 24 | byteAt(data, at + 1) << 16 | byteAt(data, at + 2) << 8
        | byteAt(data, at + 3);
}

} // namespace

size_t Picture::differences(const Picture& other) const
{
    size_t result = 0;
    for (size_t i = 0; i < pixels.size(); ++i)
        result += pixels[i] != other.pixels[i];
    return result;
}

size_t Picture::count(uint32_t colour) const
{
    return static_cast<size_t>(std::count(pixels.begin(), pixels.end(), colour));
}

Picture readWindowDump(const std::filesystem::path& file)
{
    const std::string data = readFile(file);
    if (data.size() < size_t {kHeaderWords} * 4 || headerWord(data, kBitsPerPixel) != 32
        || headerWord(data, kByteOrder) != 0)
        throw std::runtime_error("not a window dump of a known kind: " + file.string());
    Picture picture;
    const size_t begin = headerWord(data, kHeaderSize) + headerWord(data, kColours) * kColourSize;
    const size_t size = picture.pixels.size() * sizeof(uint32_t);
    if (data.size() != begin + size)
        throw std::runtime_error("window dump of another size: " + file.string());
    std::memcpy(picture.pixels.data(), &data[begin], size);
    for (uint32_t& pixel : picture.pixels)
        pixel = le32toh(pixel) & 0xFFFFFF; // the fourth byte says nothing
    return picture;
}

} // namespace tv
