// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Compares pictures that were drawn by different processors. Usage: compare-pictures FOLDER FOLDER TOLERANCE
/// PATTERN. Each PNG file of the first must be in the second, of the same size, and no red, green or blue may
/// differ by more than the tolerance; those that match the pattern as a whole need not be the same. Prints
/// how far the pictures are apart; exit status 1 when one is too far, or none was compared.
/// Or: compare-pictures FILE FILE SIZE, for two that are to be the same but within one square of so many
/// pixels, in which something moves.
#include <Ecore_Evas.h>
#include <Evas.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <regex>
#include <vector>

namespace {

namespace fs = std::filesystem;

struct Picture {
    int width = 0;
    int height = 0;
    std::vector<unsigned char> bytes; ///< four a pixel; none when it cannot be read
};

Picture load(Evas* canvas, const fs::path& file)
{
    Picture picture;
    Evas_Object* image = evas_object_image_add(canvas);
    evas_object_image_file_set(image, file.c_str(), nullptr);
    evas_object_image_size_get(image, &picture.width, &picture.height);
    const auto* data = static_cast<const unsigned char*>(evas_object_image_data_get(image, EINA_FALSE));
    if (data && evas_object_image_load_error_get(image) == EVAS_LOAD_ERROR_NONE)
        picture.bytes.assign(data, data + static_cast<size_t>(picture.width) * picture.height * 4);
    evas_object_del(image);
    return picture;
}

/// @return the largest difference, or 256 for pictures that cannot be compared
int difference(const Picture& one, const Picture& other)
{
    if (one.bytes.empty() || one.width != other.width || one.bytes.size() != other.bytes.size())
        return 256;
    int largest = 0;
    for (size_t index = 0; index < one.bytes.size(); ++index)
        largest = std::max(largest, std::abs(one.bytes[index] - other.bytes[index]));
    return largest;
}

/// @return whether all that differs lies in one square
bool isSameButForSquare(const Picture& one, const Picture& other, int size)
{
    if (difference(one, other) > 255)
        return false;
    int left = one.width;
    int right = -1;
    int top = one.height;
    int bottom = -1;
    for (size_t index = 0; index < one.bytes.size(); ++index) {
        if (one.bytes[index] == other.bytes[index])
            continue;
        const int x = static_cast<int>(index / 4) % one.width;
        const int y = static_cast<int>(index / 4) / one.width;
        left = std::min(left, x);
        right = std::max(right, x);
        top = std::min(top, y);
        bottom = std::max(bottom, y);
    }
    printf("%d x %d pixels at %d, %d\n", right - left + 1, bottom - top + 1, left, top);
    return right - left < size && bottom - top < size;
}

int compare(
    Evas* canvas, const fs::path& folder, const fs::path& others, int tolerance, const std::regex& changing)
{
    int pictures = 0;
    int left = 0;
    int same = 0;
    int wrong = 0;
    int largest = 0;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.path().extension() != ".png")
            continue;
        const fs::path name = fs::relative(entry.path(), folder);
        if (std::regex_match(name.string(), changing)) {
            ++left;
            continue;
        }
        const int found = difference(load(canvas, entry.path()), load(canvas, others / name));
        ++pictures;
        same += found == 0;
        largest = std::max(largest, found);
        if (found > tolerance) {
            ++wrong;
            printf("%s: differs by %d\n", name.c_str(), found);
        }
    }
    printf("%d pictures compared: %d are the same, the largest difference is %d of 255, %d differ by more "
           "than %d; %d change with time\n",
        pictures, same, largest, wrong, tolerance, left);
    return pictures > 0 && wrong == 0 ? 0 : 1;
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 4 && argc != 5)
        return 2;
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 1); // which look for the bus
    ecore_evas_init();
    Ecore_Evas* window = ecore_evas_buffer_new(1, 1);
    Evas* canvas = ecore_evas_get(window);
    const int status = argc == 5
        ? compare(canvas, argv[1], argv[2], atoi(argv[3]), std::regex(argv[4]))
        : static_cast<int>(!isSameButForSquare(load(canvas, argv[1]), load(canvas, argv[2]), atoi(argv[3])));
    ecore_evas_free(window);
    ecore_evas_shutdown();
    return status;
}
