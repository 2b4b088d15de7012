// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Quoting.h"

#include "EventLog.h"
#include "Unescape.h"

#include <glib.h>

#include <algorithm>
#include <string_view>

namespace DaemonSim {

namespace {

bool isControl(char character)
{
    const auto byte = static_cast<unsigned char>(character);
    return byte < 0x20 || byte == 0x7f;
}

bool isPlain(char character)
{
    constexpr std::string_view kHarmless = "_./@:+-,%=";
    return g_ascii_isalnum(character) || kHarmless.find(character) != std::string_view::npos;
}

/// Puts the text between single quotes, the one way in which nothing in it means anything.
std::string singleQuoted(std::string_view text)
{
    std::string result = "'";
    for (const char character : text) {
        if (character == '\'')
            result += "'\\'";
        result += character;
    }
    return result + '\'';
}

/// @param begin  of what stands in $'...'. @return where its quote ends, npos when it does not
size_t endOfDollarQuote(const std::string& text, size_t begin)
{
    for (size_t index = begin; index < text.size(); ++index) {
        if (text[index] == '\\')
            ++index;
        else if (text[index] == '\'')
            return index;
    }
    return std::string::npos;
}

/// Where the reading of a line is.
enum class Inside { Nothing, Single, Double };

Inside next(Inside inside, char character)
{
    switch (inside) {
    case Inside::Single:
        return character == '\'' ? Inside::Nothing : inside;
    case Inside::Double:
        return character == '"' ? Inside::Nothing : inside;
    default:
        return character == '\'' ? Inside::Single : character == '"' ? Inside::Double : inside;
    }
}

} // namespace

std::optional<std::string> withoutDollarQuotes(const std::string& text)
{
    std::string result;
    Inside inside = Inside::Nothing;
    for (size_t index = 0; index < text.size(); ++index) {
        if (inside == Inside::Nothing && text.compare(index, 2, "$'") == 0) {
            const size_t end = endOfDollarQuote(text, index + 2);
            if (end == std::string::npos)
                return std::nullopt;
            const auto meant = unescaped(std::string_view(text).substr(index + 2, end - index - 2), "\\'");
            if (!meant)
                return std::nullopt;
            result += singleQuoted(*meant);
            index = end;
            continue;
        }
        if (inside != Inside::Single && text[index] == '\\' && index + 1 < text.size())
            result += text[index++];
        else
            inside = next(inside, text[index]);
        result += text[index];
    }
    return result;
}

std::string toWord(const std::string& text)
{
    if (!text.empty() && std::all_of(text.begin(), text.end(), isPlain))
        return text;
    if (std::none_of(text.begin(), text.end(), isControl))
        return EventLog::quoted(text);
    std::string word = "$'";
    for (const char character : text) {
        char code[5] = "";
        if (isControl(character))
            word.append(code,
                static_cast<size_t>(g_snprintf(code, sizeof code, "\\x%02x",
                    static_cast<unsigned>(static_cast<unsigned char>(character)))));
        else
            word.append(character == '\'' || character == '\\' ? "\\" : "").append(1, character);
    }
    return word + '\'';
}

} // namespace DaemonSim
