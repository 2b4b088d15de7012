// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the settings store tells about the set-up, and what is written there.
#include "Fixtures.h"
#include "Tessel_Conn_Comm_Func.h"
#include "Util.h"
#include "vconf.h"

namespace {

using TesselUI::TSUtil;
using namespace std::string_literals;

constexpr const char* kMode = "memory/wizard/wizard_mode";
constexpr const char* kStartMode = "db/menu/network/tessel_startmode";

using TheSetUpsState = ToolkitTest;

TEST_F(TheSetUpsState, IsReadFromTheWizardsModeAndPage)
{
    const struct {
        const char* mode;
        int number; ///< of IGetWizardMode()
        bool wizard;
    } modes[] = {
        {"OFF", 0, false},
        {"OFFICE", 0, true},
        {"PNP_SETUP", 1, true},
        {"INITIAL_SETUP", 2, true},
        {"VELLUM_SETUP_2", 3, true},
        {"TERMS_SETUP", 0, false},
        {"HOTPLUG_SETUP", 0, false},
        {"NETWORK_SETUP", 0, true},
        {"SSO_ALONE_SETUP", 0, true},
        {"off", 0, true},
    };
    EXPECT_EQ(IGetWizardMode(), 0);
    EXPECT_FALSE(TSUtil::IsWizardMode());
    for (const auto& [mode, number, wizard] : modes) {
        vconf_set_str(kMode, mode);
        EXPECT_EQ(IGetWizardMode(), number) << mode;
        EXPECT_EQ(TSUtil::IsWizardMode(), wizard) << mode;
        EXPECT_EQ(TSUtil::IsAppRunning(TesselUI::MENU_APP_NETWORK_SETUP), mode == "NETWORK_SETUP"s) << mode;
        EXPECT_EQ(TSUtil::IsAppRunning(TesselUI::MENU_APP_SSO_ALONE_SETUP), mode == "SSO_ALONE_SETUP"s)
            << mode;
    }
    const std::pair<TesselUI::WIZRD_PAGE, const char*> pages[] = {
        {TesselUI::WIZRD_PAGE_NETWORK, "NetworkWireless"}, {TesselUI::WIZRD_PAGE_TERMS, "wizard-terms"},
        {TesselUI::WIZRD_PAGE_SSO, "ug-sso-entry"}, {static_cast<TesselUI::WIZRD_PAGE>(1), ""}};
    for (const auto& [page, name] : pages) {
        EXPECT_FALSE(TSUtil::IsPageDisplayed(page)) << name;
        vconf_set_str("db/wizard/wizard_currentpage_name", name);
        EXPECT_TRUE(TSUtil::IsPageDisplayed(page)) << name;
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
    TSUtil::StopTessel(false);
    EXPECT_EQ(setting("db/btapp/oob_status"), "none");
    EXPECT_EQ(setting(kStartMode), "5");
    TSUtil::StopTessel(true);
    EXPECT_EQ(setting("db/btapp/oob_status"), "6");
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

} // namespace
