#include "flux/Markup.h"

#include <algorithm>
#include <string_view>

namespace orbis::flux {

namespace {

/// Names of tags and attributes that a widget does not leave to its texts.
constexpr std::string_view kWidgetsOwn[] = {"ellipsis", "font_size", "font_width", "item", "left_margin",
    "linefill", "linegap", "linerelgap", "linerelsize", "linesize", "margin", "password", "replacement_char",
    "right_margin", "tabstops", "valign", "wrap"};

/// Those that it does leave to them. Whatever else stands between angle brackets is no markup of the toolkit.
constexpr std::string_view kTexts[] = {"align", "b", "backing", "backing_color", "br", "color", "font",
    "font_fallbacks", "font_source", "font_style", "font_weight", "glow_color", "i", "lang", "outline_color",
    "ps", "shadow_color", "strikethrough", "strikethrough_color", "style", "tab", "u", "underline",
    "underline_color"};

constexpr std::string_view kColour = "color=";

std::string_view nameOf(std::string_view word)
{
    return word.substr(0, word.find_first_of(" =/"));
}

template <size_t Size>
bool contains(const std::string_view (&names)[Size], std::string_view name)
{
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

bool isWidgetsOwn(std::string_view word)
{
    return contains(kWidgetsOwn, nameOf(word));
}

/// @param tag  what stands between the angle brackets
bool isMarkup(std::string_view tag)
{
    const std::string_view name = nameOf(tag.substr(!tag.empty() && tag.front() == '/' ? 1 : 0));
    return contains(kWidgetsOwn, name) || contains(kTexts, name);
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

std::string displayTag(std::string_view tag, const std::string& colour)
{
    if (!tag.empty() && tag.front() == '/')
        return isWidgetsOwn(tag.substr(1)) ? "" : "<" + std::string {tag} + ">";
    if (const std::string_view name = tag.substr(0, tag.find(' '));
        isWidgetsOwn(name) && nameOf(name) == name)
        return "";
    std::string words;
    bool hasDropped = false;
    for (size_t begin = 0; begin < tag.size();) {
        const size_t end = endOfWord(tag, begin);
        const std::string_view word = tag.substr(begin, end - begin);
        if (isWidgetsOwn(word))
            hasDropped = true;
        else if (!colour.empty() && word.substr(0, kColour.size()) == kColour)
            words.append(kColour).append(colour);
        else
            words.append(word);
        if (end < tag.size())
            words += ' ';
        begin = end + 1;
    }
    const bool isEmpty = words.find_first_not_of(' ') == std::string::npos;
    return hasDropped && isEmpty ? "" : "<" + words + ">";
}

} // namespace

std::string displayMarkup(const std::string& markup, const std::string& colour)
{
    const std::string_view text = markup;
    std::string result;
    size_t at = 0;
    for (size_t open = 0; (open = text.find('<', at)) != std::string_view::npos;) {
        result.append(text, at, open - at);
        const size_t close = text.find_first_of("<>", open + 1); // a bracket within a tag begins another
        const bool isClosed = close != std::string_view::npos && text[close] == '>';
        const std::string_view tag = isClosed ? text.substr(open + 1, close - open - 1) : std::string_view {};
        if (isMarkup(tag)) {
            result += displayTag(tag, colour);
            at = close + 1;
        } else {
            result += "&lt;";
            at = open + 1;
        }
    }
    return result.append(text, at);
}

} // namespace orbis::flux
