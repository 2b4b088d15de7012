// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "log/Escape.h"

#include <cstdint>

namespace orbis::log {

namespace {

struct Character {
    uint32_t code;
    size_t length; ///< bytes; 0 for what is no UTF-8
};

Character characterOf(std::string_view text)
{
    const auto byte = [&](size_t i) { return static_cast<uint32_t>(static_cast<unsigned char>(text[i])); };
    const uint32_t first = byte(0);
    if (first < 0x80U)
        return {first, 1};
    const size_t length = first >= 0xF0U ? 4 : first >= 0xE0U ? 3 : 2;
    if (first < 0xC2U || first > 0xF4U || text.size() < length)
        return {0, 0};
    uint32_t code = first & (0x7FU >> length);
    for (size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0U) != 0x80U)
            return {0, 0};
        code = code << 6U | (byte(i) & 0x3FU);
    }
    constexpr uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000}; // a shorter form was due below
    const bool isSurrogate = code >= 0xD800U && code <= 0xDFFFU;
    return code < kLeast[length] || code > 0x10FFFFU || isSurrogate ? Character {0, 0}
                                                                    : Character {code, length};
}

bool isControl(uint32_t code)
{
    return code < 0x20U || (code >= 0x7FU && code < 0xA0U) || code == 0x2028U || code == 0x2029U;
}

/// @param digits  how many to write, at most four
void appendNumber(std::string& result, char letter, uint32_t number, int digits)
{
    constexpr char kDigits[] = "0123456789abcdef";
    result.append(1, '\\').append(1, letter);
    while (digits-- > 0)
        result += kDigits[number >> (4U * static_cast<unsigned int>(digits)) & 0xFU];
}

/// @param code  at most U+2029
void appendControl(std::string& result, uint32_t code)
{
    switch (code) {
    case '\n':
        result += "\\n";
        break;
    case '\r':
        result += "\\r";
        break;
    case '\t':
        result += "\\t";
        break;
    default:
        code < 0x80U ? appendNumber(result, 'x', code, 2) : appendNumber(result, 'u', code, 4);
    }
}

} // namespace

std::string escaped(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Character character = characterOf(text);
        if (character.length == 0)
            appendNumber(result, 'x', static_cast<unsigned char>(text[0]), 2);
        else if (isControl(character.code))
            appendControl(result, character.code);
        else
            result.append(text.substr(0, character.length));
        text.remove_prefix(character.length == 0 ? 1 : character.length);
    }
    return result;
}

} // namespace orbis::log
