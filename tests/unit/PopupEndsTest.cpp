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
    const char* key;
    const char* json; ///< null: the number 1
    Texts keys; ///< that lead to the end
    Texts lines; ///< of the answer itself
    const char* ready; ///< the ready key
};

class AClosedPopup : public ApplicationTest, public testing::WithParamInterface<End> {
protected:
    /// Shows a popup; notes when it and the window leave the screen, and what the store holds at the exit.
    void request(const char* key, const char* json)
    {
        letTheGuideBeShown();
        start();
        ASSERT_EQ(json ? vconf_set_str(key, json) : vconf_set_int(key, 1), VCONF_OK);
        ASSERT_TRUE(toolkit::runUntil([this] { return toolkit::topPopup(m_window) != nullptr; }));
        toolkit::settle();
        const auto onHide = [](void* what, Evas*, Evas_Object*, void*) {
            journal::note(std::string(static_cast<const char*>(what)) + " hidden");
        };
        evas_object_event_callback_add(
            toolkit::topPopup(m_window)->object, EVAS_CALLBACK_HIDE, onHide, const_cast<char*>("popup"));
        evas_object_event_callback_add(m_window, EVAS_CALLBACK_HIDE, onHide, const_cast<char*>("window"));
        toolkit::s_onExit = [this] {
            journal::note("ready " + setting(kReady) + ", start mode " + setting(kStartMode));
            // The popups may go while they are in the middle of their click.
            vconf_set_str(TESSEL_VCONF, R"({"page":"success"})");
            CTesselUI::m_OnMethodPopup(nullptr, nullptr);
            EXPECT_EQ(toolkit::topPopup(m_window), nullptr);
        };
        journal::clear();
    }
};

TEST_P(AClosedPopup, AsksForTheEndBeforeItTellsTheDaemon)
{
    const End& end = GetParam();
    request(end.key, end.json);
    for (const std::string& key : end.keys)
        toolkit::press(m_window, key.c_str());
    Texts order = end.lines;
    const std::string atExit = std::string("T ready ") + end.ready + ", start mode none";
    for (const char* line :
        {"T exit", atExit.c_str(), "I Stop Tessel", "I Proxy Not NUll", "I result:0", "I Stopping Tessel"})
        order.emplace_back(line);
    EXPECT_EQ(journal::missing(order), "");
    EXPECT_EQ(told(2), (Texts {"ServerStarted true", "StopTessel true false"}));
    EXPECT_EQ(setting(kStartMode), "5");
    EXPECT_EQ(setting(kReady), end.ready);
    journal::clear();
    toolkit::advance(70);
    EXPECT_FALSE(journal::has("I PBC Timer expires")) << "it went on counting";
}

INSTANTIATE_TEST_SUITE_P(Of, AClosedPopup,
    testing::Values(
        End {"Pin", TESSEL_VCONF, R"({"page":"pin","pin":"0042","mobilename":"Anna"})", {"Return"},
            {"I Close Button Clicked", "T popup hidden", "T lower", "T window hidden",
                "I Close Popups, stop Tessel, exit from App"},
            "1"},
        End {"NetworkTest", TESSEL_VCONF, R"({"page":"wifi","ssid":"Attic"})", {"Return", "Return"},
            {"I clicked on CloseBtnCB", "I Close Popups, stop Tessel, exit from App", "T lower",
                "T window hidden"},
            "none"},
        End {"SignIn", TESSEL_VCONF, R"({"page":"sso","account":"anna"})", {"Return", "Return"},
            {"I clicked on CloseBtnCB ", "I Close Popups, stop Tessel, exit from App", "T lower",
                "T window hidden"},
            "none"},
        End {"SettingScreen", DEVICE_OWNED_VCONF, nullptr, {"Return", "Left", "Return"},
            {"I START", "T popup hidden", "T lower", "T window hidden"}, "none"},
        End {"Guide", TESSEL_VCONF, R"({"page":"mobileDetection","pin":"0042"})", {"Right", "Return"},
            {"I Close Button Clicked", "T popup hidden", "T lower", "T window hidden",
                "I Close Popups, stop Tessel, exit from App"},
            "none"}),
    [](const auto& end) { return end.param.name; });

TEST_F(AClosedPopup, IsAnsweredOnce)
{
    const struct {
        const char* json;
        size_t slot; ///< the button that closes it
        bool asks; ///< whether it asks first
    } popups[] = {
        {R"({"page":"pin","pin":"0042"})", 0, false},
        {R"({"page":"mobileDetection"})", 1, false},
        {R"({"page":"wifi","ssid":"Attic"})", 0, true},
        {R"({"page":"sso","account":"anna"})", 0, true},
    };
    size_t stops = 1;
    for (const auto& [json, slot, asks] : popups) {
        SCOPED_TRACE(json);
        if (m_window)
            vconf_set_str(TESSEL_VCONF, json);
        else
            request(TESSEL_VCONF, json);
        toolkit::s_onExit = nullptr;
        CTesselUI::m_OnMethodPopup(nullptr, nullptr);
        toolkit::settle();
        const auto own = toolkit::topPopup(m_window)->buttons;
        auto answers = own;
        if (asks) {
            toolkit::click(own[0]);
            answers = toolkit::topPopup(m_window)->buttons;
        }
        journal::clear();
        toolkit::click(answers.at(asks ? 0 : slot));
        for (int round = 0; round < 2; ++round) { // clicks that were queued behind the answer
            for (Evas_Object* button : answers)
                toolkit::click(button);
            for (Evas_Object* button : own)
                toolkit::click(button);
            toolkit::settle();
        }
        EXPECT_EQ(journal::count("T exit"), 1);
        EXPECT_EQ(journal::count("I Stop Tessel"), 1);
        EXPECT_FALSE(journal::has("I Show APList popup"));
        toolkit::advance(70);
        EXPECT_EQ(journal::count("I ++PBC Timer Entered [60]"), 0) << "the countdown goes on";
        EXPECT_FALSE(journal::has("I PBC Timer expires"));
        EXPECT_EQ(told(++stops).back(), "StopTessel true false");
    }
}

TEST_F(AClosedPopup, DropsTheGuidesPendingJobWhenItIsReplacedFirst)
{
    request(TESSEL_VCONF, R"({"page":"mobileDetection","pin":"0042"})");
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
    request(TESSEL_VCONF, R"({"page":"mobileDetection","pin":"0042"})");
    toolkit::s_onExit = nullptr;
    toolkit::click(toolkit::topPopup(m_window)->buttons[0]);
    toolkit::settle();
    EXPECT_EQ(journal::missing({"I Clos Button Clicked", "I START", "I Show APList popup", "I END"}), "");
    EXPECT_EQ(toolkit::textsOf(m_window), Texts {text("TV_SID_TESSEL_CADEC_SETUP_VIA_MOBILE")});
    EXPECT_EQ(journal::count("I Show APList popup"), 1);
    EXPECT_EQ(told(1), Texts {"ServerStarted true"}) << "going on with the phone is no stop";
}

} // namespace
