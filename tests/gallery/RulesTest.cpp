// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Each rule of the gallery is broken on purpose: a rule that cannot be would prove nothing.
#include "Rules.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <set>

namespace {

using namespace gallery;

constexpr uint32_t kCard = 0xFF0E1520;
constexpr uint32_t kLetters = 0xFFEBEEF2;
constexpr uint32_t kButton = 0xFF2B3647;
constexpr uint32_t kFocused = 0xFFEBF0F5;
constexpr uint32_t kLine = 0xFF3A4658;

constexpr int kLetterWidth = 10;
constexpr int kLetterHeight = 18;
constexpr int kInset = 4; ///< of a button without the focus

void paint(Image& image, const Box& box, uint32_t colour)
{
    for (int y = box.y; y < box.bottom(); ++y) {
        for (int x = box.x; x < box.right(); ++x)
            image.pixels[static_cast<size_t>(y) * image.width + x] = colour;
    }
}

/// A text whose letters are full boxes, one line for each of @p lines.
Text textOf(const std::vector<std::string>& lines, int x, int y)
{
    Text text;
    text.box = {x, y, 300, kLetterHeight * static_cast<int>(lines.size())};
    text.fontSize = text.sizePx = text.fullSizePx = 14;
    for (size_t line = 0; line < lines.size(); ++line) {
        int at = x;
        for (const char c : lines[line]) {
            Letter letter;
            letter.content = c;
            letter.isBlank = c == ' ';
            letter.line = static_cast<int>(line);
            letter.place = {at, y + kLetterHeight * letter.line, kLetterWidth, kLetterHeight};
            at += kLetterWidth;
            text.letters.push_back(letter);
        }
        text.plain += (line > 0 ? " " : "") + lines[line];
        Letter end;
        end.content = " ";
        end.isBlank = true;
        end.line = static_cast<int>(line);
        text.letters.push_back(end);
    }
    text.lines = text.box;
    text.mask.box = text.box;
    text.mask.coverage.assign(static_cast<size_t>(text.box.width) * text.box.height, 0);
    for (const Letter& letter : text.letters) {
        for (int row = letter.place.y; !letter.isBlank && row < letter.place.bottom(); ++row) {
            for (int column = letter.place.x; column < letter.place.right(); ++column)
                text.mask.coverage[static_cast<size_t>(row - y) * text.box.width + column - x] = 255;
        }
    }
    return text;
}

/// A popup with a title, a text and two buttons as it should be, on a screen of 540 lines.
struct Popup {
    Popup()
    {
        scene.card = {96, 60, 600, 440};
        scene.focused = 1;
        scene.buttons = {
            {nullptr, "Yes", {140, 400, 200, 60}, true}, {nullptr, "No", {400, 400, 200, 60}, false}};
        scene.texts = {textOf({"Title"}, 200, 80), textOf({"A text with words", "on two lines"}, 140, 160)};
        expected.scale = 0.5;
        expected.language = "en";
        expected.content.texts = {{Role::Title, "Title", false, false},
            {Role::Text, "A text with words on two lines", false, false}};
        expected.content.focusedLabel = "Yes";
        paint(behind, scene.card, kCard);
        paint(behind, {140, 120, 500, 1}, kLine);
        paint(behind, scene.buttons[1].box.grownBy(-kInset), kButton);
        unfocused = behind;
        paint(unfocused, scene.buttons[0].box.grownBy(-kInset), kButton);
        paint(behind, scene.buttons[0].box, kFocused);
        whole = behind;
        for (const Text& text : scene.texts)
            draw(text);
    }

    void draw(const Text& text, uint32_t colour = kLetters)
    {
        for (const Letter& letter : text.letters) {
            if (!letter.isBlank)
                paint(whole, letter.place, colour);
        }
    }

    /// In the place of the second text.
    void replaceText(const std::vector<std::string>& lines)
    {
        for (const Letter& letter : scene.texts[1].letters)
            paint(whole, letter.place, kCard);
        scene.texts[1] = textOf(lines, 140, 160);
        expected.content.texts[1].text = scene.texts[1].plain;
        draw(scene.texts[1]);
    }

    void paintBehind(const Box& box, uint32_t colour)
    {
        paint(behind, box, colour);
        paint(whole, box, colour);
        paint(unfocused, box, colour);
    }

    Letter& letter(size_t index) { return scene.texts[1].letters[index]; }

    Scene scene;
    Image behind {960, 540, std::vector<uint32_t>(size_t {960} * 540, 0xFF203040)};
    Image whole;
    Image unfocused;
    Expected expected;
};

std::set<std::string> broken(Popup& popup)
{
    Measured measured;
    std::set<std::string> rules;
    for (const Broken& one :
        check(popup.scene, {popup.whole, popup.behind, popup.unfocused}, popup.expected, measured))
        rules.insert(one.rule);
    return rules;
}

struct Fault {
    const char* rule;
    std::function<void(Popup&)> make;
};

void expectEach(const std::vector<Fault>& faults)
{
    for (const auto& [rule, make] : faults) {
        Popup popup;
        make(popup);
        EXPECT_TRUE(broken(popup).count(rule)) << rule << " is not noticed";
    }
}

TEST(TheGallerysRules, HoldForAPopupAsItShouldBe)
{
    Popup popup;
    EXPECT_EQ(broken(popup), std::set<std::string> {});
}

TEST(TheGallerysRules, AreBrokenByATextThatCannotBeRead)
{
    expectEach({
        {"missing-title", [](Popup& p) { p.scene.texts.erase(p.scene.texts.begin()); }},
        {"missing-title", [](Popup& p) { paint(p.whole, p.scene.texts[0].box, kCard); }},
        {"missing-pin",
            [](Popup& p) {
                p.expected.content.texts.push_back({Role::Pin, "042719", false, false});
            }},
        {"unexpected", [](Popup& p) { p.expected.content.texts.pop_back(); }},
        {"hidden-letters", [](Popup& p) { paint(p.whole, p.letter(0).place, kCard); }},
        {"cut-letters",
            [](Popup& p) {
                paint(p.whole, {140, 160, 3, kLetterHeight}, kCard);
            }},
        {"cut-letters",
            [](Popup& p) {
                paint(p.whole, {140, 176, 300, 2}, kCard);
            }},
        {"ellipsis", [](Popup& p) { p.scene.texts[0].isCut = true; }},
        {"ellipsis", [](Popup& p) { p.scene.texts[1].plain = "A text with words … lines"; }},
        {"missing-text", [](Popup& p) { p.scene.texts[1].plain = "A text … otherwise"; }},
        {"missing-text", [](Popup& p) { p.scene.texts[1].plain = "…"; }},
        {"no-font", [](Popup& p) { p.scene.texts[0].withoutFont = 0xD734; }},
        {"font", [](Popup& p) { p.scene.texts[0].inOtherFonts = {"Title"}; }},
        {"overflow", [](Popup& p) { p.scene.texts[0].lines.width = 301; }},
        {"small-text", [](Popup& p) { p.scene.texts[0].sizePx = 11; }},
        {"shrunk", [](Popup& p) { p.scene.texts[0].fullSizePx = 16; }},
        {"raw-id", [](Popup& p) { p.scene.texts[0].plain = "TV_SID_NEW"; }},
        // One letter counts, wherever it is in its word.
        {"contrast", [](Popup& p) { paint(p.whole, p.letter(3).place, 0xFF707880); }},
        {"contrast",
            [](Popup& p) {
                p.expected.contrast = true;
                p.draw(p.scene.texts[1], 0xFFC0C0C0);
            }},
        {"ink",
            [](Popup& p) {
                paint(p.whole, {500, 300, 1, 1}, kLetters);
            }},
    });
}

TEST(TheGallerysRules, AreBrokenByLinesThatEndWrongly)
{
    expectEach({
        {"word-break", [](Popup& p) { p.scene.texts[1].letters[17].content = "\u200d"; }},
        {"orphan",
            [](Popup& p) {
                p.replaceText({"A text with many words", "on"});
            }},
        {"orphan",
            [](Popup& p) {
                p.replaceText({"A text with many words", "):"});
            }},
        {"order", [](Popup& p) { std::swap(p.letter(2).place, p.letter(5).place); }},
        {"order",
            [](Popup& p) {
                for (size_t i = 0; i < 6; ++i) // the second word before the first
                    p.letter(i).place.x += i == 0 ? 100 : 0;
            }},
    });
}

TEST(TheGallerysRules, AreBrokenByWrongPlaces)
{
    const auto moveTitle = [](Popup& p, int x, int y) {
        paint(p.whole, p.scene.texts[0].box, kCard);
        p.scene.texts[0] = textOf({"Title"}, x, y);
        p.draw(p.scene.texts[0]);
    };
    expectEach({
        {"safe-area", [](Popup& p) { p.scene.card.x = 40; }},
        {"safe-area", [](Popup& p) { p.scene.buttons[1].box.x = 600; }},
        {"uncovered",
            [](Popup& p) {
                p.scene.coveredCards.push_back({90, 70, 300, 300});
            }},
        {"edge", [=](Popup& p) { moveTitle(p, 200, 66); }},
        {"edge", [=](Popup& p) { moveTitle(p, 100, 80); }},
        {"overlap", [=](Popup& p) { moveTitle(p, 140, 165); }},
        {"text-gap", [=](Popup& p) { moveTitle(p, 140, 197); }},
        {"hairline", [=](Popup& p) { moveTitle(p, 200, 110); }},
        {"hairline", [=](Popup& p) { moveTitle(p, 200, 100); }},
        {"missing-hairline",
            [](Popup& p) {
                p.paintBehind({140, 120, 500, 1}, kCard);
            }},
        {"missing-hairline",
            [](Popup& p) {
                p.paintBehind({140, 120, 500, 1}, 0xFF141B28);
            }},
        {"missing-spinner", [](Popup& p) { p.expected.content.hasSpinner = true; }},
        {"missing-spinner",
            [](Popup& p) {
                p.expected.content.hasSpinner = true;
                p.paintBehind({500, 250, 40, 40}, 0xFF202A38);
            }},
        {"missing-picture",
            [](Popup& p) {
                p.expected.content.hasPicture = true;
                p.paintBehind({500, 250, 40, 40}, kLetters);
            }},
    });
    Popup turning;
    turning.expected.content.hasSpinner = true;
    turning.paintBehind({500, 250, 40, 40}, 0xFF29C5FF);
    EXPECT_EQ(broken(turning), std::set<std::string> {});
}

TEST(TheGallerysRules, AreBrokenByAFocusThatIsNotPlain)
{
    expectEach({
        {"focus", [](Popup& p) { p.scene.focused = 0; }},
        {"focus", [](Popup& p) { p.scene.focused = 2; }},
        {"focus", [](Popup& p) { p.expected.content.focusedLabel = "No"; }},
        {"focus-lightness", [](Popup& p) { paint(p.behind, p.scene.buttons[0].box, 0xFF2060A0); }},
        {"focus-size", [](Popup& p) { paint(p.unfocused, p.scene.buttons[0].box, kButton); }},
        {"focus-like",
            [](Popup& p) {
                p.paintBehind({500, 250, 60, 30}, kFocused);
            }},
    });
    // A ring in another colour than the button's will do, too.
    Popup outlined;
    paint(outlined.unfocused, outlined.scene.buttons[0].box, kButton);
    paint(outlined.behind, outlined.scene.buttons[0].box.grownBy(-kInset), 0xFFC0C0C0);
    paint(outlined.behind, outlined.scene.buttons[0].box.grownBy(-2 * kInset), kButton);
    EXPECT_EQ(broken(outlined).count("focus-size"), 0U);
}

} // namespace
