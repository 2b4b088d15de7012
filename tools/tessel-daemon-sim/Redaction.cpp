// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Redaction.h"

#include <glib.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

namespace DaemonSim {

namespace {

/// So many neighbours have the same number of bytes in UTF-8.
constexpr gunichar kRow = 64;

/// Scripts and pictures with so many characters that even the neighbourhood of one tells something: all of
/// them become those of one row.
struct Large {
    gunichar first;
    gunichar last;
    gunichar row;
};
constexpr std::array<Large, 4> kLarge = {{
    {0x3400, 0x9fff, 0x4e00}, // Chinese characters
    {0xac00, 0xd7a3, 0xac00}, // Korean syllables
    {0x2190, 0x2bff, 0x2600}, // signs
    {0x1f000, 0x1faff, 0x1f600}, // emoji
}};

/// Flags are pairs of these; any pair that is a flag will do.
constexpr gunichar kFirstFlagLetter = 0x1f1e6;
constexpr gunichar kLastFlagLetter = 0x1f1ff;
constexpr std::array<gunichar, 2> kFlag = {0x1f1ea, 0x1f1fa};

/// The five that colour the skin of the emoji before; they are no pictures of their own.
bool isSkinColour(gunichar character)
{
    return character >= 0x1f3fb && character <= 0x1f3ff;
}

bool isKept(gunichar character)
{
    const GUnicodeType type = g_unichar_type(character);
    const bool isPicture = type == G_UNICODE_OTHER_SYMBOL && character >= 0x80;
    return isSkinColour(character)
        || !(g_unichar_isalpha(character) || g_unichar_isdigit(character) || isPicture);
}

gunichar rowOf(gunichar character)
{
    const auto* const large = std::find_if(kLarge.begin(), kLarge.end(),
        [=](const Large& each) { return character >= each.first && character <= each.last; });
    return large == kLarge.end() ? character - character % kRow : large->row;
}

/// @param number  which of those that may stand there
gunichar replacementFor(gunichar character, size_t number)
{
    if (character >= kFirstFlagLetter && character <= kLastFlagLetter)
        return kFlag[number % kFlag.size()];
    const gunichar row = rowOf(character);
    const GUnicodeType type = g_unichar_type(character);
    const GUnicodeScript script = g_unichar_get_script(character);
    std::array<gunichar, kRow> like {};
    size_t count = 0;
    for (gunichar other = row; other < row + kRow; ++other) {
        if (g_unichar_type(other) == type && g_unichar_get_script(other) == script)
            like[count++] = other;
    }
    return count == 0 ? character : like[number % count];
}

void append(std::string& text, gunichar character)
{
    char bytes[6] = "";
    text.append(bytes, static_cast<size_t>(g_unichar_to_utf8(character, bytes)));
}

/// @return how many bytes of the text are markup or an entity: "<br>", "</color>", "&amp;", "&#x200e;"; 0 for
/// none
size_t markupLength(std::string_view text)
{
    constexpr size_t kLongestEntity = 12;
    if (text.front() == '<' && text.size() > 1 && (g_ascii_isalpha(text[1]) || text[1] == '/')) {
        const size_t end = text.find_first_of("<>", 1);
        return end != std::string_view::npos && text[end] == '>' ? end + 1 : 0;
    }
    if (text.front() != '&')
        return 0;
    const size_t end = text.find_first_of("; &<", 1);
    return end != std::string_view::npos && text[end] == ';' && end <= kLongestEntity ? end + 1 : 0;
}

/// The names that a request's members have, and its pages: they say nothing about anybody.
bool isWordOfRequests(std::string_view text)
{
    constexpr std::array<std::string_view, 12> kWords = {"page", "mobilename", "pin", "ssid", "account",
        "mobileDetection", "wifi", "sso", "tnc", "success", "disconnect", ""};
    return std::find(kWords.begin(), kWords.end(), text) != kWords.end();
}

/// @param begin  behind the opening quote. @return where the closing one is, or the end
size_t endOfString(const std::string& json, size_t begin)
{
    size_t index = begin;
    while (index < json.size() && json[index] != '"')
        index += json[index] == '\\' ? 2 : 1;
    return std::min(index, json.size());
}

/// @param begin  where the backslash is, or the end. @return behind the whole character that follows it
size_t endOfEscape(const std::string& text, size_t begin)
{
    if (begin + 1 >= text.size())
        return text.size();
    const char* const escaped = text.c_str() + begin + 1;
    return std::min(begin + 1 + static_cast<size_t>(g_utf8_next_char(escaped) - escaped), text.size());
}

constexpr size_t kEscapeDigits = 4;

/// What was cut, or written by hand, may have other characters there.
bool isEscapeNumber(std::string_view digits)
{
    return digits.size() == kEscapeDigits
        && std::all_of(digits.begin(), digits.end(), [](char digit) { return g_ascii_isxdigit(digit); });
}

/// The number of an escape \uHHHH in the place of @p digits; half of a pair becomes that half of another.
std::string escapedReplacement(const std::string& digits, size_t number)
{
    const auto code = static_cast<gunichar>(strtoul(digits.c_str(), nullptr, 16));
    if (code >= 0xd800 && code <= 0xdfff)
        return code < 0xdc00 ? "d83d" : "de42";
    if (isKept(code))
        return digits;
    char text[12] = "";
    snprintf(text, sizeof text, "%04x", replacementFor(code, number) & 0xffffU);
    return text;
}

} // namespace

std::string Redaction::text(const std::string& text)
{
    const auto [known, isNew] = m_known.emplace(text, "");
    if (!isNew)
        return known->second;
    // Texts that differ stay different, as far as that goes.
    size_t number = m_known.size() - 1;
    std::string result;
    for (const char* next = text.c_str(); *next != '\0';) {
        const size_t markup = markupLength(next);
        const gunichar character = g_utf8_get_char(next);
        const char* const end = markup > 0 ? next + markup : g_utf8_next_char(next);
        if (markup > 0 || isKept(character))
            result.append(next, end);
        else
            append(result, replacementFor(character, number++));
        next = end;
    }
    return known->second = result;
}

/// @param inside  of a string's quotes: what an escape stands for has its kind, too
std::string Redaction::jsonString(const std::string& inside)
{
    std::string result;
    size_t number = 0;
    for (size_t index = 0; index < inside.size();) {
        const size_t escape = std::min(inside.find('\\', index), inside.size());
        result += text(inside.substr(index, escape - index));
        index = endOfEscape(inside, escape);
        result += inside.substr(escape, index - escape);
        const std::string digits = inside.substr(index, kEscapeDigits);
        if (index - escape == 2 && inside[index - 1] == 'u' && isEscapeNumber(digits)) {
            result += escapedReplacement(digits, number++);
            index += kEscapeDigits;
        }
    }
    return result;
}

std::string Redaction::json(const std::string& request)
{
    constexpr size_t kMostPunctuation = 16; // between two strings, where somebody wrote JSON
    std::string result;
    for (size_t index = 0; index < request.size();) {
        const bool isString = request[index] == '"';
        const size_t begin = isString ? index + 1 : index;
        const size_t end =
            isString ? endOfString(request, begin) : std::min(request.find('"', begin), request.size());
        const std::string part = request.substr(begin, end - begin);
        const bool isHarmless =
            part.find_first_of("0123456789") == std::string::npos && part.size() < kMostPunctuation;
        if (isString)
            result.append("\"")
                .append(isWordOfRequests(part) ? part : jsonString(part))
                .append(end < request.size() ? "\"" : "");
        else
            result += isHarmless ? part : text(part);
        index = end + (isString ? 1 : 0);
    }
    return result;
}

} // namespace DaemonSim
