// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Speech.h"

#include "Scripts.h"

#include "vconf.h"

#include <glib.h>
#include <libintl.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

namespace gallery {

namespace {

constexpr const char* kScreenReaderKey = "db/menu/system/accessibility/screenreader";
constexpr const char* kSpeechLog = "ORBIS_SPEECH_LOG";
constexpr const char* kWordsDomain = "orbis-platform";
constexpr const char* kButton = "Button.";
constexpr const char* kButtonOfSome = "Button, %1 of %2.";

template <typename Take>
void forEachCharacter(const std::string& text, const Take& take)
{
    for (const char* at = text.c_str(); *at != '\0';) {
        const gunichar c = g_utf8_get_char_validated(at, -1);
        const bool isValid = c != static_cast<gunichar>(-1) && c != static_cast<gunichar>(-2);
        const char* next = isValid ? g_utf8_next_char(at) : at + 1;
        if (isValid)
            take(c, std::string(at, next));
        at = next;
    }
}

/// @return letters and digits alone: how they are set apart is another matter
std::string bare(const std::string& text)
{
    std::string result;
    forEachCharacter(
        text, [&](gunichar c, const std::string& bytes) { result += g_unichar_isalnum(c) ? bytes : ""; });
    return result;
}

/// @return @p text as it is written, but for what is not drawn
std::string withoutMarks(const std::string& text)
{
    std::string result;
    forEachCharacter(text, [&](gunichar c, const std::string& bytes) {
        result += g_unichar_type(c) == G_UNICODE_FORMAT ? "" : bytes;
    });
    return result;
}

/// @return the characters of a code one by one, with a pause for a blank
std::string apart(const std::string& code)
{
    std::string result;
    forEachCharacter(code, [&](gunichar c, const std::string& bytes) {
        if (c == ' ')
            result += ",";
        else
            result += (result.empty() ? "" : " ") + bytes;
    });
    return result;
}

class Check {
public:
    explicit Check(const Utterances& utterances)
        : m_all(utterances)
        , m_news(utterances.news)
    {
    }

    std::vector<Broken> run()
    {
        // What comes up by itself is said by itself.
        const size_t own = m_all.label.empty() ? 0 : 1;
        for (size_t i = own; i < m_all.lines.size(); ++i)
            takeAlone(m_all.lines[i]);
        if (own == 1)
            checkWhole(m_all.lines.empty() ? "" : m_all.lines[0]);
        else
            for (const std::string& text : m_news)
                report(text, "is not said");
        for (const std::string& line : m_all.lines)
            checkStops(line);
        return std::move(m_broken);
    }

private:
    /// @param text,line  in quotes, before and behind the words
    void report(const std::string& text, const char* words, const std::string& line = "")
    {
        std::string detail = text.empty() ? "" : '"' + text + "\" ";
        detail += words;
        if (!line.empty())
            detail.append(" \"").append(line).append("\"");
        m_broken.push_back({"speech", detail});
    }

    void takeAlone(const std::string& line)
    {
        const auto said = std::find_if(
            m_news.begin(), m_news.end(), [&](const std::string& text) { return bare(text) == bare(line); });
        if (said == m_news.end())
            report(line, "is said beside it");
        else
            m_news.erase(said);
    }

    void checkWhole(const std::string& line)
    {
        const std::string heard = bare(line);
        size_t at = 0;
        std::vector<std::string> parts;
        std::vector<std::string> cut; ///< the parts in front of an ellipsis: the whole text is said
        for (const std::string& text : m_news) {
            const size_t ellipsis = text.find(kEllipsis);
            const bool isTwice = std::find(parts.begin(), parts.end(), bare(text)) != parts.end();
            if (!isTwice && ellipsis != std::string::npos) {
                cut.push_back(bare(text.substr(0, ellipsis)));
                parts.push_back(cut.back());
                if (const std::string rest = bare(text.substr(ellipsis)); !rest.empty())
                    parts.push_back(rest);
            } else if (!isTwice) {
                parts.push_back(bare(text));
            }
            if (!isTwice && bare(text) == bare(m_all.code) && !m_all.code.empty()
                && line.find(apart(m_all.code)) == std::string::npos)
                report("", "the code is not spelled in", line);
        }
        parts.push_back(bare(m_all.label));
        parts.push_back(bare(m_all.kind));
        bool isMoreSaid = false; // than there was room to draw
        for (const std::string& part : parts) {
            const bool isBehind = isMoreSaid && !part.empty() && heard.find(part, at) != std::string::npos;
            if (isBehind)
                at = heard.find(part, at);
            if (heard.compare(at, part.size(), part) != 0) {
                report(part, "is not said in its place in", line);
                return;
            }
            at += part.size();
            isMoreSaid = std::find(cut.begin(), cut.end(), part) != cut.end();
        }
        if (at < heard.size())
            report("", "there is more in", line);
    }

    /// Without its stop a text runs into the next one.
    void checkStops(const std::string& line)
    {
        std::vector<std::string> texts = m_all.news;
        texts.push_back(m_all.label);
        for (const std::string& text : texts) {
            std::string written = withoutMarks(text);
            written.resize(written.find_last_not_of(' ') + 1);
            if (!isEndedIn(line, written))
                report(written, "has no pause behind it in", line);
        }
        for (const char* mark : {",,", "..", " .", " ,", "  "}) {
            if (line.find(mark) != std::string::npos)
                report(mark, "stands in", line);
        }
    }

    /// A short text may be a part of another: one place is enough. @return true when it is nowhere
    static bool isEndedIn(const std::string& line, const std::string& text)
    {
        bool isThere = false;
        for (size_t at = 0; !text.empty() && (at = line.find(text, at)) != std::string::npos; ++at) {
            isThere = true;
            const char* end = line.c_str() + at + text.size();
            if (g_unichar_ispunct(g_utf8_get_char(end))
                || g_unichar_ispunct(g_utf8_get_char(g_utf8_prev_char(end))))
                return true;
        }
        return !isThere;
    }

    const Utterances& m_all;
    std::vector<std::string> m_news; ///< not said yet
    std::vector<Broken> m_broken;
};

bool isInside(const Box& inner, const Box& outer)
{
    return inner.x >= outer.x && inner.y >= outer.y && inner.right() <= outer.right()
        && inner.bottom() <= outer.bottom();
}

/// @return what is drawn and belongs to no button, from top to bottom
std::vector<std::string> drawnIn(const Scene& scene)
{
    std::vector<const Text*> texts;
    for (const Text& text : scene.texts) {
        const bool isLabel = std::any_of(scene.buttons.begin(), scene.buttons.end(),
            [&](const Button& button) { return isInside(text.box, button.box); });
        if (!isLabel && !bare(text.plain).empty())
            texts.push_back(&text);
    }
    std::stable_sort(
        texts.begin(), texts.end(), [](const Text* a, const Text* b) { return a->box.y < b->box.y; });
    std::vector<std::string> drawn(texts.size());
    std::transform(texts.begin(), texts.end(), drawn.begin(), [](const Text* text) { return text->plain; });
    return drawn;
}

std::string kindOf(size_t place, size_t count)
{
    std::string kind = dgettext(kWordsDomain, count > 1 ? kButtonOfSome : kButton);
    for (const auto& [mark, number] : {std::pair("%1", place), std::pair("%2", count)}) {
        if (const size_t at = kind.find(mark); at != std::string::npos)
            kind.replace(at, 2, std::to_string(number));
    }
    return kind;
}

} // namespace

std::vector<Broken> checkSpeech(const Utterances& utterances)
{
    return Check(utterances).run();
}

#ifdef ORBIS_WORDS

Listener::Listener(std::string transcript)
    : m_transcript(std::move(transcript))
{
    std::ofstream {m_transcript}; // without what another run has left
    vconf_set_int(kScreenReaderKey, 1);
    bindtextdomain(kWordsDomain, ORBIS_WORDS);
    bind_textdomain_codeset(kWordsDomain, "UTF-8");
}

std::vector<std::string> Listener::takeLines()
{
    const char* path = getenv(kSpeechLog);
    std::ifstream file {path ? path : ""};
    std::vector<std::string> lines;
    size_t number = 0;
    for (std::string line; std::getline(file, line);) {
        if (number++ >= m_taken)
            lines.push_back(line);
    }
    m_taken = number;
    return lines;
}

std::vector<Broken> Listener::hear(const State& state, const Scene& scene)
{
    Utterances utterances {takeLines(), {}, {}, {}, state.names.pin};
    std::ofstream transcript {m_transcript, std::ios::app};
    for (const std::string& line : utterances.lines)
        transcript << state.name << '\t' << line << '\n';
    if (state.step == Step::Show) {
        m_drawn.clear();
        m_focused.clear();
    }
    std::vector<std::string> drawn = drawnIn(scene);
    for (const std::string& text : drawn) {
        if (std::find(m_drawn.begin(), m_drawn.end(), text) == m_drawn.end())
            utterances.news.push_back(text);
    }
    for (size_t i = 0; i < scene.buttons.size(); ++i) {
        const Button& button = scene.buttons[i];
        if (!button.isFocused || button.label == m_focused)
            continue;
        utterances.label = m_focused = button.label;
        utterances.kind = kindOf(i + 1, scene.buttons.size());
    }
    m_drawn = std::move(drawn);
    return checkSpeech(utterances);
}

#else

Listener::Listener(std::string transcript)
    : m_transcript(std::move(transcript))
{
}

std::vector<Broken> Listener::hear(const State&, const Scene&)
{
    return {};
}

#endif

} // namespace gallery
