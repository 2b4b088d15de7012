// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// One popup at a time, and nothing after it; what each shows is in the sessions of ScenarioTest.
#include "Cards.h"
#include "TvTest.h"

#include <unistd.h>

namespace {

using Texts = std::vector<std::string>;
using tv::ShownRequest;

class Requests : public tv::TvTest {
protected:
    void SetUp() override { ASSERT_TRUE(box.start()); }

    /// Tells whether the phone owns the TV. Success when the program has heard it, and shows this.
    testing::AssertionResult own(int value, const std::vector<tv::Card>& cards)
    {
        const size_t mark = box.program->mark();
        box.settings.setInt(tv::kOwned, value);
        const auto heard = box.program->waitForLog("DEVICE_OWNED_VCONF == " + std::to_string(value), mark);
        return heard ? box.shows(cards) : heard;
    }
};

TEST_F(Requests, LeaveNothingAfterEitherWayToHide)
{
    for (const auto& [method, texts, card] : tv::kRequests) {
        SCOPED_TRACE(method);
        ASSERT_TRUE(box.request(method, texts));
        ASSERT_TRUE(box.shows({card}));
        ASSERT_TRUE(box.request("HidePopup"));
        ASSERT_TRUE(box.shows({}));
        EXPECT_TRUE(box.screenIsPlain());
        EXPECT_FALSE(display().hasKeys(box.program->pid()));
        ASSERT_TRUE(box.request(method, texts));
        ASSERT_TRUE(box.shows({card}));
        ASSERT_TRUE(box.settings.setText(tv::kRequest, R"({"page":"success"})"));
        ASSERT_TRUE(box.shows({}));
    }
    EXPECT_FALSE(box.program->logged("Popup Hide")) << "that line is for a hide that did not work";
    EXPECT_TRUE(box.request("HidePopup")) << "with nothing to hide";
    // What the interface does not offer is refused by the bus, arguments of another type too.
    EXPECT_FALSE(box.request("ShowNothing"));
    EXPECT_FALSE(box.request("ShowPinPopup", {"0042"}));

    // The popup of an owned TV comes for one only, and once; only a request takes it away.
    for (int value : {0, 2, -1})
        EXPECT_TRUE(own(value, {}));
    for (int value : {1, 1, 0})
        EXPECT_TRUE(own(value, {tv::kOwnedCard}));
    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(box.shows({}));
    EXPECT_FALSE(box.program->logged("AfterPairingPopup Shown")) << "that line is for one that was not shown";
    EXPECT_EQ(box.daemon->calls().size(), 1U) << "none of this is a stop";
}

TEST_F(Requests, TakeAQuestionAlongAndAreNotDisturbedByASecondLaunch)
{
    for (const ShownRequest& request : {tv::kNetworkTestRequest, tv::kSignInRequest}) {
        SCOPED_TRACE(request.method);
        ASSERT_TRUE(box.show(request));
        ASSERT_TRUE(box.press({"Return"}));
        const std::vector<tv::Card> asking {tv::below(request.card), tv::confirmation("Yes")};
        ASSERT_TRUE(box.shows(asking));
        const size_t mark = box.program->mark();
        const auto second = box.launch();
        EXPECT_TRUE(second->endsWith(0)) << second->tail();
        EXPECT_FALSE(second->logged("In CTesselUI::OnCreate"));
        EXPECT_TRUE(exists(box.folders.appStatus(tv::kPackage))) << "the entry is the first one's";
        ASSERT_TRUE(box.program->waitForLog("In CTesselUI ::On Service ", mark));
        EXPECT_TRUE(box.shows(asking));
        EXPECT_TRUE(display().hasKeys(box.program->pid()));
        ASSERT_TRUE(box.request("ShowApListPopup"));
        EXPECT_TRUE(box.shows({tv::kAccessPointsCard}));
    }
    EXPECT_EQ(box.daemon->calls().size(), 1U);
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(false)) << "one press closes the hint";
    EXPECT_EQ(box.program->complaints(), Texts {});
}

TEST_F(Requests, ShowTheGuideWhenTheWizardIsInView)
{
    constexpr const char* kNetworkSetting = "org.orbis.NetworkSetting-Orbis";
    constexpr const char* kSignIn = "org.orbis.sso";
    struct {
        const char* mode;
        const char* package; ///< the setting program of that mode
        int status; ///< 2: it has the keys, 3: it can be seen, 4: neither, 0: it does not run
        bool shown;
    } const wizards[] = {
        {"OFF", nullptr, 0, false},
        {"FIRST_RUN", nullptr, 0, true},
        {"NETWORK_SETUP", kNetworkSetting, 0, false},
        {"NETWORK_SETUP", kNetworkSetting, 2, true},
        {"NETWORK_SETUP", kNetworkSetting, 3, true},
        {"NETWORK_SETUP", kNetworkSetting, 4, false},
        {"SSO_ALONE_SETUP", kSignIn, 0, false},
        {"SSO_ALONE_SETUP", kSignIn, 2, true},
        {"SSO_ALONE_SETUP", kSignIn, 4, false},
    };
    for (const auto& [mode, package, status, shown] : wizards) {
        SCOPED_TRACE(mode + std::to_string(status));
        ASSERT_TRUE(box.settings.setText(tv::kWizardMode, mode));
        if (status != 0)
            tv::writeFile(box.folders.appStatus(package),
                std::to_string(getpid()) + " " + std::to_string(status) + "\n");
        ASSERT_TRUE(box.request("ShowApListPopup"));
        const size_t mark = box.program->mark();
        ASSERT_TRUE(box.request("ShowMobileGuide", {"0042"}));
        // A refused guide still takes the popup before it away.
        EXPECT_TRUE(box.shows(shown ? std::vector {tv::kGuideCard} : std::vector<tv::Card> {}));
        EXPECT_EQ(box.program->logged("Mobile Guide PopupShown successfully", mark), !shown);
    }
}

/// A television's processor is slow, and the film behind has to run.
TEST_F(Requests, AreDrawnOnceButForASpinnerAndTheTimeThatIsLeft)
{
    constexpr int kSpinner = 13 * 8; // pixels, with what the canvas rounds to
    constexpr int kTimeLine = 105 * 8 * 16; // likewise
    const auto drawnIn = [&](int milliseconds) {
        box.screen();
        tv::pass(tv::Milliseconds(milliseconds));
        return box.screen();
    };
    ASSERT_TRUE(box.show(tv::kPinRequest));
    const tv::Screen waiting = drawnIn(2500);
    EXPECT_GE(waiting.pictures, 2) << "nobody sees how much time is left";
    EXPECT_LE(waiting.pictures, 3);
    EXPECT_LE(waiting.pixels, waiting.pictures * kTimeLine) << "more than the line is drawn";
    ASSERT_TRUE(box.show(tv::kNetworkTestRequest));
    const tv::Screen moving = drawnIn(1500);
    EXPECT_GT(moving.pictures, 10) << "the spinner stands still";
    EXPECT_LE(moving.pixels, moving.pictures * kSpinner * kSpinner) << "more than the spinner is drawn";
    ASSERT_TRUE(box.settings.setInt(tv::kHighContrast, 1));
    ASSERT_TRUE(box.show(tv::kNetworkTestRequest));
    EXPECT_LE(drawnIn(2500).pictures, 3) << "there is none but calm motion in high contrast";
    ASSERT_TRUE(box.show(tv::kPinRequest));
    EXPECT_EQ(drawnIn(2500).pictures, 0) << "the ring loses a quarter at a time";
}

} // namespace
