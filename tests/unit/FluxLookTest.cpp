// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the viewer chooses for the look of the widgets, and what a popup shows of its time.
#include "Fixtures.h"
#include "elm_flux.h"
#include "flux/Shortening.h"
#include "flux/TextMeasure.h"
#include "flux/Typesetting.h"
#include "vconf.h"

#include <algorithm>

namespace {

using toolkit::boxOf;

constexpr const char* kContrast = "db/menu/system/accessibility/highcontrast";
constexpr const char* kTextSize = "db/menu/system/accessibility/textsize";

std::string stateOf(const Evas_Object* widget, const char* part)
{
    double value = 0;
    return edje_object_part_state_get(elm_layout_edje_get(widget), part, &value);
}

Evas_Object* partOf(const Evas_Object* widget, const char* part)
{
    return const_cast<Evas_Object*>(edje_object_part_object_get(elm_layout_edje_get(widget), part));
}

class ALook : public ManagerTest {
protected:
    void SetUp() override
    {
        ManagerTest::SetUp();
        toolkit::advance(0.1); // settings are asked for once in a turn of the loop
    }
};

TEST_F(ALook, OfHighContrastComesAndGoesWhileAPopupIsUp)
{
    request(Kind::NetworkTest);
    toolkit::settle();
    const auto* card = top();
    const auto text = toolkit::shown<toolkit::TextboxRecord>(m_window).back();
    const auto isEverywhere = [&](const char* state) {
        return stateOf(card->object, "card") == state && stateOf(card->object, "hairline") == state
            && stateOf(text->object, "elm.text") == state;
    };
    EXPECT_TRUE(isEverywhere("default"));
    for (const bool isOn : {true, false, true}) {
        ASSERT_EQ(vconf_set_int(kContrast, isOn ? 1 : 0), VCONF_OK);
        EXPECT_TRUE(toolkit::runUntil([&] { return isEverywhere(isOn ? "contrast" : "default"); })) << isOn;
        EXPECT_EQ(top(), card) << "it is another popup";
        EXPECT_EQ(stateOf(card->buttons[0], "fill"), "focused");
    }
}

TEST_F(ALook, OfLargeTextsHasLargerCardsAndNothingThatLeavesThem)
{
    const auto widthOfCard = [&](Kind kind) {
        request(kind, "Anna");
        toolkit::settle();
        const auto card = boxOf(partOf(top()->object, "card"));
        int bottom = card.y;
        for (const auto* text : toolkit::shown<toolkit::TextboxRecord>(m_window)) {
            if (text->text.empty())
                continue;
            int height = 0;
            evas_object_textblock_size_formatted_get(partOf(text->object, "elm.text"), nullptr, &height);
            EXPECT_LE(height, boxOf(text->object).height) << text->text;
            EXPECT_GE(boxOf(text->object).y, bottom) << text->text << " lies over another one";
            bottom = boxOf(text->object).y + height;
        }
        EXPECT_LE(bottom, card.y + card.height);
        return card.width;
    };
    for (const Kind kind : {Kind::Pin, Kind::NetworkTest, Kind::Terms}) {
        int before = 0;
        for (const int size : {100, 130, 160}) {
            ASSERT_EQ(vconf_set_int(kTextSize, size), VCONF_OK);
            toolkit::advance(0.1); // settings are asked for once in a turn of the loop
            const int width = widthOfCard(kind);
            EXPECT_GT(width, before);
            before = width;
        }
    }
}

TEST_F(ALook, OfProgressHasOneAxisAndAConfirmationThatCoversIt)
{
    request(Kind::SignIn);
    toolkit::settle();
    const auto texts = toolkit::shown<toolkit::TextboxRecord>(m_window);
    ASSERT_EQ(texts.size(), 2U);
    EXPECT_EQ(boxOf(texts[0]->object).x, boxOf(texts[1]->object).x);
    EXPECT_EQ(texts[0]->align, ELM_FLUX_TEXTBOX_ALIGN_LEFT);
    EXPECT_EQ(texts[1]->align, ELM_FLUX_TEXTBOX_ALIGN_LEFT);
    const auto below = boxOf(partOf(top()->object, "card"));
    toolkit::click(top()->buttons[0]);
    toolkit::settle();
    EXPECT_EQ(boxOf(partOf(top()->object, "card")), below);
}

TEST_F(ALook, OfTimeIsALineThatGrowsShorterOrARingThatLosesQuarters)
{
    request(Kind::Pin);
    toolkit::settle();
    const auto* popup = top();
    const auto tell = [&](const char* signal) {
        elm_object_signal_emit(popup->object, signal, "");
        edje_object_message_signal_process(elm_layout_edje_get(popup->object));
        toolkit::settle();
        return boxOf(partOf(popup->object, "time_line")).width;
    };
    const int whole = boxOf(partOf(popup->object, "hairline")).width;
    EXPECT_EQ(tell("countdown,60,60"), whole);
    EXPECT_EQ(tell("countdown,15,60"), whole / 4);
    for (const char* nonsense :
        {"countdown,", "countdown,1", "countdown,-1,60", "countdown,1,0", "countdown,9,9x"})
        EXPECT_EQ(tell(nonsense), whole / 4) << nonsense;
    elm_object_signal_emit(popup->object, "HC", "");
    for (const auto& [signal, quarters] :
        {std::pair {"countdown,60,60", "four"}, {"countdown,45,60", "three"}, {"countdown,30,60", "two"},
            {"countdown,1,60", "one"}, {"countdown,0,60", "default"}}) {
        tell(signal);
        EXPECT_EQ(stateOf(popup->object, "time_ring"), quarters);
        EXPECT_EQ(stateOf(popup->object, "time_line"), "default") << "there is motion in high contrast";
    }
}

TEST(ATypesetText, SaysTheSameInLinesThatBreakWell)
{
    const struct {
        const char* markup;
        const char* set;
    } cases[] = {
        {"The way to this TV goes on to:", "The way to this TV goes on\u00a0to:"},
        {"Go \u2068A<b>B</b>\u2069.<br>It is on.", "Go\u00a0\u2068A<b>B</b>\u2069.<br>It is\u00a0on."},
        {"Phone set-up", "Phone set-up"},
        {"TV\uc124\uc815 \uc911", "TV\u2060\uc124\u2060\uc815\u2060\u00a0\u2060\uc911"},
        {"\u2068\u200eAnna\u200f\u2069 is here", "\u2068\u200eAnna\u200f\u2069 is here"},
        {"\u2068\u202d\u05d0\u05d1\u2069 came", "\u2068\u05d0\u05d1\u2069 came"},
        {"\u2068&#x200e;\u05d0\u05d1&#x200f;\u2069 came", "\u2068\u05d0\u05d1\u2069 came"},
        {"\u2068a\u2067b\u2069 came", "\u2068ab\u2069 came"},
        {"\u2068a\u2069b\u2069 came", "\u2068ab\u2069 came"},
        {"a\u2067b", "a\u2067b\u2069"},
        {"a\u2069b", "ab"},
        // A name's lines are those of no sentence.
        {"one<br>\u2068a<br>\u2067b\u2069\u2069<br>two", "one<br>\u2068a\u00a0b\u2069<br>two"},
        {"\u2068\u2067a\u2069 came<br>\u05d0", "\u2068a\u2069 came<br>\u05d0"},
        {"a\u0301\u0302\u0303\u0304\u0305b\u0301", "a\u0301\u0302\u0303b\u0301"},
    };
    for (const auto& [markup, set] : cases)
        EXPECT_EQ(orbis::flux::typeset(markup), set);
    EXPECT_EQ(orbis::flux::typeset("One<br>more", orbis::flux::Lines::One), "One more");
}

TEST(AShortenedText, LosesWhatIsLongestOfItsNames)
{
    const struct {
        const char* markup;
        size_t count;
        const char* shortened;
    } cases[] = {
        {"Bob", 1, "Bo…"},
        {"one<br>two", 4, "one…"},
        {"From \u2068\u200eAnna &amp; Bo\u200f\u2069.", 3, "From \u2068\u200eAnna &amp;…\u200f\u2069."},
        {"From \u2068<b>Anna</b>\u2069 and \u2068Bo\u2069.", 3,
            "From \u2068<b>A…</b>\u2069 and \u2068Bo\u2069."},
        {"From \u2068Bo\u2069 on.", 4, "From \u2068\u2069 o…"},
    };
    for (const auto& [markup, count, shortened] : cases)
        EXPECT_EQ(orbis::flux::Shortening(markup).without(count), shortened);
}

/// @return the text that is drawn, and how high it is
std::pair<std::string, int> drawnIn(const Evas_Object* textbox)
{
    int height = 0;
    toolkit::settle();
    const Evas_Object* text = edje_object_part_object_get(elm_layout_edje_get(textbox), "elm.text");
    evas_object_textblock_size_formatted_get(text, nullptr, &height);
    return {elm_layout_text_get(textbox, "elm.text"), height};
}

TEST_F(ALook, OfATextIsAsLargeAsItsPlaceAllows)
{
    constexpr int kHeight = 100;
    Evas_Object* box = elm_flux_textbox_add(m_window);
    evas_object_show(box);
    elm_flux_textbox_multiline_set(box, EINA_TRUE);
    evas_object_resize(box, 500, kHeight);
    const auto* record = orbis::flux::recordOf<toolkit::TextboxRecord>(box);
    std::string text;
    std::vector<int> sizes {32};
    while (drawnIn(box).first.find("…") == std::string::npos && text.size() < 600) {
        elm_flux_textbox_text_set(box, (text += "some more ").c_str());
        EXPECT_LE(drawnIn(box).second, kHeight) << text;
        const int size = record->place.size == 0 ? 32 : record->place.size;
        EXPECT_LE(size, sizes.back()) << "more has larger letters";
        sizes.push_back(size);
    }
    EXPECT_LT(text.size(), 600U);
    evas_object_resize(box, 500, 9);
    elm_flux_textbox_text_set(box, "Lower than a line");
    EXPECT_EQ(drawnIn(box).first, "Lower than a line") << "it is no line any more";
    EXPECT_EQ(sizes.back(), 24) << "it is cut although its letters could be smaller";
    EXPECT_TRUE(std::any_of(sizes.begin(), sizes.end(), [](int size) { return size > 24 && size < 32; }));
    evas_object_del(box);
}

/// @return how wide each line that is drawn is, pixels
std::vector<int> linesIn(const Evas_Object* textbox)
{
    toolkit::settle();
    return orbis::flux::lineWidths(edje_object_part_object_get(elm_layout_edje_get(textbox), "elm.text"));
}

TEST_F(ALook, OfATextInTheMiddleHasNoStumpForItsLastLine)
{
    Evas_Object* boxes[2] {};
    for (Evas_Object*& box : boxes) {
        box = elm_flux_textbox_add(m_window);
        evas_object_show(box);
        elm_flux_textbox_multiline_set(box, EINA_TRUE);
    }
    auto& [middle, left] = boxes;
    elm_flux_textbox_align_set(middle, ELM_FLUX_TEXTBOX_ALIGN_CENTER);
    elm_flux_textbox_align_set(left, ELM_FLUX_TEXTBOX_ALIGN_LEFT);
    int stumps = 0;
    for (const char* text :
        {"Choose your network on your phone to continue.", "Averylongwordwithoutanyblank goes on"}) {
        const bool isWord = text[1] == 'v';
        for (int width = 240; width < 800; width += 20) {
            for (Evas_Object* box : boxes) {
                evas_object_resize(box, width, 400);
                elm_flux_textbox_text_set(box, text);
            }
            const std::vector<int> usual = linesIn(left);
            const std::vector<int> lines = linesIn(middle);
            ASSERT_EQ(lines.size(), usual.size()) << width << ": a line more, or less";
            const bool isStump =
                usual.size() > 1 && usual.back() * 2 < *std::max_element(usual.begin(), usual.end());
            if (!isStump || isWord)
                EXPECT_EQ(lines, usual) << width << ": a word is broken";
            else
                EXPECT_GT(lines.back(), usual.back()) << width;
            stumps += isStump ? 1 : 0;
        }
    }
    EXPECT_GT(stumps, 6);
    elm_flux_textbox_text_set(middle, "Choose your network on your phone to continue.");
    elm_flux_textbox_text_set(left, "Choose your network on your phone to continue.");
    evas_object_resize(middle, 600, 400);
    evas_object_resize(left, 600, 400);
    ASSERT_NE(linesIn(middle), linesIn(left));
    elm_flux_textbox_align_set(middle, ELM_FLUX_TEXTBOX_ALIGN_LEFT);
    EXPECT_EQ(linesIn(middle), linesIn(left)) << "it keeps the margins of its former alignment";
    for (Evas_Object* box : boxes)
        evas_object_del(box);
}

TEST_F(ALook, OfATextThatIsTooLongHasAnEllipsisInItsNameAndAllThatIsAroundIt)
{
    Evas_Object* box = elm_flux_textbox_add(m_window);
    evas_object_show(box);
    elm_flux_textbox_multiline_set(box, EINA_TRUE);
    const std::string after = "\u2069. \u05d4\u05e2\u05d1\u05e8\u05d4:";
    for (const char* part :
        {"A long name ", "Verylongname", "\u5ba2\u5385", "\u05d0\u05d1\u05d2\u05d3\u05d4 "}) {
        std::string text = "\u05d4\u05ea\u05e7\u05d1\u05dc\u05d5 \u2068";
        for (int i = 0; i < 45; ++i)
            text += part;
        for (const int height : {90, 150, 77}) {
            evas_object_resize(box, 500, height);
            elm_flux_textbox_text_set(box, (text + after).c_str());
            const auto [drawn, taken] = drawnIn(box);
            EXPECT_LE(taken, height) << part;
            const size_t at = drawn.find("…");
            ASSERT_NE(at, std::string::npos) << part;
            EXPECT_EQ(drawn.substr(at), "…" + after);
            EXPECT_GT(taken, height - 40) << "a line is left empty";
        }
        evas_object_resize(box, 900, 900);
        EXPECT_EQ(drawnIn(box).first.find("…"), std::string::npos) << "there is room for all of it now";
    }
    evas_object_del(box);
}

TEST(ATypesetCode, StandsApartInGroups)
{
    const std::string thin = "\u2009";
    const std::string wide = "\u2002";
    const std::pair<std::string, std::string> cases[] = {
        {"", ""},
        {"042", "0" + thin + "4" + thin + "2"},
        {"<color=#29C5FF>042719</color>",
            "<color=#29C5FF>0" + thin + "4" + thin + "2" + wide + "7" + thin + "1" + thin + "9</color>"},
        {"04 27", "0" + thin + "4" + wide + "2" + thin + "7"},
        {"A-1", "A-" + thin + "1"},
    };
    for (const auto& [code, set] : cases)
        EXPECT_EQ(orbis::flux::typesetCode(code), set);
    EXPECT_EQ(orbis::flux::typesetCode("12345678").find(wide), 4 + 3 * thin.size()) << "not in halves";
}

} // namespace
