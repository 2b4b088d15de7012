// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Markup.h"

#include "base/Markup.h"
#include "flux/Contrast.h"

#include <algorithm>
#include <cctype>
#include <string_view>
#include <vector>

namespace orbis::flux {

namespace {

/// A card holds some three hundred characters of a text, twice as many narrow ones in a wide card.
constexpr size_t kMostCharacters = 600;
constexpr size_t kMostTags = 64;

/// Of text against what is behind it.
constexpr double kLeastContrast = 7.0;

/// The television's own; another name may be a file or a pattern that the toolkit would follow.
constexpr std::string_view kFamilies[] = {"NorvaleSans-500", "Kivo400"};

/// Names of the toolkit's tags and attributes. Whatever else stands between angle brackets is no markup.
constexpr std::string_view kToolkits[] = {"align", "b", "backing", "backing_color", "br", "color", "ellipsis",
    "font", "font_fallbacks", "font_size", "font_source", "font_style", "font_weight", "font_width",
    "gfx_filter", "glow2_color", "glow_color", "i", "item", "lang", "left_margin", "linefill", "linegap",
    "linerelgap", "linerelsize", "linesize", "margin", "outline_color", "password", "ps", "replacement_char",
    "right_margin", "shadow_color", "strikethrough", "strikethrough_color", "style", "tab", "tabstops", "u",
    "underline", "underline2_color", "underline_color", "underline_dash_color", "underline_dash_gap",
    "underline_dash_width", "underline_height", "valign", "wrap"};

template <size_t Size>
bool contains(const std::string_view (&names)[Size], std::string_view name)
{
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

std::string_view nameOf(std::string_view word)
{
    return word.substr(0, word.find_first_of(" =/"));
}

/// @return whether @p word is the attribute @p name; @p value is then what is behind its "="
bool isAttribute(std::string_view word, std::string_view name, std::string_view& value)
{
    if (word.size() <= name.size() || word.substr(0, name.size()) != name || word[name.size()] != '=')
        return false;
    value = word.substr(name.size() + 1);
    return true;
}

/// @return where the word that begins at @p begin ends: at a blank that no quotes hold
size_t endOfWord(std::string_view tag, size_t begin)
{
    bool isQuoted = false;
    for (size_t i = begin; i < tag.size(); ++i) {
        if (tag[i] == '\'' && i > begin) // one that begins a word quotes nothing
            isQuoted = !isQuoted;
        else if (tag[i] == ' ' && !isQuoted)
            return i;
    }
    return tag.size();
}

bool isContinuation(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xC0U) == 0x80U;
}

/// @return the bytes of the character or entity that @p text begins with; one for what is no UTF-8
size_t lengthOfCharacter(std::string_view text)
{
    const auto first = static_cast<unsigned char>(text.front());
    if (first == '&')
        return std::max<size_t>(base::entityLength(text), 1);
    const size_t length = first >= 0xF0U ? 4 : first >= 0xE0U ? 3 : first >= 0xC0U ? 2 : 1;
    for (size_t i = 1; i < length; ++i) {
        if (i >= text.size() || !isContinuation(text[i]))
            return 1;
    }
    return length;
}

class Filter {
public:
    Filter(std::string_view text, const TextColours& colours)
        : m_rest(text)
        , m_colours(colours)
    {
    }

    std::string run()
    {
        while (!m_rest.empty() && (takeTag() || takeCharacter())) { }
        return std::move(m_result);
    }

private:
    struct Opened {
        std::string_view name;
        bool isKept;
    };

    /// @return false when there is no tag of the toolkit
    bool takeTag()
    {
        const size_t length = base::tagLength(m_rest);
        if (length == 0)
            return false;
        const std::string_view tag = m_rest.substr(1, length - 2);
        const bool isEnd = !tag.empty() && tag.front() == '/';
        const std::string_view name = nameOf(tag.substr(isEnd ? 1 : 0));
        if (!contains(kToolkits, name))
            return false;
        m_rest.remove_prefix(length);
        if (m_tags == kMostTags)
            return true;
        ++m_tags;
        if (isEnd)
            end(name);
        else if (name == "br" || name == "ps")
            m_result.append("<").append(tag == "br/" || tag == "ps/" ? tag : name).append(">");
        else
            m_opened.push_back({name, begin(name, tag)});
        return true;
    }

    /// @return whether something of the tag is left
    bool begin(std::string_view name, std::string_view tag)
    {
        std::string words;
        if (name == "b" || name == "i") {
            words = name;
        } else if (name == "font" || name == "color" || name == "align") {
            for (size_t at = 0; at < tag.size();) {
                const size_t end = endOfWord(tag, at);
                const std::string word = kept(tag.substr(at, end - at));
                if (!word.empty())
                    words.append(word).append(end < tag.size() ? " " : "");
                at = end + 1;
            }
            if (!words.empty() && nameOf(words) != name) // its end must find it
                words.insert(0, std::string(name) + ' ');
        }
        if (words.empty())
            return false;
        m_result.append("<").append(words).append(">");
        return true;
    }

    void end(std::string_view name)
    {
        const auto latest = std::find_if(
            m_opened.rbegin(), m_opened.rend(), [&](const Opened& opened) { return opened.name == name; });
        if (latest == m_opened.rend())
            return;
        if (latest->isKept)
            m_result.append("</").append(name).append(">");
        m_opened.erase(std::next(latest).base());
    }

    /// @return what an attribute may be, or ""
    std::string kept(std::string_view word) const
    {
        std::string_view value;
        const bool isColour = isAttribute(word, "color", value);
        if (isColour && !m_colours.accent.empty())
            return "color=" + m_colours.accent;
        const bool isTaken = isColour          ? canBeRead(value)
            : isAttribute(word, "font", value) ? contains(kFamilies, value)
                                               : isAttribute(word, "align", value) && value == "center";
        return isTaken ? std::string(word) : "";
    }

    bool canBeRead(std::string_view colour) const
    {
        const auto text = colourOfMarkup(colour);
        const auto ground = colourOfTheme(m_colours.ground);
        return text && ground && contrastOf(*text, *ground) >= kLeastContrast;
    }

    /// @return false when no more is to be drawn
    bool takeCharacter()
    {
        if (m_characters == kMostCharacters) {
            m_result += "…";
            return false;
        }
        ++m_characters;
        const size_t length = lengthOfCharacter(m_rest);
        if (m_rest.front() == '<')
            m_result += "&lt;";
        else
            m_result.append(m_rest.substr(0, length));
        m_rest.remove_prefix(length);
        return true;
    }

    std::string_view m_rest;
    const TextColours& m_colours;
    std::string m_result;
    std::vector<Opened> m_opened;
    size_t m_characters = 0;
    size_t m_tags = 0;
};

/// A name that is nothing but ends of lines would be nothing to see: it is shown as it is written.
/// @return whether @p markup is no more than that
bool isOnlyLineEnds(std::string_view markup)
{
    bool isAny = false;
    while (!markup.empty()) {
        const size_t length = base::tagLength(markup);
        const std::string_view name = length > 0 ? nameOf(markup.substr(1, length - 2)) : "";
        if (markup.front() != ' ' && name != "br" && name != "ps")
            return false;
        isAny = isAny || length > 0;
        markup.remove_prefix(std::max<size_t>(length, 1));
    }
    return isAny;
}

std::string asWritten(const std::string& markup)
{
    std::string result;
    for (const char c : markup)
        result.append(c == '<' ? "&lt;" : std::string(1, c));
    return result;
}

} // namespace

std::string displayMarkup(const std::string& markup, const TextColours& colours)
{
    std::string shown = Filter(markup, colours).run();
    return isOnlyLineEnds(shown) ? asWritten(shown) : shown;
}

} // namespace orbis::flux
