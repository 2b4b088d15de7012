// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Scripts.h"

#include <Eina.h>

#include <algorithm>
#include <iterator>

namespace gallery {

namespace {

struct Range {
    uint32_t first;
    uint32_t last;
    Script script;
};

constexpr Range kScripts[] = {
    {'A', 'Z', Script::Latin},
    {'a', 'z', Script::Latin},
    {0xC0, 0x24F, Script::Latin},
    {0x400, 0x52F, Script::Cyrillic},
    {0x5D0, 0x5EA, Script::Hebrew},
    {0x620, 0x64A, Script::Arabic},
    {0x66E, 0x6D3, Script::Arabic},
    {0x6FA, 0x6FF, Script::Arabic},
    {0x750, 0x77F, Script::Arabic},
    {0x900, 0x963, Script::Devanagari},
    {0x970, 0x97F, Script::Devanagari},
    {0x1100, 0x11FF, Script::Hangul},
    {0x1E00, 0x1EFF, Script::Latin},
    {0x3130, 0x318F, Script::Hangul},
    {0x3400, 0x4DBF, Script::Han},
    {0x4E00, 0x9FFF, Script::Han},
    {0xAC00, 0xD7A3, Script::Hangul},
    {0xFB50, 0xFDFF, Script::Arabic},
    {0xFE70, 0xFEFC, Script::Arabic},
};

bool isIn(uint32_t character, uint32_t first, uint32_t last)
{
    return character >= first && character <= last;
}

bool isBlank(uint32_t character)
{
    return character <= 0x20 || character == 0xA0 || isIn(character, 0x2000, 0x200A) || character == 0x202F
        || character == 0x205F || character == 0x3000 || character == 0x2028 || character == 0x2029;
}

uint32_t nextCharacter(const std::string& text, int& at)
{
    const Eina_Unicode next = eina_unicode_utf8_next_get(text.c_str(), &at);
    return static_cast<uint32_t>(next);
}

std::string joined(const std::string& text, const char* blank)
{
    std::string result;
    bool isBetween = false;
    for (int at = 0; text[static_cast<size_t>(at)] != '\0';) {
        const int begin = at;
        const uint32_t character = nextCharacter(text, at);
        if (isBlank(character)) {
            isBetween = true;
        } else if (!isInvisible(character)) {
            if (isBetween && !result.empty())
                result += blank;
            isBetween = false;
            result.append(text, static_cast<size_t>(begin), static_cast<size_t>(at - begin));
        }
    }
    return result;
}

} // namespace

Script scriptOf(uint32_t character)
{
    const auto* found = std::find_if(std::begin(kScripts), std::end(kScripts),
        [&](const Range& range) { return isIn(character, range.first, range.last); });
    return found == std::end(kScripts) || character == 0xD7 || character == 0xF7 ? Script::None
                                                                                 : found->script;
}

bool isRightToLeft(Script script)
{
    return script == Script::Arabic || script == Script::Hebrew;
}

bool isInvisible(uint32_t character)
{
    return isBlank(character) || isIn(character, 0x7F, 0x9F) || character == 0xAD || character == 0x61C
        || isIn(character, 0x200B, 0x200F) || isIn(character, 0x202A, 0x202E)
        || isIn(character, 0x2060, 0x206F) || isIn(character, 0xFE00, 0xFE0F) || character == 0xFEFF;
}

bool isEmoji(uint32_t character)
{
    return character == 0x200D || character == 0xFE0F || isIn(character, 0x2600, 0x27BF)
        || character >= 0x1F000;
}

bool isMark(uint32_t character)
{
    return isIn(character, 0x300, 0x36F) || isIn(character, 0x591, 0x5C7) || isIn(character, 0x610, 0x61A)
        || isIn(character, 0x64B, 0x65F) || character == 0x670 || isIn(character, 0x6D6, 0x6DC)
        || isIn(character, 0x6DF, 0x6E8) || isIn(character, 0x6EA, 0x6ED) || isIn(character, 0x900, 0x903)
        || isIn(character, 0x93A, 0x94F) || isIn(character, 0x1AB0, 0x1AFF)
        || isIn(character, 0x20D0, 0x20FF);
}

bool isPunctuation(uint32_t character)
{
    return isIn(character, 0x21, 0x2F) || isIn(character, 0x3A, 0x40) || isIn(character, 0x5B, 0x60)
        || isIn(character, 0x7B, 0x7E) || character == 0xAB || character == 0xBB || character == 0x60C
        || character == 0x61B || character == 0x61F || character == 0x6D4 || character == 0x964
        || isIn(character, 0x2010, 0x2027) || isIn(character, 0x2030, 0x205E)
        || isIn(character, 0x3001, 0x3011) || isIn(character, 0xFF01, 0xFF0F)
        || isIn(character, 0xFF1A, 0xFF20);
}

bool allowsBreakAfter(uint32_t character)
{
    return character == '-' || character == '/' || character == 0xAD || isIn(character, 0x2010, 0x2014)
        || character == 0x200B || isIn(character, 0x3001, 0x3011) || isIn(character, 0xFF01, 0xFF20)
        || scriptOf(character) == Script::Han;
}

uint32_t firstCharacter(const std::string& text)
{
    int index = 0;
    return text.empty() ? 0 : nextCharacter(text, index);
}

std::string readable(const std::string& text)
{
    return joined(text, " ");
}

bool partsWords(const std::string& content)
{
    return readable("a" + content + "a") != "aa";
}

std::string withoutMarksAround(const std::string& word)
{
    size_t begin = 0;
    size_t end = 0;
    for (int at = 0; word[static_cast<size_t>(at)] != '\0';) {
        const auto from = static_cast<size_t>(at);
        const uint32_t character = nextCharacter(word, at);
        if (isPunctuation(character))
            continue;
        begin = end == 0 ? from : begin;
        end = static_cast<size_t>(at);
    }
    return word.substr(begin, end - begin);
}

std::string withoutBlanks(const std::string& text)
{
    return joined(text, "");
}

std::string validUtf8(const char* text)
{
    std::string result;
    for (int at = 0; text[at] != '\0';) {
        const int begin = at;
        const Eina_Unicode character = eina_unicode_utf8_next_get(text, &at);
        // The library gives each broken byte a place of its own.
        const bool isBroken = character >= 0xDC80 && character <= 0xDCFF;
        result += isBroken ? "\uFFFD" : std::string(text + begin, static_cast<size_t>(at - begin));
    }
    return result;
}

} // namespace gallery
