// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Texts from outside, which may be of any length.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

namespace TesselUI {

/// How much of such a text is kept and logged, bytes: far more than any popup holds, and little enough that
/// neither the log nor the memory grows with what a caller sends.
constexpr std::size_t kLongestText = 4096;

/// @return the text's beginning of at most kLongestText bytes, cut between two characters (UTF-8); refers to
///         the argument
inline std::string_view bounded(std::string_view text)
{
    if (text.size() <= kLongestText)
        return text;
    constexpr std::size_t kLongestTail = 3; // of a character
    std::size_t end = kLongestText;
    while (end > kLongestText - kLongestTail && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return text.substr(0, end);
}

/// The same; null counts as empty.
inline std::string_view bounded(const char* text)
{
    return text ? bounded(std::string_view(text, strnlen(text, kLongestText + 1))) : std::string_view();
}

} // namespace TesselUI
