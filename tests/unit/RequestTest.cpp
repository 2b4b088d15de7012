/// Popup requests in the settings store, and the other keys that the application watches.
#include "DaemonThread.h"
#include "Fixtures.h"
#include "TesselUI.h"
#include "vconf.h"

namespace {

using TesselUI::CTesselUI;

class ARequest : public ApplicationTest {
protected:
    void SetUp() override
    {
        ApplicationTest::SetUp();
        start();
        journal::clear();
    }

    /// Serves a request as the store's change would. @return the title of the popup that is up then, or ""
    std::string shownFor(const std::string& json)
    {
        journal::clear();
        EXPECT_EQ(vconf_set_str(TesselUI::TESSEL_VCONF, json.c_str()), VCONF_OK);
        CTesselUI::m_OnMethodPopup(nullptr, nullptr);
        toolkit::settle();
        const auto* popup = toolkit::topPopup(m_window);
        return popup ? toolkit::titleOf(*popup) : "";
    }
};

TEST_F(ARequest, ShowsWhatItsPageNames)
{
    struct Page {
        const char* json;
        const char* titleId; ///< null for nothing
        const char* matched;
        const char* notShown; ///< the line for a popup that was not shown
    };
    const Page pages[] = {
        {R"({"page":"pin","pin":"0042","mobilename":"Anna"})", "SID_PIN",
            "I Method Name matched to Pin Popup", "I Pin Popup Shown"},
        {R"({"page":"tnc"})", "COM_TV_SID_TESSEL", "I Method Name matched to TnC Popup",
            "I TnC login Popup Shown"},
        {R"({"page":"disconnect","step":"sso"})", "COM_SID_INFORMATION",
            "I Method Name matched to Failed Popup", "I Failed Popup Shown"},
        {R"({"page":"success"})", nullptr, "I Method Name matched to Hide Popup", "I Popup Hide"},
    };
    for (const Page& page : pages) {
        EXPECT_EQ(shownFor(page.json), page.titleId ? text(page.titleId) : "") << page.json;
        EXPECT_EQ(journal::missing({"D Vconf for POPUP TESSEL: [" + std::string(page.json) + "]",
                      "I parsingSuccessful[true]  root [" + std::string(page.json) + "] ", page.matched}),
            "");
        EXPECT_FALSE(journal::has(page.notShown));
    }
    EXPECT_EQ(shownFor(R"({"page":"disconnect"})"), text("COM_SID_INFORMATION"));
    EXPECT_TRUE(journal::has("I showWIFIFailedText popup"));

    EXPECT_EQ(shownFor(R"({"page":"mobileDetection","pin":"0042"})"), "");
    EXPECT_EQ(journal::missing({"I Method Name matched to MobileDetection", "I Pin = 0042",
                  "I Mobile Guide PopupShown successfully"}),
        "");
    letTheGuideBeShown();
    EXPECT_EQ(
        shownFor(R"({"page":"mobileDetection"})"), text("TV_SID_TESSEL_CADEC_SETTING_UP_UR_TV_VIA_UR_PH"));
    EXPECT_TRUE(journal::has("I Data is empty pin"));
}

TEST_F(ARequest, ReadsWhateverItsMembersHold)
{
    const auto line = [](const std::string& pin) { return "I Set Meassge [" + pin + "] Mobile Name =  ["; };
    shownFor(R"({"page":"pin"})");
    EXPECT_EQ(
        journal::missing({"I Data is empty mobilename", "I Data is empty pin", "I Pin = ", line("") + "]"}),
        "");
    shownFor(R"({"page":"pin","pin":42,"mobilename":true})");
    EXPECT_TRUE(journal::has(line("42") + "true]"));
    shownFor(R"({"page":"pin","pin":["0042"],"mobilename":{"first":"Anna"}})");
    EXPECT_TRUE(journal::has(line("") + "]"));
    shownFor(R"({"page":"pin","pin":null,"mobilename":"A\u0000nna"})");
    EXPECT_TRUE(journal::has(line("") + "A]"));
    shownFor("{\"page\":\"pin\",\"pin\":\"\xFF\xC3\",\"mobilename\":\"\xE2\x82\"}");
    EXPECT_TRUE(journal::has(line("\xFF\xC3") + "\xE2\x82]"));
    EXPECT_EQ(shownFor(R"({"page":"pin","pin":"<b>&","mobilename":"</color><br>%1%s"})"), text("SID_PIN"));
    EXPECT_EQ(shownFor(R"({"page":"tnc","page":"pin"})"), text("SID_PIN")) << "the last of two counts";
}

TEST_F(ARequest, ShowsNothingWhenItNamesNoPage)
{
    const std::string nothing[] = {R"({"page":"PIN"})", R"({"page":"pin "})", R"({"page":"pin\u0000"})",
        R"({"Page":"pin"})", R"({"page":["pin"]})", R"({"page":{"page":"pin"}})", R"({"page":1})", "{}", "[]",
        R"(["page","pin"])", R"("pin")", "7", "null"};
    for (const std::string& json : nothing) {
        EXPECT_EQ(shownFor(json), "") << json;
        EXPECT_TRUE(journal::has("I parsingSuccessful[true]  root [" + json + "] ")) << json;
    }
    const std::string noJson[] = {"", " ", "pin", R"({"page":"pin")", "{\"page\":\"pin\"", "{page:pin}"};
    for (const std::string& json : noJson) {
        EXPECT_EQ(shownFor(json), "") << json;
        EXPECT_TRUE(journal::has("I parsingSuccessful[false]  root [" + json + "] ")) << json;
    }
    vconf_unset(TesselUI::TESSEL_VCONF);
    journal::clear();
    CTesselUI::m_OnMethodPopup(nullptr, nullptr);
    EXPECT_TRUE(journal::has("E No value in VCONF"));
    vconf_set_int(TesselUI::TESSEL_VCONF, 3);
    CTesselUI::m_OnMethodPopup(nullptr, nullptr);
    EXPECT_EQ(journal::count("E No value in VCONF"), 2) << "a number is no request";
}

TEST_F(ARequest, KeepsThePopupWhenTheNextOneIsBroken)
{
    ASSERT_EQ(shownFor(R"({"page":"tnc"})"), text("COM_TV_SID_TESSEL"));
    EXPECT_EQ(shownFor(R"({"page":"pin)"), text("COM_TV_SID_TESSEL"));
    EXPECT_EQ(shownFor(R"({"page":"Pin"})"), text("COM_TV_SID_TESSEL"));
}

TEST_F(ARequest, MayBeOfAnyDepthAndSize)
{
    constexpr size_t kDepth = 100000;
    EXPECT_EQ(shownFor(std::string(kDepth, '[')), "");
    EXPECT_EQ(shownFor(std::string(kDepth, '[') + std::string(kDepth, ']')), "");
    std::string members;
    for (size_t i = 0; i < kDepth; ++i)
        members += R"({"page":)";
    EXPECT_EQ(shownFor(members), "");

    const std::string mebibyte(1 << 20, 'x');
    EXPECT_EQ(shownFor(R"({"page":"pin","pin":"0042","mobilename":")" + mebibyte + "\"}"), text("SID_PIN"));
    EXPECT_EQ(shownFor(R"({"page":"tnc","other":")" + mebibyte + "\"}"), text("COM_TV_SID_TESSEL"));
    EXPECT_EQ(shownFor(R"({"page":"pin","pin":")" + mebibyte + "\"}"), text("SID_PIN"));
    for (const std::string& shown : toolkit::textsOf(m_window))
        EXPECT_LT(shown.size(), 512U);
}

TEST_F(ARequest, IsServedWhenTheKeyChangesAndNoLongerAfterTheEnd)
{
    vconf_set_str(TesselUI::TESSEL_VCONF, R"({"page":"tnc"})");
    ASSERT_TRUE(toolkit::runUntil([this] { return toolkit::topPopup(m_window) != nullptr; }));
    const int before = journal::count("I showTncText popup");
    vconf_set_str(TesselUI::TESSEL_VCONF, R"({"page":"tnc"})");
    EXPECT_TRUE(toolkit::runUntil([=] { return journal::count("I showTncText popup") == before + 1; }))
        << "the same value once more shows the popup once more";

    for (int mode : {5, 0, 99, -100}) {
        vconf_set_int("db/menu/network/tessel_startmode", mode);
        CTesselUI::m_OnTesselVconfKeyChanged(nullptr, nullptr);
    }
    EXPECT_FALSE(journal::has("T exit"));
    vconf_set_int("db/menu/network/tessel_startmode", 100);
    EXPECT_TRUE(toolkit::runUntil([] { return journal::has("T exit"); }));
    EXPECT_EQ(journal::missing({"I Exiting APP", "T exit", "I END"}), "");

    CTesselUI::OnTerminate(nullptr);
    journal::clear();
    vconf_set_str(TesselUI::TESSEL_VCONF, R"({"page":"pin"})");
    vconf_set_int("memory/settled", 1);
    toolkit::runUntil([] { return false; }, 0.2);
    EXPECT_FALSE(journal::has(R"(D Vconf for POPUP TESSEL: [{"page":"pin"}])")) << "the watch goes on";
    CTesselUI::m_OnMethodPopup(nullptr, nullptr);
    CTesselUI::m_OnDeviceOwned(nullptr, nullptr);
    EXPECT_EQ(journal::count("E Instance NULL, exit app"), 1);
}

TEST_F(ARequest, FindsTheSameApplicationTwice)
{
    CTesselUI* first = CTesselUI::getInstance();
    EXPECT_EQ(CTesselUI::createInstance(), first);
    EXPECT_EQ(CTesselUI::getInstance(), first);
}

} // namespace
