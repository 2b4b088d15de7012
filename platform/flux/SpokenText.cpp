#include "flux/SpokenText.h"

#include <algorithm>
#include <cctype>
#include <string_view>

namespace orbis::flux {

namespace {

/// Codes have four digits or more.
constexpr size_t kLeastDigits = 4;

/// Marks, embeddings, overrides and isolates of the two directions of writing.
constexpr std::string_view kDirectionMarks[] = {"\u061c", "\u200e", "\u200f", "\u202a", "\u202b", "\u202c",
    "\u202d", "\u202e", "\u2066", "\u2067", "\u2068", "\u2069"};

size_t markLength(std::string_view text)
{
    for (const std::string_view mark : kDirectionMarks) {
        if (text.substr(0, mark.size()) == mark)
            return mark.size();
    }
    return 0;
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// Bytes of letters outside of ASCII included.
bool belongsToWord(char c)
{
    return isalnum(static_cast<unsigned char>(c)) || (static_cast<unsigned char>(c) & 0x80U) != 0;
}

} // namespace

std::string spokenLine(const std::string& text)
{
    std::string line;
    for (size_t i = 0; i < text.size();) {
        if (const size_t length = markLength(std::string_view {text}.substr(i)); length > 0) {
            i += length;
            continue;
        }
        const char c = text[i++];
        line += c == '\n' || c == '\r' ? ' ' : c;
    }
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

} // namespace orbis::flux
