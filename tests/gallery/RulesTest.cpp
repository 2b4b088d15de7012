/// Each rule of the gallery is broken on purpose: a rule that cannot be would prove nothing.
#include "Rules.h"

#include <gtest/gtest.h>

#include <functional>
#include <set>

namespace {

using namespace gallery;

constexpr uint32_t kCard = 0xFF0E1520;
constexpr uint32_t kLetters = 0xFFEBEEF2;
constexpr uint32_t kButton = 0xFF2B3647;
constexpr uint32_t kFocused = 0xFFEBF0F5;

/// A popup with one text and two buttons as it should be.
struct Popup {
    Popup()
    {
        paint(whole, scene.card, kCard);
        paint(whole, scene.buttons[0].box, kFocused);
        paint(whole, scene.buttons[1].box, kButton);
        behind = whole;
        paint(whole, scene.texts[0].runs[0], kLetters);
    }

    static void paint(Image& image, const Box& box, uint32_t colour)
    {
        for (int y = box.y; y < box.bottom(); ++y) {
            for (int x = box.x; x < box.right(); ++x)
                image.pixels[static_cast<size_t>(y) * image.width + x] = colour;
        }
    }

    Scene scene {
        {{nullptr, "A text", {100, 100, 300, 40}, {100, 102, 290, 35}, 24, false, {{100, 105, 60, 20}}}},
        {{"Yes", {120, 400, 200, 80}, true}, {"No", {400, 400, 200, 80}, false}}, {96, 60, 600, 440}, 1};
    Image whole {960, 540, std::vector<uint32_t>(size_t {960} * 540, 0xFF203040)};
    Image behind;
    Expected expected {0.5, false, false, false, "Yes"};
};

std::set<std::string> broken(const Popup& popup)
{
    Measured measured;
    std::set<std::string> rules;
    for (const Broken& one : check(popup.scene, popup.whole, popup.behind, popup.expected, measured))
        rules.insert(one.rule);
    return rules;
}

TEST(TheGallerysRules, HoldForAPopupAsItShouldBeAndAreEachBrokenByOneFault)
{
    EXPECT_EQ(broken({}), std::set<std::string> {});
    constexpr Box kSpeck {100, 200, 1, 1};
    const std::pair<const char*, std::function<void(Popup&)>> faults[] = {
        {"ellipsis", [](Popup& p) { p.scene.texts[0].isCut = true; }},
        {"no-font", [](Popup& p) { p.scene.texts[0].withoutFont = 0xD734; }},
        {"overflow", [](Popup& p) { p.scene.texts[0].lines.width = 301; }},
        {"small-text", [](Popup& p) { p.scene.texts[0].sizePx = 11; }},
        {"raw-id", [](Popup& p) { p.scene.texts[0].plain = "TV_SID_NEW"; }},
        {"contrast", [](Popup& p) { Popup::paint(p.whole, p.scene.texts[0].runs[0], 0xFF707880); }},
        {"contrast",
            [](Popup& p) { // the weakest part of a text counts
                p.scene.texts[0].runs.push_back({200, 105, 60, 20});
                Popup::paint(p.whole, p.scene.texts[0].runs[1], 0xFF707880);
            }},
        {"contrast",
            [](Popup& p) {
                p.expected.contrast = true;
                Popup::paint(p.whole, p.scene.texts[0].runs[0], 0xFFC0C0C0);
            }},
        {"ink", [=](Popup& p) { Popup::paint(p.whole, kSpeck, kLetters); }},
        {"overlap", [](Popup& p) { p.scene.texts.push_back(p.scene.texts[0]); }},
        {"safe-area", [](Popup& p) { p.scene.card.x = 40; }},
        {"safe-area", [](Popup& p) { p.scene.buttons[1].box.x = 600; }},
        {"focus", [](Popup& p) { p.scene.focused = 0; }},
        {"focus", [](Popup& p) { p.scene.focused = 2; }},
        {"focus", [](Popup& p) { p.expected.focusedLabel = "No"; }},
        {"focus-lightness", [](Popup& p) { Popup::paint(p.behind, p.scene.buttons[0].box, 0xFF2060A0); }},
    };
    for (const auto& [rule, fault] : faults) {
        Popup popup;
        fault(popup);
        EXPECT_TRUE(broken(popup).count(rule)) << rule << " is not noticed";
    }
}

} // namespace
