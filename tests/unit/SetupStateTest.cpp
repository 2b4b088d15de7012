/// What the settings store tells about the set-up, and what is written there.
#include "Fixtures.h"
#include "TesselUI.h"
#include "Tessel_Conn_Comm_Func.h"
#include "Util.h"
#include "vconf.h"

namespace {

using TesselUI::TSUtil;

constexpr const char* kMode = "memory/wizard/wizard_mode";
constexpr const char* kStartMode = "db/menu/network/tessel_startmode";

using TheSetUpsState = ToolkitTest;

TEST_F(TheSetUpsState, IsReadFromTheWizardsModeAndPage)
{
    struct {
        const char* mode;
        int number; ///< of IGetWizardMode()
        bool wizard, network, signIn;
    } const modes[] = {
        {"OFF", 0, false, false, false},
        {"OFFICE", 0, true, false, false},
        {"PNP_SETUP", 1, true, false, false},
        {"INITIAL_SETUP", 2, true, false, false},
        {"VELLUM_SETUP_2", 3, true, false, false},
        {"TERMS_SETUP", 0, false, false, false},
        {"HOTPLUG_SETUP", 0, false, false, false},
        {"NETWORK_SETUP", 0, true, true, false},
        {"SSO_ALONE_SETUP", 0, true, false, true},
        {"off", 0, true, false, false},
    };
    EXPECT_EQ(IGetWizardMode(), 0);
    EXPECT_FALSE(TSUtil::IsWizardMode());
    EXPECT_FALSE(TSUtil::IsAppRunning(TesselUI::MENU_APP_NETWORK_SETUP));
    for (const auto& row : modes) {
        SCOPED_TRACE(row.mode);
        vconf_set_str(kMode, row.mode);
        EXPECT_EQ(IGetWizardMode(), row.number);
        EXPECT_EQ(TSUtil::IsWizardMode(), row.wizard);
        EXPECT_EQ(TSUtil::IsAppRunning(TesselUI::MENU_APP_NETWORK_SETUP), row.network);
        EXPECT_EQ(TSUtil::IsAppRunning(TesselUI::MENU_APP_SSO_ALONE_SETUP), row.signIn);
    }
    const std::pair<TesselUI::WIZRD_PAGE, const char*> pages[] = {
        {TesselUI::WIZRD_PAGE_NETWORK, "NetworkWireless"}, {TesselUI::WIZRD_PAGE_TERMS, "wizard-terms"},
        {TesselUI::WIZRD_PAGE_SSO, "ug-sso-entry"}, {static_cast<TesselUI::WIZRD_PAGE>(1), ""}};
    EXPECT_FALSE(TSUtil::IsPageDisplayed(TesselUI::WIZRD_PAGE_NETWORK));
    for (const auto& [page, name] : pages) {
        for (const auto& [other, shown] : pages) {
            vconf_set_str("db/wizard/wizard_currentpage_name", shown);
            EXPECT_EQ(TSUtil::IsPageDisplayed(page), page == other) << name << " while " << shown;
        }
    }
}

TEST_F(TheSetUpsState, KnowsTheLanguagesThatRunFromRightToLeft)
{
    const std::pair<const char*, bool> languages[] = {{"ur_PK", true}, {"fa_IR.UTF-8", true}, {"ar_EG", true},
        {"he_IL", true}, {"en_US", false}, {"fa", false}, {"AR_EG", false}, {"far_XX", false}, {"", false}};
    for (const auto& [language, reverse] : languages) {
        vconf_set_str("db/menu_widget/language", language);
        EXPECT_EQ(TSUtil::m_IsReveseOSD(), reverse) << language;
    }
}

TEST_F(TheSetUpsState, IsMarkedAsStoppedOnceAfterTheDelay)
{
    for (int round = 0; round < 2; ++round) {
        vconf_set_int(kStartMode, 0);
        TSUtil::SetStopTesselTimer(3);
        toolkit::advance(1);
        TSUtil::SetStopTesselTimer(30); // neither extends the delay nor asks again
        toolkit::advance(1.5, 0.5);
        EXPECT_EQ(setting(kStartMode), "0");
        toolkit::advance(1, 0.5);
        EXPECT_EQ(setting(kStartMode), "5");
        vconf_set_int(kStartMode, 0);
        toolkit::advance(40);
        EXPECT_EQ(setting(kStartMode), "0") << "it stops twice";
    }
    EXPECT_EQ(setting("db/btapp/oob_status"), "none");
    TSUtil::StopTessel(false);
    EXPECT_EQ(setting("db/btapp/oob_status"), "none");
    EXPECT_EQ(setting(kStartMode), "5");
    TSUtil::StopTessel(true);
    EXPECT_EQ(setting("db/btapp/oob_status"), "6");
    TSUtil::SetOOBStatus(-3);
    EXPECT_EQ(setting("db/btapp/oob_status"), "-3");
}

TEST_F(TheSetUpsState, HasThePinAsItIsStored)
{
    int key = -1;
    EXPECT_EQ(Get_Random_PIN(), 5831) << "nothing is stored";
    EXPECT_EQ(Get_Security_Key(&key), 0);
    vconf_set_str("db/bleapp/audio_pin", "1234");
    EXPECT_EQ(Get_Random_PIN(), 5831) << "a text is no PIN";
    for (int pin : {1, 42, 5831, 9999, 123456, 2147483647, 0, -1, -9999}) {
        vconf_set_int("db/bleapp/audio_pin", pin);
        vconf_set_int("db/bleapp/security_key", pin);
        EXPECT_EQ(Get_Random_PIN(), pin);
        EXPECT_EQ(Get_Security_Key(&key), pin > 0 ? 1 : 0) << pin;
        EXPECT_TRUE(pin <= 0 || key == pin);
    }
    EXPECT_EQ(Get_Security_Key(nullptr), 0);
}

TEST_F(TheSetUpsState, EndsTheProgramAt100Only)
{
    TesselUI::CTesselUI::createInstance();
    for (int mode : {0, 99, 101, -100, 100}) {
        vconf_set_int(kStartMode, mode);
        TesselUI::CTesselUI::m_OnTesselVconfKeyChanged(nullptr, nullptr);
        EXPECT_EQ(journal::has("T exit"), mode == 100) << mode;
    }
    TesselUI::CTesselUI::destroyInstance();
}

} // namespace
