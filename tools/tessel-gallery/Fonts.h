/// The fonts that texts are drawn with.
#pragma once

#include <cstdint>
#include <string>

namespace gallery {

/// @return the first character of @p text that none of the machine's fonts for the program's family has, 0
/// for
///         none; marks that are not drawn need no font
uint32_t firstWithoutFont(const std::string& text);

} // namespace gallery
