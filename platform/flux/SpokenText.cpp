// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/SpokenText.h"

#include "base/Handles.h"
#include "base/Markup.h"
#include "flux/Markup.h"

#include <Elementary.h>
#include <glib.h>

#include <algorithm>
#include <cctype>
#include <cstring>
#include <string_view>

namespace orbis::flux {

namespace {

/// Keeps letters on one line where a text is drawn.
constexpr char32_t kWordJoiner = 0x2060;

/// Codes have four digits or more.
constexpr size_t kLeastDigits = 4;

/// What ends a sentence, or tells by itself how it goes on; of all the scripts that texts may come in.
constexpr std::u32string_view kEnds = U".!?:…;,。！？：；，、।॥؟؛،۔׃";

/// What may stand behind such a mark without ending anything.
constexpr std::u32string_view kClosing = U")]}\"'»”’›）】」』";

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Bytes of letters outside of ASCII included.
bool belongsToWord(char c)
{
    return isalnum(static_cast<unsigned char>(c)) || (static_cast<unsigned char>(c) & 0x80U) != 0;
}

/// Marks, embeddings, overrides and isolates of the two directions of writing, and what only joins letters.
bool isUnspoken(gunichar c)
{
    return c == 0x061C || c == 0x200E || c == 0x200F || (c >= 0x202A && c <= 0x202E)
        || (c >= 0x2066 && c <= 0x2069) || c == kWordJoiner;
}

/// @return the first character, 0 for NUL and where the bytes are none
gunichar validCharacter(std::string_view text)
{
    const gunichar c = g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
    return c != static_cast<gunichar>(-1) && c != static_cast<gunichar>(-2) ? c : 0;
}

/// Calls @p take with each character of @p text, and the bytes that it is.
template <typename Take>
void forEachCharacter(std::string_view text, const Take& take)
{
    while (!text.empty()) {
        const gunichar c = validCharacter(text);
        const size_t length = c != 0 ? static_cast<size_t>(g_unichar_to_utf8(c, nullptr)) : 1;
        if (c != 0)
            take(c, text.substr(0, length));
        text.remove_prefix(length);
    }
}

/// A name that is empty leaves the blank in front of it.
void closeGaps(std::string& line)
{
    for (size_t at = 0; (at = line.find(' ', at)) != std::string::npos; ++at) {
        const bool isMark = at + 1 < line.size() && strchr(".,;:", line[at + 1]);
        if (isMark && (at + 2 == line.size() || line[at + 2] == ' '))
            line.erase(at, 1);
    }
}

/// @return whether a speech service makes a pause behind @p part, or should make none
bool endsItself(const std::string& part)
{
    const char* const begin = part.c_str();
    const char* const end = begin + part.size();
    for (const char* at = end; (at = g_utf8_find_prev_char(begin, at)) != nullptr;) {
        const gunichar c = validCharacter({at, static_cast<size_t>(end - at)});
        if (c != 0 && !isUnspoken(c) && kClosing.find(c) == std::u32string_view::npos)
            return kEnds.find(c) != std::u32string_view::npos;
    }
    return false;
}

} // namespace

std::string plainText(const std::string& markup)
{
    // The toolkit's conversion drops everything behind an ampersand that begins no entity.
    const std::string drawn = displayMarkup(markup);
    std::string convertible;
    for (std::string_view rest = drawn; !rest.empty();) {
        const bool isLone = rest.front() == '&' && base::entityLength(rest) == 0;
        convertible += isLone ? "&amp;" : std::string(1, rest.front());
        rest.remove_prefix(1);
    }
    const base::MallocStr plain {elm_entry_markup_to_utf8(convertible.c_str())};
    return plain ? plain.get() : "";
}

std::string spokenLine(const std::string& text)
{
    std::string line;
    bool isApart = false; // a blank is due before the next character
    forEachCharacter(text, [&](gunichar c, std::string_view bytes) {
        if (isUnspoken(c))
            return;
        if (g_unichar_isspace(c) || g_unichar_iscntrl(c)) {
            isApart = true;
            return;
        }
        if (isApart && !line.empty())
            line += ' ';
        isApart = false;
        line.append(bytes);
    });
    closeGaps(line);
    return line;
}

std::string withDigitsApart(const std::string& text)
{
    std::string result;
    for (size_t i = 0; i < text.size();) {
        size_t end = i;
        while (end < text.size() && isDigit(text[end]))
            ++end;
        const bool isAlone =
            (i == 0 || !belongsToWord(text[i - 1])) && (end == text.size() || !belongsToWord(text[end]));
        if (end - i < kLeastDigits || !isAlone) {
            end = std::max(end, i + 1);
            result.append(text, i, end - i);
        } else {
            for (size_t digit = i; digit < end; ++digit)
                result.append(digit > i ? " " : "").append(1, text[digit]);
        }
        i = end;
    }
    return result;
}

std::string spelled(const std::string& code)
{
    std::string result;
    bool isGroupBegun = true; // nothing stands between here and the character before
    forEachCharacter(spokenLine(code), [&](gunichar c, std::string_view bytes) {
        if (c == ' ') {
            result += ", ";
            isGroupBegun = true;
            return;
        }
        if (!isGroupBegun && !g_unichar_ismark(c))
            result += ' ';
        isGroupBegun = false;
        result.append(bytes);
    });
    return result;
}

std::string sentences(const std::vector<std::string>& parts)
{
    std::string result;
    for (const std::string& part : parts) {
        if (!hasWords(part))
            continue;
        result.append(result.empty() ? "" : " ").append(part).append(endsItself(part) ? "" : ".");
    }
    return result;
}

bool hasWords(const std::string& part)
{
    bool has = false;
    forEachCharacter(part, [&](gunichar c, std::string_view) {
        has = has || !(g_unichar_isspace(c) || g_unichar_ispunct(c) || g_unichar_ismark(c) || isUnspoken(c));
    });
    return has;
}

} // namespace orbis::flux
