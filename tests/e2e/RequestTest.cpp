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

    /// Tells whether the phone owns the TV.
    void own(int value)
    {
        const size_t mark = box.program->mark();
        ASSERT_TRUE(box.settings.setInt(tv::kOwned, value));
        ASSERT_TRUE(box.program->waitForLog("DEVICE_OWNED_VCONF == " + std::to_string(value), mark));
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
    EXPECT_NE(box.daemon->request("ShowNothing").error, "");
    EXPECT_NE(box.daemon->request("ShowPinPopup", {"0042"}).error, "");

    // The popup of an owned TV comes for one only, and once.
    for (int value : {0, 2, -1})
        own(value);
    EXPECT_TRUE(box.shows({}));
    for (int value : {1, 1, 0}) {
        own(value);
        EXPECT_TRUE(box.shows({tv::kOwnedCard})) << "only a request takes it away";
    }
    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(box.shows({}));
    EXPECT_FALSE(box.program->logged("AfterPairingPopup Shown")) << "that line is for one that was not shown";
    EXPECT_EQ(box.daemon->calls().size(), 1U) << "none of this is a stop";
}

TEST_F(Requests, ReplaceOneAnotherHoweverQuicklyTheyCome)
{
    const ShownRequest failed {"ShowFailedPopup", {"sso"}, tv::kFailedCard};
    const ShownRequest hide {"HidePopup", {}, {}};
    const std::vector<ShownRequest> series[] = {
        {tv::kPinRequest, tv::kTermsRequest, failed, tv::kPinRequest, hide, failed, tv::kPinRequest},
        {tv::kTermsRequest, tv::kPinRequest, failed, hide},
        {hide, tv::kPinRequest, failed, tv::kTermsRequest, tv::kAccessPointsRequest},
    };
    size_t all = 0;
    for (const auto& requests : series) {
        for (const auto& request : requests)
            box.daemon->send(request.method, request.texts);
        all += requests.size();
        ASSERT_TRUE(tv::waitUntil([&] { return box.daemon->replies().size() == all; }));
        const tv::Card& last = requests.back().card;
        EXPECT_TRUE(box.shows(last.title.empty() ? std::vector<tv::Card> {} : std::vector {last}));
    }
    for (const tv::Reply& reply : box.daemon->replies())
        EXPECT_EQ(reply.value, "(0,)") << reply.error;
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(false)) << "one popup must have been left, and not the PIN";
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
        const auto second = box.launch({"LAUNCH_MODE=POPUP"});
        EXPECT_TRUE(second->endsWith(0)) << second->tail();
        EXPECT_FALSE(second->logged("In CTesselUI::OnCreate"));
        EXPECT_NE(box.folders.appStatus(tv::kPackage), std::nullopt) << "the entry is the first one's";
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
    constexpr int kFocus = 2;
    constexpr int kVisible = 3;
    constexpr int kBackground = 4;
    struct {
        const char* mode; ///< null: no wizard runs
        const char* package; ///< the setting program of that mode
        int status;
        bool shown;
    } const wizards[] = {
        {nullptr, nullptr, 0, false},
        {"OFF", nullptr, 0, false},
        {"FIRST_RUN", nullptr, 0, true},
        {"off", nullptr, 0, true},
        {"", nullptr, 0, true},
        {"NETWORK_SETUP", nullptr, 0, false},
        {"NETWORK_SETUP", kNetworkSetting, kFocus, true},
        {"NETWORK_SETUP", kNetworkSetting, kVisible, true},
        {"NETWORK_SETUP", kNetworkSetting, kBackground, false},
        {"SSO_ALONE_SETUP", nullptr, 0, false},
        {"SSO_ALONE_SETUP", kSignIn, kFocus, true},
        {"SSO_ALONE_SETUP", kSignIn, kVisible, true},
        {"SSO_ALONE_SETUP", kSignIn, kBackground, false},
    };
    for (const auto& [mode, package, status, shown] : wizards) {
        SCOPED_TRACE(std::string(mode ? mode : "none") + " " + std::to_string(status));
        ASSERT_TRUE(
            mode ? box.settings.setText(tv::kWizardMode, mode) : box.settings.remove(tv::kWizardMode));
        if (package)
            box.folders.setAppStatus(package, getpid(), status);
        ASSERT_TRUE(box.request("ShowApListPopup"));
        const size_t mark = box.program->mark();
        ASSERT_TRUE(box.request("ShowMobileGuide", {"0042"}));
        // A refused guide still takes the popup before it away.
        EXPECT_TRUE(box.shows(shown ? std::vector {tv::kGuideCard} : std::vector<tv::Card> {}));
        EXPECT_EQ(box.program->logged("Mobile Guide PopupShown successfully", mark), !shown);
    }
}

/// A television's processor is slow, and the film behind has to run.
TEST_F(Requests, AreDrawnOnceButForATurningSpinner)
{
    constexpr int kTile = 8; // what the canvas rounds to, pixels
    constexpr int kSpinner = 12 * 8 + kTile; // layout units, each 8 pixels
    const auto drawnIn = [&](int milliseconds) {
        box.drawn();
        tv::pass(tv::Milliseconds(milliseconds));
        return box.drawn();
    };
    ASSERT_TRUE(box.show(tv::kPinRequest));
    EXPECT_EQ(drawnIn(2500).pictures, 0) << "while its seconds pass";
    ASSERT_TRUE(box.show(tv::kNetworkTestRequest));
    const tv::Screen moving = drawnIn(1500);
    EXPECT_GT(moving.pictures, 10) << "the spinner stands still";
    EXPECT_LE(moving.drawn.width, kSpinner) << moving.drawn;
    EXPECT_LE(moving.drawn.height, kSpinner) << moving.drawn;
    ASSERT_TRUE(box.settings.setInt("db/menu/system/accessibility/highcontrast", 1));
    ASSERT_TRUE(box.show(tv::kNetworkTestRequest));
    EXPECT_EQ(drawnIn(1500).pictures, 0) << "there is no motion in high contrast";
}

} // namespace
