/// The one window and the popup on it.
#include "Fixtures.h"
#include "aul.h"
#include "vconf.h"

namespace {

using TesselUI::UIManager;
using toolkit::PopupRecord;

class TheUiManager : public ManagerTest {
protected:
    size_t popups() const { return toolkit::shown<PopupRecord>(m_window).size(); }
};

TEST_F(TheUiManager, LowersTheWindowForSomeRequestsAndShowsOnePopupAtATime)
{
    struct Request {
        const char* name;
        std::function<int(UIManager&)> send;
        bool lowers;
        int result;
        const char* line; ///< in the log
    };
    std::string pin = "0042";
    std::string phone = "Anna";
    const auto failed = [](const char* step) {
        return [step](UIManager& manager) {
            std::string copy = step;
            return manager.showFailedPopup(copy);
        };
    };
    const Request requests[] = {
        {"pin", [&](UIManager& m) { return m.showPinPopup(phone, pin); }, false, 0, "I Pin = 0042"},
        {"hint", [](UIManager& m) { return m.showApListPopup(); }, false, 0, "I Show APList popup"},
        {"sign-in", failed("sso"), true, 0, "I Show sso fail popup"},
        {"terms", [](UIManager& m) { return m.showTncPopup(); }, true, 0, "I showTncText popup"},
        {"failed", failed(""), false, 0, "I Show wifi/normal fail popup"},
        {"SSO", failed("SSO"), false, 0, "I Show wifi/normal fail popup"},
        {"guide", [&](UIManager& m) { return m.showGuidePopup(pin); }, true, -2,
            "I Wizard app is not in foreground,Dont show tessel popup"},
        {"hide", [](UIManager& m) { return m.hidePopup(); }, true, 0, "I START"},
    };
    for (const Request& request : requests) {
        SCOPED_TRACE(request.name);
        m_manager->showApListPopup(); // a popup whose end does not lower by itself
        toolkit::settle();
        ASSERT_EQ(popups(), 1U);
        const Evas_Object* former = toolkit::topPopup(m_window)->object;
        journal::clear();
        EXPECT_EQ(request.send(*m_manager), request.result);
        EXPECT_TRUE(journal::has(request.line));
        EXPECT_EQ(journal::count("I ~CNetworkPopup"), 1);
        EXPECT_EQ(journal::has("T lower"), request.lowers);
        toolkit::settle();
        const bool shows = request.result == 0 && std::string(request.name) != "hide";
        ASSERT_EQ(popups(), shows ? 1U : 0U);
        EXPECT_EQ(evas_object_visible_get(m_window), shows);
        if (shows) {
            EXPECT_NE(toolkit::topPopup(m_window)->object, former);
        }
    }
    letTheGuideBeShown();
    EXPECT_EQ(m_manager->showGuidePopup(pin), 0);
    EXPECT_EQ(popups(), 1U);
}

TEST_F(TheUiManager, AsksThePlatformOnlyForApplicationsOfTheMenu)
{
    struct Case {
        const char* mode; ///< null for a missing key
        const char* app; ///< null for one that does not run
        aul_app_status status;
        bool running;
    };
    constexpr const char* kNetwork = "org.orbis.NetworkSetting-Orbis";
    constexpr const char* kSignIn = "org.orbis.sso";
    constexpr Case kCases[] = {
        {nullptr, "org.orbis.wizard", STATUS_FOCUS, false},
        {"OFF", "org.orbis.wizard", STATUS_FOCUS, false},
        {"INITIAL_SETUP", nullptr, STATUS_BG, true},
        {"anything", nullptr, STATUS_BG, true},
        {"NETWORK_SETUP", nullptr, STATUS_BG, false},
        {"NETWORK_SETUP", kNetwork, STATUS_FOCUS, true},
        {"NETWORK_SETUP", kNetwork, STATUS_VISIBLE, true},
        {"NETWORK_SETUP", kNetwork, STATUS_BG, false},
        {"NETWORK_SETUP", kNetwork, STATUS_LAUNCHING, false},
        {"NETWORK_SETUP", kNetwork, STATUS_CREATED, false},
        {"NETWORK_SETUP", kSignIn, STATUS_FOCUS, false},
        {"SSO_ALONE_SETUP", kSignIn, STATUS_VISIBLE, true},
        {"SSO_ALONE_SETUP", kNetwork, STATUS_FOCUS, false},
    };
    for (const Case& row : kCases) {
        SCOPED_TRACE(std::string(row.mode ? row.mode : "missing") + ", " + (row.app ? row.app : "no app")
            + " " + std::to_string(row.status));
        vconf_unset("memory/wizard/wizard_mode");
        if (row.mode)
            vconf_set_str("memory/wizard/wizard_mode", row.mode);
        if (row.app) {
            ASSERT_EQ(aul_app_set_status(row.app, row.status), 0);
        }
        EXPECT_EQ(m_manager->IsWizardRunning(), row.running);
        if (row.app) {
            ASSERT_EQ(aul_app_remove_status(row.app), 0);
        }
    }
    EXPECT_TRUE(journal::has("I StrPkg =>org.orbis.sso ,aul_app_is_running =>1"));
    EXPECT_TRUE(journal::has("I aul_app_get_status status =>4"));
    EXPECT_TRUE(journal::has("D IsWizardRunning => 1 , strPkg =>org.orbis.sso"));
}

TEST_F(TheUiManager, MakesItsWindowOnce)
{
    m_manager->createWindow();
    EXPECT_TRUE(journal::has("I UI already Initialized"));
    EXPECT_EQ(toolkit::windows(), std::vector<Evas_Object*> {m_window});
    EXPECT_TRUE(elm_win_alpha_get(m_window));
    EXPECT_EQ(toolkit::boxOf(m_window), (toolkit::Box {0, 0, 1920, 1080}));
}

TEST_F(TheUiManager, TakesWindowAndPopupAlong)
{
    m_manager->showTncPopup();
    journal::clear();
    m_manager.reset();
    EXPECT_EQ(journal::missing({"I START", "T lower", "I ~CNetworkPopup", "I END"}), "");
    toolkit::settle();
    EXPECT_TRUE(toolkit::windows().empty());
}

TEST_F(TheUiManager, SurvivesTheEndOfItsWindow)
{
    std::string pin = "0042";
    letTheGuideBeShown();
    m_manager->showGuidePopup(pin);
    evas_object_del(m_window);
    toolkit::settle();
    m_manager->showPinPopup(pin, pin);
    m_manager->showTncPopup();
    m_manager->showApListPopup();
    toolkit::advance(3);
    m_manager->showFailedPopup(pin);
    EXPECT_EQ(m_manager->hidePopup(), 0);
    EXPECT_TRUE(toolkit::windows().empty());

    UIManager without; // a window that could not be made
    without.showPinPopup(pin, pin);
    without.showGuidePopup(pin);
    toolkit::advance(2);
}

} // namespace
