// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Where tags and entities of the toolkit's markup begin and end.
#pragma once

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <string_view>

namespace base {

// Both in bytes; what is longer is none.
inline constexpr std::size_t kLongestTag = 4096;
inline constexpr std::size_t kLongestEntity = 32;

/// @return the length of the entity ("&amp;", "&#x200e;") that @p text begins with, or 0
inline std::size_t entityLength(std::string_view text)
{
    if (text.empty() || text.front() != '&')
        return 0;
    const std::size_t limit = std::min(text.size(), kLongestEntity);
    std::size_t end = 1;
    while (end < limit && (std::isalnum(static_cast<unsigned char>(text[end])) || text[end] == '#'))
        ++end;
    return end > 1 && end < text.size() && text[end] == ';' ? end + 1 : 0;
}

/// @return the length of what stands between angle brackets at the beginning of @p text, these included, or
///         0; what another one opens in is none
inline std::size_t tagLength(std::string_view text)
{
    if (text.empty() || text.front() != '<')
        return 0;
    const std::size_t close = text.substr(0, kLongestTag).find_first_of("<>", 1);
    return close == std::string_view::npos || text[close] == '<' ? 0 : close + 1;
}

} // namespace base
