// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a viewer hears who has the screen read out: when, in which words, and how often.
#include "Fixtures.h"
#include "Folders.h"
#include "elm_flux.h"
#include "flux/SpokenText.h"
#include "vconf.h"

namespace {

using Lines = std::vector<std::string>;

constexpr const char* kReader = "db/menu/system/accessibility/screenreader";

class TheReadOut : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        setenv("ORBIS_SPEECH_LOG", m_log.c_str(), 1);
        vconf_set_int(kReader, 1);
    }
    void TearDown() override
    {
        WindowTest::TearDown();
        unsetenv("ORBIS_SPEECH_LOG");
    }

    /// @return what was said since the last call
    Lines heard()
    {
        toolkit::settle();
        const Lines all = tv::readLines(m_log);
        const Lines result(all.begin() + static_cast<ptrdiff_t>(m_heard), all.end());
        m_heard = all.size();
        return result;
    }
    Evas_Object* textbox(
        Evas_Object* layout, const char* text, Elm_Flux_Textbox_Size size = ELM_FLUX_TEXTBOX_SIZE_BODY)
    {
        Evas_Object* box = elm_flux_textbox_add(layout);
        elm_flux_textbox_size_set(box, size);
        elm_flux_textbox_text_set(box, text);
        elm_flux_layout_append(layout, box, 400, 50);
        return box;
    }
    /// A popup with a title, a text, a code and buttons, not yet shown.
    Evas_Object* codePopup(const char* code, std::initializer_list<const char*> labels)
    {
        Evas_Object* result = popup(labels);
        elm_flux_popup_title_set(result, "Phone");
        m_layout = elm_flux_layout_add(result);
        m_text = textbox(m_layout, "Type this:<br>Bob &amp; Ann");
        textbox(m_layout, code, ELM_FLUX_TEXTBOX_SIZE_DIGITS);
        textbox(m_layout, "Phone"); // which is the title
        textbox(m_layout, "");
        elm_flux_popup_content_set(result, m_layout, 400, 200);
        return result;
    }
    /// Makes @p button tell @p information, and counts how often it is asked.
    void inform(Evas_Object* button, const char* information)
    {
        m_information = information;
        const auto tell = [](void* data, Evas_Object*) {
            auto* self = static_cast<TheReadOut*>(data);
            ++self->m_asked;
            return strdup(self->m_information);
        };
        elm_access_info_cb_set(button, ELM_ACCESS_INFO, tell, this);
    }
    static void countDown(Evas_Object* popup, int left)
    {
        elm_object_signal_emit(popup, ("countdown," + std::to_string(left) + ",60").c_str(), "");
        toolkit::settle();
    }

    const tv::Folders m_folders;
    const std::string m_log = m_folders.root() / "speech";
    size_t m_heard = 0;
    Evas_Object* m_layout = nullptr;
    Evas_Object* m_text = nullptr;
    const char* m_information = "";
    int m_asked = 0;
};

TEST_F(TheReadOut, AnnouncesAPopupWholeAndThenOnlyWhatIsNew)
{
    Evas_Object* both = codePopup("04 27", {"Yes", "No"});
    show(both);
    EXPECT_EQ(heard(), (Lines {"Phone. Type this: Bob & Ann. 0 4, 2 7. Yes. Button, 1 of 2."}));
    toolkit::focusWindow(m_window);
    elm_object_focus_set(button(both, 0), EINA_TRUE);
    EXPECT_EQ(heard(), Lines {}) << "that is no news";
    toolkit::press(m_window, "Right");
    EXPECT_EQ(heard(), (Lines {"No. Button, 2 of 2."}));

    Evas_Object* upper = popup({});
    elm_flux_popup_title_set(upper, "Over it!");
    show(upper);
    EXPECT_EQ(heard(), (Lines {"Over it!"})) << "nobody has the keys in it";
    evas_object_del(upper);
    EXPECT_EQ(heard(), (Lines {"No. Button, 2 of 2."})) << "the viewer is back where he was";

    elm_flux_textbox_text_set(m_text, "Really?");
    toolkit::press(m_window, "Left");
    EXPECT_EQ(heard(), (Lines {"Really? Yes. Button, 1 of 2."}));
    elm_flux_textbox_text_set(m_text, "Almost done.");
    EXPECT_EQ(heard(), (Lines {"Almost done."})) << "no key was pressed";
    elm_flux_textbox_text_set(m_text, "Really?");
    heard();
    evas_object_hide(both);
    EXPECT_EQ(heard(), Lines {});
    show(both);
    EXPECT_EQ(heard()[0].rfind("Phone. Really? 0 4, 2 7. ", 0), 0U) << "it is shown again";
}

TEST_F(TheReadOut, SaysAHintAndATextThatComeUpBehindWhatIsBeingSaid)
{
    Evas_Object* guide = codePopup("1", {"OK"});
    Evas_Object* hint = elm_flux_object_tooltip_add(m_text, m_window);
    elm_flux_object_tooltip_text_set(hint, "Look &lt;here");
    show(guide);
    EXPECT_EQ(heard(), (Lines {"Phone. Type this: Bob & Ann. 1. OK. Button."}));
    elm_flux_object_tooltip_show(hint);
    EXPECT_EQ(heard(), (Lines {"Look <here."}));
    toolkit::press(m_window, "Down");
    EXPECT_EQ(heard(), (Lines {"1. Phone. Type this: Bob & Ann. Look <here. OK. Button."}));
    evas_object_del(hint);
    toolkit::press(m_window, "Down");
    EXPECT_EQ(heard(), (Lines {"1. Phone. Type this: Bob & Ann. OK. Button."}));
}

TEST_F(TheReadOut, RepeatsAllForAKeyThatDoesNothingElse)
{
    Evas_Object* both = codePopup("AB12", {"Yes", "No"});
    show(both);
    heard();
    const Lines all {"A B 1 2. Phone. Type this: Bob & Ann. Yes. Button, 1 of 2."};
    toolkit::press(m_window, "Up");
    EXPECT_EQ(heard(), all);
    for (int i = 0; i < 5; ++i) {
        toolkit::keyDown(m_window, "Down");
        EXPECT_EQ(heard(), i == 0 ? all : Lines {}) << "it is held";
    }
    toolkit::keyUp(m_window, "Down");
    elm_object_focus_next_object_set(button(both, 0), button(both, 1), ELM_FOCUS_DOWN);
    toolkit::press(m_window, "Down");
    EXPECT_EQ(heard(), (Lines {"No. Button, 2 of 2."})) << "the key leads somewhere";
    vconf_set_int(kReader, 0);
    toolkit::press(m_window, "Up");
    EXPECT_EQ(heard(), Lines {});
}

TEST_F(TheReadOut, AsksAButtonOnceEachTimeAndBelievesWhatIsOfItsPopup)
{
    constexpr const char* kWidgets = "Phone. Type this: Bob & Ann. 0 0 4 2. Yes. Button, 1 of 2.";
    constexpr const char* kFurther = "Phone. It lies in the hall. 0 0 4 2. Yes. Button, 1 of 2.";
    // All that is drawn; more than that, with the name of another button; what is of another popup.
    const std::pair<const char*, const char*> cases[] = {
        {"Phone,Phone,Type this:\nBob & Ann,0042,,Yes,No,", kWidgets},
        {"PhoneType this:\nBob & Ann0042,Yes", kWidgets},
        {"Phone,Phone,,It lies in the hall,0042,Yes,No,", kFurther},
        {"Another,It lies in the hall,No", kWidgets}};
    for (const auto& [information, said] : cases) {
        SCOPED_TRACE(information);
        Evas_Object* both = codePopup("0042", {"Yes", "No"});
        inform(button(both, 0), information);
        m_asked = 0;
        show(both);
        EXPECT_EQ(heard(), Lines {said});
        EXPECT_EQ(m_asked, 1);
        toolkit::press(m_window, "Right");
        toolkit::press(m_window, "Left");
        EXPECT_EQ(heard(), (Lines {"No. Button, 2 of 2.", "Yes. Button, 1 of 2."}))
            << "what it tells is known";
        EXPECT_EQ(m_asked, 2) << "each time that the focus came to it";
        toolkit::press(m_window, "Up");
        EXPECT_EQ(m_asked, 2);
        EXPECT_EQ(heard()[0].find("It lies") == std::string::npos, said == kWidgets);
        evas_object_del(both);
    }
}

TEST_F(TheReadOut, BeginsWithTheReaderAndEndsWithIt)
{
    vconf_set_int(kReader, 0);
    toolkit::settle();
    Evas_Object* both = codePopup("7", {"Yes", "No"});
    inform(button(both, 1), "No");
    show(both);
    toolkit::press(m_window, "Right");
    toolkit::press(m_window, "Up");
    countDown(both, 10);
    EXPECT_EQ(heard(), Lines {});
    vconf_set_int(kReader, 1);
    ASSERT_TRUE(toolkit::runUntil([&] { return !tv::readLines(m_log).empty(); }));
    EXPECT_EQ(heard(), (Lines {"Phone. Type this: Bob & Ann. 7. No. Button, 2 of 2."}));
    EXPECT_EQ(m_asked, 0) << "the focus came to it before";
    vconf_set_int(kReader, 1);
    toolkit::runUntil([] { return false; }, 0.1);
    EXPECT_EQ(heard(), Lines {}) << "it was on already";
    for (const int value : {0, 1}) {
        vconf_set_int(kReader, value);
        toolkit::runUntil([&] { return tv::readLines(m_log).size() > m_heard; }, value == 0 ? 0.1 : 8.0);
    }
    EXPECT_EQ(heard(), (Lines {"Phone. Type this: Bob & Ann. 7. No. Button, 2 of 2."})) << "it was off";
}

TEST_F(TheReadOut, SaysThatItStillWorksAndThatItGoes)
{
    Evas_Object* progress = codePopup("1", {"Cancel"});
    Evas_Object* spinner = elm_flux_progressbar_add(m_layout);
    elm_flux_layout_append(m_layout, spinner, 50, 50);
    show(progress);
    heard();
    const Lines still {"Still working."};
    toolkit::advance(9);
    EXPECT_EQ(heard(), Lines {});
    toolkit::advance(1);
    EXPECT_EQ(heard(), still);
    toolkit::advance(29);
    EXPECT_EQ(heard(), Lines {});
    toolkit::advance(1);
    EXPECT_EQ(heard(), still);
    toolkit::advance(29);
    toolkit::press(m_window, "Up");
    EXPECT_EQ(heard().size(), 1U);
    toolkit::advance(29);
    EXPECT_EQ(heard(), Lines {}) << "something else was said";
    toolkit::advance(1);
    EXPECT_EQ(heard(), still);

    Evas_Object* upper = popup({"Yes"});
    show(upper);
    heard();
    toolkit::advance(60);
    EXPECT_EQ(heard(), Lines {}) << "there is nothing to wait for in it";
    for (int left = 12; left >= 0; --left) {
        countDown(progress, left);
        countDown(progress, left);
    }
    EXPECT_EQ(heard(), Lines {"Closes in 10 seconds."});
    for (const char* nonsense : {"countdown,", "countdown,1x", "countdown,10x,60", "countdown,99999999999,1"})
        elm_object_signal_emit(upper, nonsense, "");
    EXPECT_EQ(heard(), Lines {});
    evas_object_del(upper);
    vconf_set_int(kReader, 0);
    toolkit::settle();
    heard();
    toolkit::advance(60);
    EXPECT_EQ(heard(), Lines {});

    vconf_set_int(kReader, 1);
    Evas_Object* failure = codePopup("2", {"OK"});
    evas_object_show(failure);
    elm_object_signal_emit(failure, "countdown,10,10", "");
    EXPECT_EQ(heard(), Lines {"Phone. Type this: Bob & Ann. 2. OK. Button."}) << "it has only just come up";
    countDown(failure, 10);
    EXPECT_EQ(heard(), Lines {"Closes in 10 seconds."});
    countDown(failure, 10);
    EXPECT_EQ(heard(), Lines {});
}

TEST(ASpokenText, IsOneCleanLineOfSentences)
{
    using namespace orbis::flux;
    const std::pair<const char*, const char*> codes[] = {{"042", "0 4 2"}, {"04 27", "0 4, 2 7"},
        {"AB12", "A B 1 2"}, {" 1 \n 2 ", "1, 2"}, {"", ""}, {"é٤", "é ٤"}, {"\u200e0\u200f4", "0 4"},
        {"\xff"
         "7",
            "7"},
        {"e\u03011", "e\u0301 1"}};
    for (const auto& [code, said] : codes)
        EXPECT_EQ(spelled(code), said);
    EXPECT_EQ(sentences({"PIN", "", " ", "\u2068\u2069", "Go:", "now!", "«Да»", "说。", "है।", "…",
                  "\u202ex.\u202c"}),
        "PIN. Go: now! «Да». 说。 है। \u202ex.\u202c");
    EXPECT_EQ(spokenLine(" a\tb\n\x01 \u2068c\u2069\xc3 d "), "a b c d");
    EXPECT_EQ(spokenLine("from  . To: , a .5 ; b :"), "from. To:, a .5; b:");
    EXPECT_EQ(plainText("Bob & Ann <3<br><b>x</b> &amp; y"), "Bob & Ann <3\nx & y");
    EXPECT_EQ(
        withDigitsApart("In 2024, 802 of A1234, é5678: 00421"), "In 2 0 2 4, 802 of A1234, é5678: 0 0 4 2 1");
}

} // namespace
