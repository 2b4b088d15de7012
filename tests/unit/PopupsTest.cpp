// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What all popups have in common: how they come, count, are answered and go.
#include "Fixtures.h"
#include "SettingScreenPopup.h"
#include "Tessel_Conn_Comm_Func.h"
#include "vconf.h"

#include <glib.h>

namespace {

using Keys = std::vector<const char*>;

constexpr const char* kReady = "memory/menu/network/tessel_ocf_ready";
constexpr const char* kStartMode = "db/menu/network/tessel_startmode";

struct Row {
    const char* name;
    Kind kind;
    Keys keys; ///< that lead to its end; the last one is the answer
    int lastTick; ///< the one that gives up, in seconds; 0 for none
    bool lowers; ///< whether its beginning takes the window off the screen
    bool lowersAtItsEnd; ///< when another takes its place
    std::vector<std::string> markers;
};

// What a popup does at its beginning and at its end is its own: each is once before and once behind others.
const Row kRows[] = {
    {"pin", Kind::Pin, {"Return"}, 61, false, false, {}},
    {"terms", Kind::Terms, {"Return"}, 601, true, true, {}},
    {"networks", Kind::Networks, {"Return"}, 601, false, false, {}},
    {"owned", Kind::Owned, {"Return", "Left", "Return"}, 0, true, true, {}},
    {"test", Kind::NetworkTest, {"Return", "Return"}, 0, false, false,
        {"TesselUI :[UI]=>Network Test Popup Appear"}},
    {"sign-in", Kind::SignIn, {"Return", "Return"}, 0, false, true, {}},
    {"no sign-in", Kind::NoSignIn, {"Return"}, 11, true, true, {}},
    {"no network", Kind::NoNetwork, {"Return"}, 11, false, true, {}},
    {"guide", Kind::Guide, {"Right", "Return"}, 0, true, false, {"TesselUI :[UI] Popup Appeared"}},
};

using APopup = ManagerTest;

TEST_F(APopup, LowersTheWindowWhereAStageBeginsOrEndsAndMarksWhenItAppears)
{
    bool lowersAtItsEnd = false;
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        journal::clear();
        toolkit::s_markers.clear();
        EXPECT_EQ(request(row.kind), 0);
        EXPECT_EQ(journal::count("T lower"), (row.lowers ? 1 : 0) + (lowersAtItsEnd ? 1 : 0));
        EXPECT_EQ(toolkit::s_markers, row.markers);
        EXPECT_EQ(get_tessel_popup_type(), row.kind == Kind::SignIn ? 3 : -1);
        lowersAtItsEnd = row.lowersAtItsEnd;
    }
}

TEST_F(APopup, GivesUpOnTheTickAfterItsCountdown)
{
    for (const Row& row : kRows) {
        if (!row.lastTick && row.kind != Kind::Guide)
            continue; // is not of the class that counts
        SCOPED_TRACE(row.name);
        vconf_unset(kReady);
        vconf_unset(kStartMode);
        request(row.kind);
        journal::clear();
        toolkit::advance((row.lastTick ? row.lastTick : 700) - 0.5);
        EXPECT_FALSE(journal::has("I PBC Timer expires"));
        EXPECT_EQ(setting(kStartMode), "none");
        for (double later : {1, 5}) {
            toolkit::advance(later);
            EXPECT_EQ(journal::count("I PBC Timer expires"), row.lastTick ? 1 : 0) << later;
        }
        EXPECT_EQ(setting(kStartMode), row.lastTick ? "5" : "none");
        EXPECT_EQ(setting(kReady), row.kind == Kind::Pin ? "1" : "none");
        EXPECT_FALSE(journal::has("T exit")) << "giving up leaves the end to the daemon";
        EXPECT_FALSE(journal::has("T lower"));
        EXPECT_NE(top(), nullptr) << "it stays on the screen";
    }
}

TEST_F(APopup, CutsLongNamesBetweenCharacters)
{
    const std::string phoneSign = "\xF0\x9F\x93\xB1";
    for (Kind kind : {Kind::Pin, Kind::NetworkTest, Kind::SignIn}) {
        for (size_t length = 244; length < 256; ++length) { // around what a name may have
            std::string name(length % phoneSign.size(), 'x');
            while (name.size() < length)
                name += phoneSign;
            request(kind, name);
            for (const std::string& one : toolkit::textsOf(m_window))
                EXPECT_TRUE(g_utf8_validate(one.c_str(), -1, nullptr)) << length << ": " << one;
        }
    }
}

TEST_F(APopup, OfTheNetworkTestLooksAfterItsFocusTwentyTimesAndLeavesTheQuestionsAlone)
{
    request(Kind::NetworkTest);
    toolkit::settle();
    toolkit::press(m_window, "Return");
    for (const auto& [seconds, looks] : {std::pair(1.9, 19), {0.1, 20}, {1.0, 20}}) {
        toolkit::advance(seconds, 0.1);
        EXPECT_EQ(journal::count("I [Focus is not in Close Button],Set Focus"), looks);
        EXPECT_EQ(focused(), top()->buttons[0]) << "the keys went back to the popup below";
    }
}

class AClosedPopup : public ManagerTest {
protected:
    /// Shows a popup and presses some of the keys that lead to its end.
    void open(const Row& row, size_t keys)
    {
        ASSERT_EQ(request(row.kind), 0);
        toolkit::settle();
        for (size_t i = 0; i < keys; ++i)
            toolkit::press(m_window, row.keys[i]);
    }
};

/// What the daemon is told, and when, is seen with the whole program.
TEST_F(AClosedPopup, IsAnsweredOnceAndGivesTheScreenBackBeforeItAsksForTheEnd)
{
    for (const Row& row : kRows) {
        SCOPED_TRACE(row.name);
        vconf_unset(kReady);
        vconf_unset(kStartMode);
        open(row, row.keys.size() - 1);
        const auto buttons = top()->buttons;
        toolkit::s_onExit = [&] {
            EXPECT_FALSE(evas_object_visible_get(m_window));
            EXPECT_EQ(setting(kReady), row.kind == Kind::Pin ? "1" : "none");
            EXPECT_EQ(setting(kStartMode), "none");
        };
        journal::clear();
        toolkit::press(m_window, row.keys.back());
        for (Evas_Object* button : {buttons[0], buttons[1], buttons[0]}) { // queued behind the answer
            if (button)
                toolkit::click(button);
            toolkit::settle();
        }
        EXPECT_EQ(journal::missing({"T lower", "T exit", "I Stopping Tessel"}), "");
        EXPECT_EQ(journal::count("T exit"), 1);
        EXPECT_FALSE(journal::has("I Show APList popup"));
        toolkit::advance(row.lastTick + 5);
        EXPECT_FALSE(journal::has("I PBC Timer expires")) << "it goes on counting";
    }
}

TEST_F(AClosedPopup, MayGoInTheMiddleOfEachClick)
{
    const auto hide = [](void* manager, Evas_Object*, void*) {
        static_cast<TesselUI::UIManager*>(manager)->hidePopup();
    };
    toolkit::s_onExit = [this] { m_manager->hidePopup(); };
    for (const Row& row : kRows) {
        for (size_t key = 0; key < row.keys.size(); ++key) {
            SCOPED_TRACE(row.name + std::to_string(key));
            open(row, key);
            evas_object_smart_callback_priority_add(
                focused(), "clicked", EVAS_CALLBACK_PRIORITY_AFTER, hide, m_manager.get());
            toolkit::press(m_window, row.keys[key]);
            EXPECT_EQ(top() == nullptr, row.keys[key] == std::string("Return"));
        }
    }
}

TEST_F(AClosedPopup, DropsTheGuidesPendingJobWhenItIsReplacedFirst)
{
    request(Kind::Guide);
    toolkit::settle();
    const auto* guide = top();
    toolkit::click(guide->buttons[0]);
    EXPECT_EQ(top(), guide) << "the click itself deletes nothing";
    toolkit::click(guide->buttons[0]);
    request(Kind::Terms);
    toolkit::settle();
    EXPECT_EQ(toolkit::textsOf(m_window),
        std::vector {text("TV_SID_TESSEL_CADEC_SETTING_UP_TV_MOBILE_TERMS_AND_CONDITIONS")});
    EXPECT_FALSE(journal::has("I Show APList popup"));
}

/// The job deletes the popup that it belongs to, and the handle of itself that the popup holds. Also run
/// where every use of memory is looked at.
TEST_F(AClosedPopup, OfTheGuideMakesWayInItsOwnJob)
{
    request(Kind::Guide);
    toolkit::settle();
    toolkit::click(top()->buttons[0]);
    toolkit::settle();
    EXPECT_EQ(toolkit::textsOf(m_window), std::vector {text("TV_SID_TESSEL_CADEC_SETUP_VIA_MOBILE")});
    EXPECT_EQ(journal::count("I Show APList popup"), 1);
    EXPECT_FALSE(journal::has("T exit")) << "going on with the phone is no stop";
}

using AQuestion = ManagerTest;
using toolkit::strength;

TEST_F(AQuestion, StandsBeforeItsDimmedPopupAndGivesTheKeysBack)
{
    for (Kind kind : {Kind::NetworkTest, Kind::SignIn}) {
        request(kind);
        toolkit::settle();
        const auto* popup = top();
        EXPECT_TRUE(toolkit::shownGroup(m_window, "elm/flux/dim/window"));
        EXPECT_EQ(strength(popup->object, "dim"), 0) << "the picture is dimmed twice";
        toolkit::press(m_window, "Return");
        EXPECT_GT(strength(top()->object, "dim"), 0) << "the popup below is as bright as the question";
        EXPECT_EQ(strength(popup->object, "half") > 0, kind == Kind::SignIn);
        toolkit::press(m_window, "Right");
        toolkit::press(m_window, "Return");
        EXPECT_EQ(top(), popup);
        EXPECT_EQ(strength(popup->object, "half"), 0);
        EXPECT_EQ(focused(), popup->buttons[0]);
    }
    request(Kind::Nothing);
    toolkit::settle();
    EXPECT_FALSE(toolkit::shownGroup(m_window, "elm/flux/dim/window"));
}

TEST_F(AQuestion, GoesWithItsPopupHoweverOftenItWasAsked)
{
    for (Kind kind : {Kind::NetworkTest, Kind::SignIn}) {
        request(kind);
        toolkit::settle();
        Evas_Object* cancel = top()->buttons[0];
        toolkit::click(cancel);
        toolkit::click(cancel);
        EXPECT_EQ(toolkit::shown<toolkit::PopupRecord>(m_window).size(), 3U);
        request(Kind::Terms);
        EXPECT_EQ(toolkit::shown<toolkit::PopupRecord>(m_window).size(), 1U);
    }
}

TEST_F(AQuestion, EndsWhenThePopupThatItTookThePlaceOfIsShownAgain)
{
    TesselUI::SettingScreenPopup popup(m_window, static_cast<Elm_Flux_Popup_Style>(0));
    for (int time = 0; time < 2; ++time) {
        popup.show();
        toolkit::settle();
        const auto* record = top();
        EXPECT_EQ(elm_object_text_get(record->buttons[0]), text("SID_CANCEL"));
        EXPECT_EQ(record->buttons[1], nullptr) << "an answer to a question that is gone";
        EXPECT_EQ(focused(), record->buttons[0]);
        toolkit::press(m_window, "Return");
        EXPECT_EQ(focused(), record->buttons[1]) << "No is the default";
    }
    toolkit::press(m_window, "Return");
    EXPECT_EQ(
        toolkit::textsOf(m_window), std::vector {text("TV_SID_TESSEL_CADEC_SETTING_UP_UR_TV_VIA_UR_PH")});
}

} // namespace
