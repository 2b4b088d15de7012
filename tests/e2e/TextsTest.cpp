/// Whatever a phone calls itself, the program stays up and the next popup is right.
#include "TvTest.h"

namespace {

class HostileTexts : public tv::TvTest {
protected:
    static std::vector<std::string> texts()
    {
        return {
            "", "     ", "<b>Anna</b><br><br>", "Bob & Ann", "&", "&amp", "<", "a < b > c",
            "</color></align><color=#ff0000>", "%s%s%n%1%2%3%4%%", "line\nline\r\n\ttab\x01\x7f",
            std::string(255, 'a'), std::string(1 << 20, 'W'), std::string(25000, '&'),
            "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7", // joined emoji
            std::string("\xE2\x80\xAE") + "enohp s'annA", // turns the direction
        };
    }
};

TEST_F(HostileTexts, NeitherCrashItNorLastBeyondTheirPopup)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN"));
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    const tv::Picture before = display().settledPicture();

    for (const std::string& text : texts()) {
        SCOPED_TRACE(text.substr(0, 40) + " (" + std::to_string(text.size()) + " bytes)");
        ASSERT_TRUE(box.request("ShowPinPopup", {text, "0042"}));
        ASSERT_TRUE(display().waitForPicture([](const tv::Picture& now) { return now.count(0x29C5FF) > 0; }))
            << "the phone's name took the PIN with it";
        ASSERT_TRUE(box.request("ShowPinPopup", {"Anna's phone", text}));
        ASSERT_TRUE(box.request("ShowFailedPopup", {text}));
        ASSERT_TRUE(box.request("ShowNetworkTest", {text, text}));
        ASSERT_TRUE(box.request("ShowSSOLoginPopup", {text, text}));
        ASSERT_TRUE(box.request("ShowMobileGuide", {text}));
    }

    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    EXPECT_TRUE(display().waitForPicture([&](const tv::Picture& now) { return now == before; }))
        << display().settledPicture().differences(before) << " pixels differ from the first PIN popup";
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(true));
}

TEST_F(HostileTexts, InTheSettingsDoNotKeepItFromStarting)
{
    const std::string longText(100000, 'x');
    for (const char* key :
        {"db/menu_widget/language", "memory/tessel/ble_tvname", "memory/wizard/wizard_mode"})
        ASSERT_TRUE(box.settings.setText(key, longText + "<&%s"));
    ASSERT_TRUE(box.settings.setText(tv::kStartMode, "not a number"));
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowMobileGuide", {"0042"}));
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(true));
}

} // namespace
