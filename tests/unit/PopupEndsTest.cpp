/// How the popups end by the viewer: what leaves the screen, what is told, and when.
#include "Fixtures.h"
#include "TesselUI.h"
#include "vconf.h"

namespace {

using namespace TesselUI;
using Texts = std::vector<std::string>;

constexpr const char* kStartMode = "db/menu/network/tessel_startmode";
constexpr const char* kReady = "memory/menu/network/tessel_ocf_ready";

struct End {
    const char* name;
    const char* json; ///< null: the TV is owned
    Texts keys; ///< that lead to the end; the last one is the answer
    Texts lines; ///< of the answer itself
    const char* ready; ///< the ready key
};

class AClosedPopup : public ApplicationTest, public testing::WithParamInterface<End> {
protected:
    /// Shows a popup; notes when it and the window leave the screen, and what the store holds at the exit.
    void request(const char* json)
    {
        letTheGuideBeShown();
        start();
        ASSERT_EQ(json ? vconf_set_str(TESSEL_VCONF, json) : vconf_set_int(DEVICE_OWNED_VCONF, 1), VCONF_OK);
        ASSERT_TRUE(toolkit::runUntil([this] { return toolkit::topPopup(m_window) != nullptr; }));
        toolkit::settle();
        const auto onHide = [](void* what, Evas*, Evas_Object*, void*) {
            journal::note(std::string(static_cast<const char*>(what)) + " hidden");
        };
        evas_object_event_callback_add(
            toolkit::topPopup(m_window)->object, EVAS_CALLBACK_HIDE, onHide, const_cast<char*>("popup"));
        evas_object_event_callback_add(m_window, EVAS_CALLBACK_HIDE, onHide, const_cast<char*>("window"));
        toolkit::s_onExit = [] {
            journal::note("ready " + setting(kReady) + ", start mode " + setting(kStartMode));
        };
        journal::clear();
    }
};

TEST_P(AClosedPopup, IsAnsweredOnceAndAsksForTheEndBeforeItTellsTheDaemon)
{
    const End& end = GetParam();
    request(end.json);
    auto buttons = toolkit::topPopup(m_window)->buttons;
    for (size_t i = 0; i + 1 < end.keys.size(); ++i)
        toolkit::press(m_window, end.keys[i].c_str());
    const auto answers = toolkit::topPopup(m_window)->buttons;
    toolkit::press(m_window, end.keys.back().c_str());
    for (int round = 0; round < 2 && end.json; ++round) { // clicks that were queued behind the answer
        for (Evas_Object* button : {answers[0], answers[1], buttons[0], buttons[1]}) {
            if (button)
                toolkit::click(button);
        }
        toolkit::settle();
    }
    Texts order = end.lines;
    const std::string atExit = std::string("T ready ") + end.ready + ", start mode none";
    for (const char* line :
        {"T exit", atExit.c_str(), "I Stop Tessel", "I Proxy Not NUll", "I result:0", "I Stopping Tessel"})
        order.emplace_back(line);
    EXPECT_EQ(journal::missing(order), "");
    EXPECT_EQ(journal::count("T exit"), 1);
    EXPECT_FALSE(journal::has("I Show APList popup"));
    EXPECT_EQ(setting(kStartMode), "5");
    EXPECT_EQ(setting(kReady), end.ready);
    journal::clear();
    toolkit::advance(70);
    EXPECT_FALSE(journal::has("I PBC Timer expires")) << "it went on counting";
    EXPECT_EQ(told(2), (Texts {"ServerStarted true", "StopTessel true false"}));
}

INSTANTIATE_TEST_SUITE_P(Of, AClosedPopup,
    testing::Values(End {"Pin", R"({"page":"pin","pin":"0042","mobilename":"Anna"})", {"Return"},
                        {"I Close Button Clicked", "T popup hidden", "T lower", "T window hidden",
                            "I Close Popups, stop Tessel, exit from App"},
                        "1"},
        End {"NetworkTest", R"({"page":"wifi","ssid":"Attic"})", {"Return", "Return"},
            {"I clicked on CloseBtnCB", "I Close Popups, stop Tessel, exit from App", "T lower",
                "T window hidden"},
            "none"},
        End {"SignIn", R"({"page":"sso","account":"anna"})", {"Return", "Return"},
            {"I clicked on CloseBtnCB ", "I Close Popups, stop Tessel, exit from App", "T lower",
                "T window hidden"},
            "none"},
        End {"SettingScreen", nullptr, {"Return", "Left", "Return"},
            {"I START", "T popup hidden", "T lower", "T window hidden"}, "none"},
        End {"Guide", R"({"page":"mobileDetection","pin":"0042"})", {"Right", "Return"},
            {"I Close Button Clicked", "T popup hidden", "T lower", "T window hidden",
                "I Close Popups, stop Tessel, exit from App"},
            "none"}),
    [](const auto& end) { return end.param.name; });

TEST_F(AClosedPopup, MayBeReplacedInTheMiddleOfItsAnswer)
{
    request(R"({"page":"pin","pin":"0042"})");
    toolkit::s_onExit = [this] {
        vconf_set_str(TESSEL_VCONF, R"({"page":"success"})");
        CTesselUI::m_OnMethodPopup(nullptr, nullptr);
        EXPECT_EQ(toolkit::topPopup(m_window), nullptr);
    };
    toolkit::press(m_window, "Return");
    EXPECT_EQ(told(2).back(), "StopTessel true false");
}

TEST_F(AClosedPopup, DropsTheGuidesPendingJobWhenItIsReplacedFirst)
{
    request(R"({"page":"mobileDetection","pin":"0042"})");
    const auto* guide = toolkit::topPopup(m_window);
    toolkit::click(guide->buttons[0]);
    EXPECT_EQ(toolkit::topPopup(m_window), guide) << "the click itself deletes nothing";
    toolkit::click(guide->buttons[0]);
    vconf_set_str(TESSEL_VCONF, R"({"page":"tnc"})");
    CTesselUI::m_OnMethodPopup(nullptr, nullptr);
    toolkit::settle();
    EXPECT_EQ(toolkit::textsOf(m_window),
        Texts {text("TV_SID_TESSEL_CADEC_SETTING_UP_TV_MOBILE_TERMS_AND_CONDITIONS")});
    EXPECT_FALSE(journal::has("I Show APList popup"));
}

/// The job deletes the popup that it belongs to, and the handle of itself that the popup holds. Also run
/// where every use of memory is looked at.
TEST_F(AClosedPopup, OfTheGuideMakesWayInItsOwnJob)
{
    request(R"({"page":"mobileDetection","pin":"0042"})");
    toolkit::s_onExit = nullptr;
    toolkit::click(toolkit::topPopup(m_window)->buttons[0]);
    toolkit::settle();
    EXPECT_EQ(journal::missing({"I Clos Button Clicked", "I START", "I Show APList popup", "I END"}), "");
    EXPECT_EQ(toolkit::textsOf(m_window), Texts {text("TV_SID_TESSEL_CADEC_SETUP_VIA_MOBILE")});
    EXPECT_EQ(journal::count("I Show APList popup"), 1);
    EXPECT_EQ(told(1), Texts {"ServerStarted true"}) << "going on with the phone is no stop";
}

} // namespace
