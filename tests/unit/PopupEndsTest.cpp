/// How the PIN and information popup ends, and what the daemon hears of it.
#include "DaemonThread.h"
#include "Fixtures.h"
#include "TesselUI.h"
#include "vconf.h"

namespace {

using namespace TesselUI;
using toolkit::PopupRecord;
using Texts = std::vector<std::string>;

constexpr const char* kReady = "memory/menu/network/tessel_ocf_ready";
constexpr const char* kStartMode = "db/menu/network/tessel_startmode";

class AClosedPopup : public ApplicationTest {
protected:
    /// Notes when popup and window leave the screen, and what the store holds at the request to exit.
    void watch()
    {
        PopupRecord* popup = toolkit::topPopup(m_window);
        ASSERT_NE(popup, nullptr);
        const auto onHide = [](void* what, Evas*, Evas_Object*, void*) {
            journal::note(std::string(static_cast<const char*>(what)) + " hidden");
        };
        evas_object_event_callback_add(popup->object, EVAS_CALLBACK_HIDE, onHide, const_cast<char*>("popup"));
        evas_object_event_callback_add(m_window, EVAS_CALLBACK_HIDE, onHide, const_cast<char*>("window"));
        toolkit::s_onExit = [this] {
            journal::note("ready " + setting(kReady) + ", start mode " + setting(kStartMode)
                + ", daemon told " + std::to_string(m_daemon->calls().size() - 1));
        };
        journal::clear();
    }
    void request(const char* json)
    {
        ASSERT_EQ(vconf_set_str(TESSEL_VCONF, json), VCONF_OK);
        ASSERT_TRUE(toolkit::runUntil([this] { return toolkit::topPopup(m_window) != nullptr; }));
        toolkit::settle();
        watch();
    }
    Texts calls() { return m_daemon->calls(); }
};

TEST_F(AClosedPopup, LeavesInOrderByItsCentreButton)
{
    start();
    request(R"({"page":"pin","pin":"0042","mobilename":"Anna"})");
    toolkit::press(m_window, "Return");
    EXPECT_EQ(journal::missing({"I Close Button Clicked", "T popup hidden", "T lower", "T window hidden",
                  "I Close Popups, stop Tessel, exit from App", "T exit",
                  "T ready 1, start mode none, daemon told 0", "I Stop Tessel", "I Proxy Not NUll",
                  "I result:0", "I Stopping Tessel"}),
        "");
    EXPECT_EQ(calls(), (Texts {"ServerStarted(true)", "StopTessel(true, false)"}));
    EXPECT_EQ(setting(kStartMode), "5");
    journal::clear();
    toolkit::advance(70);
    EXPECT_FALSE(journal::has("I PBC Timer expires")) << "it went on counting";
}

TEST_F(AClosedPopup, WritesNoReadyKeyForOtherContents)
{
    start();
    request(R"({"page":"tnc"})");
    toolkit::press(m_window, "Return");
    EXPECT_TRUE(journal::has("T ready none, start mode none, daemon told 0"));
    EXPECT_EQ(calls().back(), "StopTessel(true, false)");
    EXPECT_EQ(setting(kReady), "none");
}

TEST_F(AClosedPopup, LeavesInOrderByTheGuidesSecondButton)
{
    letTheGuideBeShown();
    start();
    request(R"({"page":"mobileDetection","pin":"0042"})");
    toolkit::press(m_window, "Right");
    toolkit::press(m_window, "Return");
    EXPECT_EQ(journal::missing({"I on_Button2Clicked", "I Close Button Clicked", "T popup hidden", "T lower",
                  "T window hidden", "I Close Popups, stop Tessel, exit from App", "T exit",
                  "T ready none, start mode none, daemon told 0", "I Stop Tessel", "I Stopping Tessel"}),
        "");
    EXPECT_EQ(calls(), (Texts {"ServerStarted(true)", "StopTessel(true, false)"}));
}

TEST_F(AClosedPopup, TurnsIntoTheNetworkHintByTheGuidesFirstButton)
{
    letTheGuideBeShown();
    start();
    request(R"({"page":"mobileDetection","pin":"0042"})");
    Evas_Object* guide = toolkit::topPopup(m_window)->object;
    toolkit::keyDown(m_window, "Return");
    EXPECT_EQ(toolkit::topPopup(m_window)->object, guide) << "the click itself deletes nothing";
    toolkit::keyUp(m_window, "Return");
    toolkit::settle();
    EXPECT_EQ(journal::missing({"I Clos Button Clicked", "I destroy", "I ~CNetworkPopup",
                  "I Show APList popup", "I SetPopUpExpirationTimer", "I END"}),
        "");
    const PopupRecord* hint = toolkit::topPopup(m_window);
    ASSERT_NE(hint, nullptr);
    EXPECT_EQ(toolkit::textsOf(m_window), Texts {text("TV_SID_TESSEL_CADEC_SETUP_VIA_MOBILE")});
    EXPECT_EQ(elm_object_focused_object_get(m_window), hint->buttons[0]);
    EXPECT_FALSE(journal::has("T exit"));
    EXPECT_FALSE(journal::has("T lower"));
    EXPECT_EQ(calls(), Texts {"ServerStarted(true)"});
}

TEST_F(AClosedPopup, DropsTheGuidesPendingJobWhenItIsReplacedFirst)
{
    letTheGuideBeShown();
    start();
    request(R"({"page":"mobileDetection","pin":"0042"})");
    toolkit::click(toolkit::topPopup(m_window)->buttons[0]);
    toolkit::click(toolkit::topPopup(m_window)->buttons[0]);
    vconf_set_str(TESSEL_VCONF, R"({"page":"tnc"})");
    CTesselUI::m_OnMethodPopup(nullptr, nullptr);
    toolkit::settle();
    EXPECT_EQ(toolkit::textsOf(m_window),
        Texts {text("TV_SID_TESSEL_CADEC_SETTING_UP_TV_MOBILE_TERMS_AND_CONDITIONS")});
    EXPECT_FALSE(journal::has("I Show APList popup"));
}

TEST_F(AClosedPopup, TellsTheDaemonThatItGaveUp)
{
    start();
    request(R"({"page":"pin","pin":"0042"})");
    toolkit::advance(62);
    EXPECT_EQ(calls(), (Texts {"ServerStarted(true)", "StopTessel(false, false)"}));
    EXPECT_EQ(setting(kReady), "1");
    EXPECT_FALSE(journal::has("T exit"));
    EXPECT_FALSE(journal::has("T popup hidden"));
}

} // namespace
