// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Narration.h"

#include "app/Words.h"
#include "flux/Button.h"
#include "flux/Layout.h"
#include "flux/PopupButtons.h"
#include "flux/Progressbar.h"
#include "flux/SpokenText.h"
#include "flux/TextboxRecord.h"
#include "flux/Tooltip.h"

#include <glib.h>

#include <algorithm>
#include <string_view>

namespace orbis::flux {

namespace {

constexpr const char* kContentPart = "elm.swallow.content";
constexpr const char* kTitlePart = "title,text";

std::string markupOf(const Evas_Object* widget, const char* part)
{
    const char* text = elm_object_part_text_get(widget, part);
    return text ? text : "";
}

/// The lines of a text are sentences of their own.
std::string asSentences(const std::string& plain)
{
    std::vector<std::string> lines;
    for (size_t at = 0; at <= plain.size();) {
        const size_t end = std::min(plain.find('\n', at), plain.size());
        lines.push_back(withDigitsApart(spokenLine(plain.substr(at, end - at))));
        at = end + 1;
    }
    lines.erase(std::remove_if(lines.begin(), lines.end(), [](const auto& line) { return !hasWords(line); }),
        lines.end());
    // The last one is ended by whoever says it.
    const std::string last = lines.empty() ? "" : lines.back();
    if (!lines.empty())
        lines.pop_back();
    return lines.empty() ? last : sentences(lines) + ' ' + last;
}

class Reader {
public:
    std::vector<SpokenPart> read(const PopupRecord& popup)
    {
        add(markupOf(popup.object, kTitlePart), false);
        addWidget(elm_layout_content_get(popup.object, kContentPart));
        return std::move(m_parts);
    }

private:
    void addWidget(Evas_Object* widget)
    {
        if (!widget || !evas_object_visible_get(widget))
            return;
        if (const auto* text = recordOf<TextboxRecord>(widget))
            add(text->text, text->size == ELM_FLUX_TEXTBOX_SIZE_DIGITS);
        add(hintOf(widget), false);
        for (Evas_Object* item : layoutItems(widget))
            addWidget(item);
    }

    /// A code is said even if something else reads like it.
    void add(const std::string& markup, bool isCode)
    {
        SpokenPart part {plainText(markup), {}, isCode};
        part.spoken = isCode ? spelled(part.plain) : asSentences(part.plain);
        const bool isSaid = std::any_of(m_parts.begin(), m_parts.end(),
            [&](const SpokenPart& other) { return !isCode && other.spoken == part.spoken; });
        if (hasWords(part.spoken) && !isSaid)
            m_parts.push_back(std::move(part));
    }

    std::vector<SpokenPart> m_parts;
};

bool isWordCharacter(gunichar c)
{
    return g_unichar_isalnum(c) || g_unichar_ismark(c);
}

/// @return the rows of letters and digits in @p text, which is valid
std::vector<std::string> wordsIn(const std::string& text)
{
    std::vector<std::string> words;
    bool isInside = false;
    for (const char* at = text.c_str(); *at != '\0'; at = g_utf8_next_char(at)) {
        const bool isWord = isWordCharacter(g_utf8_get_char(at));
        if (isWord && !isInside)
            words.emplace_back();
        if (isWord)
            words.back().append(at, static_cast<size_t>(g_utf8_next_char(at) - at));
        isInside = isWord;
    }
    return words;
}

/// @return the parts of what a program tells in one text, with a comma and no blank between
std::vector<std::string> piecesOf(const std::string& information)
{
    std::vector<std::string> pieces;
    size_t begin = 0;
    for (size_t i = 0; i <= information.size(); ++i) {
        const bool isEnd = i == information.size()
            || (information[i] == ',' && (i + 1 == information.size() || information[i + 1] != ' '));
        if (!isEnd)
            continue;
        const std::string piece = asSentences(information.substr(begin, i - begin));
        if (hasWords(piece) && std::find(pieces.begin(), pieces.end(), piece) == pieces.end())
            pieces.push_back(piece);
        begin = i + 1;
    }
    return pieces;
}

} // namespace

std::vector<SpokenPart> partsOf(const PopupRecord& popup)
{
    return Reader().read(popup);
}

std::string nameOfButton(const Evas_Object* button)
{
    if (!button)
        return {};
    const std::string label = asSentences(plainText(markupOf(button, nullptr)));
    const auto* record = recordOf<ButtonRecord>(button);
    if (!record)
        return sentences({label});
    int place = 0;
    int count = 0;
    if (const auto* popup = recordOf<PopupRecord>(record->popup)) {
        for (const Evas_Object* other : popup->buttons) {
            count += other ? 1 : 0;
            place = other == button ? count : place;
        }
    }
    return sentences(
        {label, count > 1 ? app::wordsOf("Button, %1 of %2.", {place, count}) : app::wordsOf("Button.")});
}

std::vector<std::string> furtherInformation(
    const std::string& information, const PopupRecord& popup, const std::vector<SpokenPart>& parts)
{
    const std::string told = spokenLine(information);
    const std::string title = spokenLine(plainText(markupOf(popup.object, kTitlePart)));
    if (told.find(title) == std::string::npos)
        return {};
    // Some put their texts together without a blank between them.
    std::string shown;
    std::vector<std::string> labels;
    const auto add = [&](const std::string& text) {
        for (const std::string& word : wordsIn(text))
            shown += word;
    };
    for (const SpokenPart& part : parts)
        add(spokenLine(part.plain));
    for (const Evas_Object* button : popup.buttons) {
        if (button)
            add(labels.emplace_back(spokenLine(plainText(markupOf(button, nullptr)))));
    }
    const std::vector<std::string> words = wordsIn(told);
    const auto isShown = [&](const std::string& word) { return shown.find(word) != std::string::npos; };
    if (std::all_of(words.begin(), words.end(), isShown))
        return {};
    std::vector<std::string> pieces = piecesOf(information);
    for (const SpokenPart& part : parts) {
        if (part.isCode)
            std::replace(pieces.begin(), pieces.end(), asSentences(part.plain), part.spoken);
    }
    while (!pieces.empty() && std::find(labels.begin(), labels.end(), pieces.back()) != labels.end())
        pieces.pop_back();
    return pieces;
}

bool hasProgress(const PopupRecord& popup)
{
    std::vector<Evas_Object*> widgets {elm_layout_content_get(popup.object, kContentPart)};
    while (!widgets.empty()) {
        Evas_Object* widget = widgets.back();
        widgets.pop_back();
        if (!widget || !evas_object_visible_get(widget))
            continue;
        if (isProgressbar(widget))
            return true;
        for (Evas_Object* item : layoutItems(widget))
            widgets.push_back(item);
    }
    return false;
}

} // namespace orbis::flux
