// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Whatever a phone calls itself, the program stays up, opens nothing, forges no line of its log and shows
/// the next popup right; also when nobody reads that log.
#include "Cards.h"
#include "TvTest.h"

#include <algorithm>

#include <sys/stat.h>

namespace {

class TextsFromOutside : public tv::TvTest { };

TEST_F(TextsFromOutside, OpenNoFileForgeNoLineOfTheLogAndLastNoLongerThanTheirPopup)
{
    // A pipe that a program which opens it waits at for good.
    const std::string pipe = box.folders.root() / "pipe";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    const std::string forged = "Anna\nE/tessel-ui: forged \x1b[31m\r\u009b\u2028";
    const std::string texts[] = {
        "<font=Sans font_source=" + pipe + ">A</font>", "<b font=Sans font_source=" + pipe + ">A</font>",
        forged, "", "     ", "<b>Anna</b><br><br>", "Bob & Ann", "&", "&amp", "<", "a < b > c",
        "</color></align><color=#ff0000>", "%s%s%n%1%2%3%4%%", std::string(255, 'a'),
        std::string(1 << 20, 'W'), std::string(25000, '&'),
        "\xF0\x9F\x91\xA9\xE2\x80\x8D\xF0\x9F\x91\xA7", // joined emoji
        std::string("\xE2\x80\xAE") + "enohp s'annA", // turns the direction
    };
    for (const char* key : {tv::kLanguage, "memory/tessel/ble_tvname", tv::kWizardMode})
        ASSERT_TRUE(box.settings.setText(key, std::string(100000, 'x') + "<&%s"));
    ASSERT_TRUE(box.settings.setText(tv::kStartMode, "not a number"));
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show(tv::kPinRequest));
    const tv::Picture before = display().settledPicture();
    for (const std::string& text : texts) {
        SCOPED_TRACE(text.substr(0, 40) + " (" + std::to_string(text.size()) + " bytes)");
        ASSERT_TRUE(box.request("ShowPinPopup", {text, "0042"}));
        ASSERT_TRUE(display().waitForPicture([](const tv::Picture& now) {
            return now.count(tv::kPinColour) > 0;
        })) << "the phone's name took the PIN with it";
        ASSERT_TRUE(box.request("ShowPinPopup", {"Anna's phone", text}));
        ASSERT_TRUE(box.request("ShowFailedPopup", {text}));
        for (const char* method : {"ShowNetworkTest", "ShowSSOLoginPopup"}) {
            ASSERT_TRUE(box.request(method, {text, text}));
            ASSERT_EQ(box.screen().cards.size(), 1U);
        }
        ASSERT_TRUE(box.request("ShowMobileGuide", {text}));
    }
    ASSERT_TRUE(box.settings.setText(tv::kRequest, "{\"page\":\n\"pin\",\"mobilename\":\"A\\nE/forged\"}"));
    ASSERT_TRUE(box.program->waitForLog("Set Meassge [] Mobile Name =  [A\\nE/forged]"));
    EXPECT_TRUE(box.program->logged(
        "Set Meassge [0042] Mobile Name =  [Anna\\nE/tessel-ui: forged \\x1b[31m\\r\\u009b\\u2028]"));
    for (const std::string& line : box.program->errors()) {
        EXPECT_FALSE(std::any_of(line.begin(), line.end(), [](char c) { return c >= 0 && c < ' '; })) << line;
        EXPECT_TRUE(line.rfind("E/forged", 0) != 0 && line.rfind("E/tessel-ui: forged", 0) != 0) << line;
    }

    ASSERT_TRUE(box.show(tv::kPinRequest));
    EXPECT_TRUE(display().waitForPicture([&](const tv::Picture& now) { return now == before; }))
        << display().settledPicture().differences(before) << " pixels differ from the first PIN popup";
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(true));
}

TEST_F(TextsFromOutside, AreServedAlsoWhenNobodyReadsTheLog)
{
    ASSERT_TRUE(box.start());
    box.program->listenToErrors(false);
    constexpr int kRounds = 12; // more than a pipe holds
    for (int round = 0; round < kRounds; ++round) {
        for (const auto& [method, texts, card] : tv::kRequests)
            ASSERT_TRUE(box.request(method, texts)) << method;
    }
    EXPECT_TRUE(box.shows({tv::kFailedCard}));
    box.program->listenToErrors(true);
    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(tv::waitUntil([&] {
        const auto warnings = box.program->lines("W/");
        return std::any_of(warnings.begin(), warnings.end(),
            [](const std::string& line) { return line.find(" log lines were lost") != std::string::npos; });
    })) << "all lines were taken, or their loss is not told";

    box.program->listenToErrors(false);
    for (int round = 0; round < kRounds * 8; ++round)
        ASSERT_TRUE(box.request("ShowTnCPopup"));
    ASSERT_TRUE(box.settings.setInt(tv::kStartMode, 100));
    EXPECT_TRUE(box.program->endsWith(0));
}

} // namespace
