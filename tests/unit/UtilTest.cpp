/// Set-up state, settings readers, and what composes and measures texts.
#include "Util.h"
#include "Fixtures.h"
#include "Tessel_Conn_Comm_Func.h"
#include "combinate.h"
#include "vconf.h"

#include <cstring>
#include <memory>

namespace {

using TesselUI::TSUtil;

constexpr const char* kStartMode = "db/menu/network/tessel_startmode";
constexpr const char* kOobStatus = "db/btapp/oob_status";
constexpr const char* kWizardMode = "memory/wizard/wizard_mode";
constexpr const char* kWizardPage = "db/wizard/wizard_currentpage_name";
constexpr const char* kLanguage = "db/menu_widget/language";

constexpr const char* kStyle =
    "DEFAULT='font=NorvaleSans-500 font_size=28 align=left color=#ffffff wrap=word'";

std::string marked(std::string name)
{
    const std::unique_ptr<char, decltype(&free)> copy {TSUtil::AddLTRMarker(name.data()), free};
    return copy.get();
}

std::string combined(const char* format, const char* first, const char* second = nullptr)
{
    char buffer[TesselUI::kCombinedTextSize + 1];
    memset(buffer, '#', sizeof buffer);
    combinate_string(format, first, second, buffer);
    EXPECT_EQ(buffer[TesselUI::kCombinedTextSize], '#') << "written behind the buffer";
    return buffer;
}

class TheSetUpState : public ToolkitTest { };

TEST_F(TheSetUpState, IsMarkedAsStoppedAtOnce)
{
    TSUtil::StopTessel(false);
    EXPECT_EQ(setting(kStartMode), "5");
    EXPECT_EQ(setting(kOobStatus), "none");
    TSUtil::StopTessel(true);
    EXPECT_EQ(setting(kOobStatus), "6");
    TSUtil::SetOOBStatus(-3);
    EXPECT_EQ(setting(kOobStatus), "-3");
    EXPECT_EQ(journal::count("I Success to Set Vocnf Stop Tessel"), 4);
}

TEST_F(TheSetUpState, IsMarkedAsStoppedOnceAfterTheFirstDelay)
{
    TSUtil::SetStopTesselTimer(5);
    toolkit::advance(2);
    TSUtil::SetStopTesselTimer(1);
    EXPECT_EQ(journal::count("I Stop Tessel Timer Already running."), 1);
    toolkit::advance(2);
    EXPECT_EQ(setting(kStartMode), "none") << "the second call shortened the first";
    toolkit::advance(2);
    EXPECT_EQ(setting(kStartMode), "5");
    EXPECT_EQ(setting(kOobStatus), "none");

    vconf_set_int(kStartMode, 0);
    TSUtil::SetStopTesselTimer(1);
    toolkit::advance(5);
    EXPECT_EQ(setting(kStartMode), "5") << "no new delay after the first ended";
    EXPECT_EQ(TSUtil::m_StopTesselTimer, nullptr);
}

TEST_F(TheSetUpState, KnowsTheWizardsPage)
{
    EXPECT_FALSE(TSUtil::IsPageDisplayed(TesselUI::WIZRD_PAGE_NETWORK));
    EXPECT_TRUE(journal::has("E Failed to check wizard page  vconf"));
    const std::pair<TesselUI::WIZRD_PAGE, const char*> pages[] = {
        {TesselUI::WIZRD_PAGE_NETWORK, "NetworkWireless"},
        {TesselUI::WIZRD_PAGE_TERMS, "wizard-terms"},
        {TesselUI::WIZRD_PAGE_SSO, "ug-sso-entry"},
    };
    for (const auto& [page, name] : pages) {
        vconf_set_str(kWizardPage, name);
        for (const auto& [other, otherName] : pages)
            EXPECT_EQ(TSUtil::IsPageDisplayed(other), other == page) << name;
        vconf_set_str(kWizardPage, (std::string(name) + "2").c_str());
        EXPECT_FALSE(TSUtil::IsPageDisplayed(page)) << "only the beginning was compared";
    }
    EXPECT_FALSE(TSUtil::IsPageDisplayed(static_cast<TesselUI::WIZRD_PAGE>(1)));
    vconf_set_str(kWizardPage, "");
    EXPECT_TRUE(TSUtil::IsPageDisplayed(static_cast<TesselUI::WIZRD_PAGE>(1)));
    EXPECT_EQ(journal::count("E Not a valid page request"), 2);
}

TEST_F(TheSetUpState, KnowsTheWizardsMode)
{
    struct Mode {
        const char* value; ///< null for a missing key
        bool network, sso, wizard;
        int number;
    };
    constexpr Mode kModes[] = {
        {nullptr, false, false, false, 0},
        {"OFF", false, false, false, 0},
        {"OFFICE", false, false, true, 0},
        {"TERMS_SETUP", false, false, false, 0},
        {"HOTPLUG_SETUP", false, false, false, 0},
        {"NETWORK_SETUP", true, false, true, 0},
        {"SSO_ALONE_SETUP", false, true, true, 0},
        {"PNP_SETUP_2", false, false, true, 1},
        {"INITIAL_SETUP", false, false, true, 2},
        {"VELLUM_SETUP", false, false, true, 3},
        {"VELLUM", false, false, true, 0},
        {"", false, false, true, 0},
    };
    for (const Mode& mode : kModes) {
        SCOPED_TRACE(mode.value ? mode.value : "missing");
        vconf_unset(kWizardMode);
        if (mode.value)
            vconf_set_str(kWizardMode, mode.value);
        EXPECT_EQ(TSUtil::IsAppRunning(TesselUI::MENU_APP_NETWORK_SETUP), mode.network);
        EXPECT_EQ(TSUtil::IsAppRunning(TesselUI::MENU_APP_SSO_ALONE_SETUP), mode.sso);
        EXPECT_EQ(TSUtil::IsWizardMode(), mode.wizard);
        EXPECT_EQ(IGetWizardMode(), mode.number);
    }
    EXPECT_TRUE(journal::has("I IGetWizardMode PNP_SETUP_2 1"));
}

TEST_F(TheSetUpState, TellsLanguagesWrittenFromRightToLeft)
{
    EXPECT_FALSE(TSUtil::m_IsReveseOSD());
    const std::pair<const char*, bool> languages[] = {{"ar_EG", true}, {"ar_", true}, {"he_IL", true},
        {"fa_IR", true}, {"ur_PK.UTF-8", true}, {"ar", false}, {"he", false}, {"en_US", false}, {"", false},
        {"xar_EG", false}};
    for (const auto& [language, expected] : languages) {
        vconf_set_str(kLanguage, language);
        EXPECT_EQ(TSUtil::m_IsReveseOSD(), expected) << language;
    }
    EXPECT_FALSE(TSUtil::m_StartsWith("ar_", "ar"));
    EXPECT_TRUE(TSUtil::m_StartsWith("", "ar"));
}

TEST_F(TheSetUpState, ReadsNumbersAndTheirSubstitutes)
{
    constexpr const char* kPin = "db/bleapp/audio_pin";
    constexpr const char* kContrast = "db/menu/system/accessibility/highcontrast";
    EXPECT_EQ(Get_Random_PIN(), 5831);
    vconf_set_str(kPin, "1234");
    EXPECT_EQ(Get_Random_PIN(), 5831) << "a text is no number";
    for (int pin : {1234, 0, -7}) {
        vconf_set_int(kPin, pin);
        EXPECT_EQ(Get_Random_PIN(), pin);
    }
    EXPECT_TRUE(journal::has("I Success to Read BLE PIN 1234"));
    EXPECT_TRUE(journal::has("E Failed to Get BLE Audio Pin -7"));

    int key = 42;
    EXPECT_EQ(Get_Security_Key(nullptr), 0);
    EXPECT_EQ(Get_Security_Key(&key), 0);
    EXPECT_EQ(key, 42);
    vconf_set_int("db/bleapp/security_key", 77);
    EXPECT_EQ(Get_Security_Key(&key), 1);
    EXPECT_EQ(key, 77);

    EXPECT_FALSE(IsHighContrastMode());
    for (int value : {0, 1, 2}) {
        vconf_set_int(kContrast, value);
        EXPECT_EQ(IsHighContrastMode(), value == 1) << value;
    }
    EXPECT_EQ(TSUtil::GetBLETVName(), "");
    vconf_set_str("memory/tessel/ble_tvname", "TV \xD7\x90");
    EXPECT_EQ(TSUtil::GetBLETVName(), "TV \xD7\x90");
}

TEST_F(TheSetUpState, KeepsTheProcessWideNumbers)
{
    EXPECT_EQ(get_app_mode(), 0);
    EXPECT_EQ(get_tessel_popup_type(), -1);
    set_app_mode(3);
    set_tessel_popup_type(1);
    EXPECT_EQ(get_app_mode(), 3);
    EXPECT_EQ(get_tessel_popup_type(), 1);
    set_app_mode(0);
    set_tessel_popup_type(-1);
    EXPECT_TRUE(journal::has("I Returned Pop Type 1"));
}

TEST(AName, IsMarkedAndCutAt254Bytes)
{
    EXPECT_EQ(TSUtil::AddLTRMarker(nullptr), nullptr);
    EXPECT_EQ(marked("Anna"),
        "\xE2\x80\x8E"
        "Anna"
        "\xE2\x80\x8F");
    EXPECT_EQ(marked(""), "\xE2\x80\x8E\xE2\x80\x8F");
    EXPECT_EQ(marked(std::string(248, 'n')).size(), 254U);
    EXPECT_EQ(marked(std::string(249, 'n')), "\xE2\x80\x8E" + std::string(249, 'n') + "\xE2\x80");
    EXPECT_EQ(marked(std::string(1 << 20, 'n')), "\xE2\x80\x8E" + std::string(251, 'n'));
}

TEST(ACombinedSentence, TakesItsArgumentsInAnyOrder)
{
    EXPECT_EQ(combined("%1 has joined %2.", "Anna", "home"), "Anna has joined home.");
    EXPECT_EQ(combined("%2/%1/%1", "a", "b"), "b/a/a");
    EXPECT_EQ(combined("%1%2", "a", nullptr), "a");
    EXPECT_EQ(combined(nullptr, "a"), "");
    EXPECT_EQ(combined("100%% %s %n %9 %", "a"), "100% %s %n %9 %");
    EXPECT_EQ(combined("<%1>", "%2%1%s"), "<%2%1%s>") << "an argument was read as a template";
    combinate_string("%1", "a", nullptr, nullptr);
}

TEST(ACombinedSentence, IsCutBetweenCharactersAt254Bytes)
{
    EXPECT_EQ(combined("%1", std::string(254, 'x').c_str()), std::string(254, 'x'));
    EXPECT_EQ(combined("%1", std::string(300, 'x').c_str()), std::string(254, 'x'));
    const std::string euro = "\xE2\x82\xAC";
    for (size_t before : {251U, 252U, 253U, 254U}) {
        const std::string start(before, 'x');
        EXPECT_EQ(combined("%1%2", start.c_str(), euro.c_str()), before == 251U ? start + euro : start);
        EXPECT_EQ(combined((start + euro).c_str(), ""), before == 251U ? start + euro : start);
    }
}

class ATextsLines : public WindowTest {
protected:
    int lines(const std::string& text, int width = 808)
    {
        return TSUtil::m_GetTextNumLines(m_window, kStyle, text.c_str(), width);
    }
};

TEST_F(ATextsLines, AreCountedAtTheGivenWidth)
{
    EXPECT_EQ(lines(""), 0);
    EXPECT_EQ(lines("word"), 1);
    EXPECT_EQ(lines("one<br>two<br>three"), 3);
    EXPECT_EQ(lines("one<br><br>three"), 2) << "an empty line holds nothing";
    EXPECT_EQ(lines(std::string(500, 'm')), 1) << "a word has no place to wrap";
    EXPECT_EQ(TSUtil::m_GetTextNumLines(nullptr, kStyle, "word", 808), 0);
    EXPECT_EQ(TSUtil::m_GetTextNumLines(m_window, nullptr, nullptr, 808), 0);

    std::string text = "mmm";
    while (lines(text) == 1 && text.size() < 500)
        text += " mmm";
    EXPECT_EQ(lines(text), 2) << text;
    EXPECT_EQ(lines(text, 1700), 1) << "the text that just wraps at 808 pixels";
    EXPECT_GT(lines(text, 200), 3);
}

} // namespace
