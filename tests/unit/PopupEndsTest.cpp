/// How the PIN and information popup ends: what leaves the screen, and when.
#include "DaemonThread.h"
#include "Fixtures.h"
#include "TesselUI.h"
#include "vconf.h"

namespace {

using namespace TesselUI;
using Texts = std::vector<std::string>;

constexpr const char* kStartMode = "db/menu/network/tessel_startmode";

class AClosedPopup : public ApplicationTest {
protected:
    /// Shows a popup; notes when it and the window leave the screen, and what the store holds at the exit.
    void request(const char* json)
    {
        letTheGuideBeShown();
        start();
        ASSERT_EQ(vconf_set_str(TESSEL_VCONF, json), VCONF_OK);
        ASSERT_TRUE(toolkit::runUntil([this] { return toolkit::topPopup(m_window) != nullptr; }));
        toolkit::settle();
        const auto onHide = [](void* what, Evas*, Evas_Object*, void*) {
            journal::note(std::string(static_cast<const char*>(what)) + " hidden");
        };
        evas_object_event_callback_add(
            toolkit::topPopup(m_window)->object, EVAS_CALLBACK_HIDE, onHide, const_cast<char*>("popup"));
        evas_object_event_callback_add(m_window, EVAS_CALLBACK_HIDE, onHide, const_cast<char*>("window"));
        toolkit::s_onExit = [this] {
            journal::note("ready " + setting("memory/menu/network/tessel_ocf_ready") + ", start mode "
                + setting(kStartMode) + ", daemon told " + std::to_string(m_daemon->calls().size() - 1));
        };
        journal::clear();
    }
};

TEST_F(AClosedPopup, LeavesInOrderByItsCentreButton)
{
    request(R"({"page":"pin","pin":"0042","mobilename":"Anna"})");
    toolkit::press(m_window, "Return");
    EXPECT_EQ(
        journal::missing({"I Close Button Clicked", "T popup hidden", "T lower", "T window hidden",
            "I Close Popups, stop Tessel, exit from App", "T exit",
            "T ready 1, start mode none, daemon told 0", "I Stop Tessel", "I result:0", "I Stopping Tessel"}),
        "");
    EXPECT_EQ(m_daemon->calls(), (Texts {"ServerStarted(true)", "StopTessel(true, false)"}));
    EXPECT_EQ(setting(kStartMode), "5");
    journal::clear();
    toolkit::advance(70);
    EXPECT_FALSE(journal::has("I PBC Timer expires")) << "it went on counting";
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

} // namespace
