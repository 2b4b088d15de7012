// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Where lines end, and in which order letters stand.
#include "Rules.h"
#include "Scripts.h"

#include <algorithm>
#include <utility>

namespace gallery {

namespace {

/// Share of the widest line below which a lone word on the last one is an orphan.
constexpr double kShortWord = 0.15;

/// A word is what stands on one line between blanks; a letter of a script without blanks is one.
struct Word {
    std::vector<const Letter*> letters;
    int line = 0;
    Box place;
    bool endsParagraph = false;

    std::string text() const
    {
        std::string result;
        for (const Letter* letter : letters)
            result += letter->content;
        return result;
    }
};

bool isHan(const Letter& letter)
{
    return scriptOf(firstCharacter(letter.content)) == Script::Han;
}

std::vector<Word> wordsOf(const Text& text)
{
    std::vector<Word> words;
    Word word;
    const auto end = [&] {
        if (!word.letters.empty())
            words.push_back(std::move(word));
        word = {};
    };
    for (const Letter& letter : text.letters) {
        if (letter.isBlank) {
            if (!partsWords(letter.content))
                continue;
            end();
            if (letter.content == "\n" && !words.empty())
                words.back().endsParagraph = true;
            continue;
        }
        const bool isApart = !word.letters.empty() && (isHan(letter) || isHan(*word.letters.back()));
        if (!word.letters.empty()
            && (letter.line != word.line || (isApart && !isPunctuation(firstCharacter(letter.content)))))
            end();
        word.line = letter.line;
        word.letters.push_back(&letter);
        word.place.add(letter.place);
    }
    end();
    if (!words.empty())
        words.back().endsParagraph = true;
    return words;
}

/// A line ends between two letters that no blank parts.
void checkBreaks(Case& one, const Text& text)
{
    if (one.expected.mayBeCut)
        return;
    const Letter* before = nullptr; // that no blank parts from the next
    for (const Letter& after : text.letters) {
        if (after.isBlank) {
            before = partsWords(after.content) ? nullptr : before;
            continue;
        }
        const Letter* former = std::exchange(before, &after);
        if (!former || after.line == former->line)
            continue;
        const uint32_t first = firstCharacter(after.content);
        const bool isAllowed =
            allowsBreakAfter(firstCharacter(former->content)) || scriptOf(first) == Script::Han;
        if (isPunctuation(first) || !isAllowed)
            one.report("word-break",
                text.plain + ": between \"" + former->content + "\" and \"" + after.content + '"');
    }
}

bool isOnlyMarks(const Word& word)
{
    return std::all_of(word.letters.begin(), word.letters.end(),
        [](const Letter* letter) { return isPunctuation(firstCharacter(letter->content)); });
}

struct Paragraph {
    std::vector<const Word*> last; ///< the words of its last line
    size_t words = 0;
    int lines = 0;
    int widest = 0;
};

void judge(Case& one, const Text& text, const Paragraph& paragraph)
{
    if (paragraph.lines < 2 || paragraph.last.empty())
        return;
    Box line;
    bool isMarks = true;
    std::string words;
    size_t letters = 0;
    for (const Word* word : paragraph.last) {
        line.add(word->place);
        isMarks &= isOnlyMarks(*word);
        words += word->text();
        letters += word->letters.size();
    }
    // In a script without blanks two letters and a full stop are one word.
    const bool isOne =
        paragraph.last.size() == 1 || (isHan(*paragraph.last.front()->letters.front()) && letters <= 3);
    const bool isShort = line.width < kShortWord * paragraph.widest;
    if (isMarks || (isOne && isShort && paragraph.words > 2))
        one.report("orphan", text.plain + ": \"" + words + "\" alone on the last line");
}

void checkOrphans(Case& one, const Text& text, const std::vector<Word>& words)
{
    if (one.expected.mayBeCut)
        return;
    Paragraph paragraph;
    Box line;
    int last = -1;
    for (const Word& word : words) {
        if (paragraph.words == 0 || word.line != last) {
            ++paragraph.lines;
            paragraph.last.clear();
            line = {};
        }
        last = word.line;
        ++paragraph.words;
        line.add(word.place);
        paragraph.widest = std::max(paragraph.widest, line.width);
        paragraph.last.push_back(&word);
        if (word.endsParagraph) {
            judge(one, text, paragraph);
            paragraph = {};
        }
    }
}

/// Letters of a word run in the direction of their script, whatever marks a name has brought.
bool runsRight(const Word& word)
{
    for (size_t i = 1; i < word.letters.size(); ++i) {
        const Script script = scriptOf(firstCharacter(word.letters[i]->content));
        if (script == Script::None || script != scriptOf(firstCharacter(word.letters[i - 1]->content)))
            continue;
        const int step = word.letters[i]->place.x - word.letters[i - 1]->place.x;
        if (isRightToLeft(script) ? step > 0 : step < 0)
            return false;
    }
    return true;
}

void checkOrder(Case& one, const Text& text, const std::vector<Word>& words)
{
    for (const Word& word : words) {
        const std::string content = withoutMarksAround(word.text());
        const bool isOfName = one.expected.hasOwnDirection
            && std::any_of(one.expected.names.begin(), one.expected.names.end(),
                [&](const std::string& name) { return name.find(content) != std::string::npos; });
        if (!isOfName && !runsRight(word))
            one.report("order", text.plain + ": the letters of \"" + content + "\" run the wrong way");
    }
}

/// The script in which a language's sentences are written.
bool isWrittenFromRight(const std::string& language)
{
    constexpr const char* kLanguages[] = {"ar", "fa", "he", "ur"};
    return std::any_of(std::begin(kLanguages), std::end(kLanguages),
        [&](const char* one) { return language.substr(0, language.find('_')) == one; });
}

/// The words of the language follow each other in its direction: a name must not turn those behind it round.
void checkSentence(Case& one, const Text& text, const std::vector<Word>& words)
{
    if (text.role != Role::Text)
        return;
    const bool isFromRight = isWrittenFromRight(one.expected.language);
    const Word* former = nullptr;
    for (const Word& word : words) {
        const std::string content = withoutMarksAround(word.text());
        const auto isPart = [&](const std::string& name) { return name.find(content) != std::string::npos; };
        const Script script = scriptOf(firstCharacter(word.letters.front()->content));
        if (script == Script::None || isRightToLeft(script) != isFromRight
            || std::any_of(one.expected.names.begin(), one.expected.names.end(), isPart))
            continue;
        const bool isSameLine = former && former->line == word.line;
        if (isSameLine && (isFromRight ? word.place.x > former->place.x : word.place.x < former->place.x))
            one.report("order", text.plain + ": \"" + content + "\" stands before \"" + former->text() + '"');
        former = &word;
    }
}

} // namespace

void checkLines(Case& one)
{
    // Latin letters that are written backwards on purpose.
    const bool isBackwards = one.expected.language == "ar_XB";
    for (const Text& text : one.scene.texts) {
        const std::vector<Word> words = wordsOf(text);
        checkBreaks(one, text);
        checkOrphans(one, text, words);
        if (!isBackwards) {
            checkOrder(one, text, words);
            checkSentence(one, text, words);
        }
    }
}

} // namespace gallery
