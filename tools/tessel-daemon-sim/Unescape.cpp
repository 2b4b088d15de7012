// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Unescape.h"

#include <glib.h>

namespace DaemonSim {

namespace {

/// One escape and what it means; a length of 0: it is none.
struct Escape {
    size_t length = 0; ///< with its backslash
    std::string meaning {};
};

/// @return the number, or 0, which is none that anybody means
uint32_t hexNumber(std::string_view digits, size_t count)
{
    uint32_t number = 0;
    if (digits.size() < count)
        return 0;
    for (size_t index = 0; index < count; ++index) {
        const int digit = g_ascii_xdigit_value(digits[index]);
        if (digit < 0)
            return 0;
        number = number << 4U | static_cast<uint32_t>(digit);
    }
    return number;
}

Escape byteEscape(std::string_view digits)
{
    const uint32_t byte = hexNumber(digits, 2);
    return byte == 0 ? Escape {} : Escape {4, std::string(1, static_cast<char>(byte))};
}

Escape characterEscape(std::string_view digits)
{
    const uint32_t code = hexNumber(digits, 4);
    if (code == 0 || !g_unichar_validate(code))
        return {};
    char bytes[6] = "";
    const gint length = g_unichar_to_utf8(code, bytes);
    return {6, std::string(bytes, static_cast<size_t>(length))};
}

/// @param text  begins with a backslash
Escape escapeAt(std::string_view text, std::string_view others)
{
    if (text.size() < 2)
        return {};
    const char letter = text[1];
    if (others.find(letter) != std::string_view::npos)
        return {2, std::string(1, letter)};
    switch (letter) {
    case 'n':
        return {2, "\n"};
    case 'r':
        return {2, "\r"};
    case 't':
        return {2, "\t"};
    case 'x':
        return byteEscape(text.substr(2));
    case 'u':
        return characterEscape(text.substr(2));
    default:
        return {};
    }
}

} // namespace

std::optional<std::string> unescaped(std::string_view text, std::string_view others)
{
    std::string result;
    while (!text.empty()) {
        const Escape escape = text.front() == '\\' ? escapeAt(text, others) : Escape {};
        if (text.front() == '\\' && escape.length == 0)
            return std::nullopt;
        result += escape.length > 0 ? escape.meaning : std::string(1, text.front());
        text.remove_prefix(escape.length > 0 ? escape.length : 1);
    }
    return result;
}

std::string unescapedLog(std::string_view text, size_t& count)
{
    std::string result;
    while (!text.empty()) {
        const Escape escape = text.front() == '\\' ? escapeAt(text, "") : Escape {};
        if (escape.length > 0)
            ++count;
        result += escape.length > 0 ? escape.meaning : std::string(1, text.front());
        text.remove_prefix(escape.length > 0 ? escape.length : 1);
    }
    return result;
}

} // namespace DaemonSim
