/// The guide, which is for the viewer of the set-up wizard only.
#include "Cards.h"
#include "TvTest.h"

#include <unistd.h>

namespace {

constexpr const char* kNetworkSetting = "org.orbis.NetworkSetting-Orbis";
constexpr const char* kSignIn = "org.orbis.sso";
constexpr const char* kRefusedLine = "Mobile Guide PopupShown successfully"; // logged when it was not shown
constexpr int kFocus = 2;
constexpr int kVisible = 3;
constexpr int kBackground = 4;

class TheGuide : public tv::TvTest {
protected:
    void SetUp() override { ASSERT_TRUE(box.start()); }

    /// Asks for the guide over a popup that is up. @return whether the guide was shown instead of it
    bool isShown()
    {
        EXPECT_TRUE(box.request("ShowApListPopup"));
        EXPECT_TRUE(box.shows({tv::kAccessPointsCard}));
        const size_t mark = box.program->mark();
        EXPECT_TRUE(box.request("ShowMobileGuide", {"0042"}));
        box.screen(); // what was logged has been collected meanwhile
        const bool isRefused = box.program->logged(kRefusedLine, mark);
        if (isRefused)
            EXPECT_TRUE(box.shows({})) << "a refused guide still takes the popup before it away";
        else
            EXPECT_TRUE(box.shows({tv::kGuideCard}));
        return !isRefused;
    }
};

TEST_F(TheGuide, IsShownWhenTheWizardIsInView)
{
    EXPECT_FALSE(isShown()) << "no wizard runs";
    ASSERT_TRUE(box.settings.setInt(tv::kWizardMode, 1));
    EXPECT_FALSE(isShown()) << "the mode is no text";
    struct {
        const char* mode;
        const char* package; ///< the setting program of that mode
        int status;
        bool shown;
    } const wizards[] = {
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
    for (const auto& wizard : wizards) {
        SCOPED_TRACE(std::string(wizard.mode) + " " + std::to_string(wizard.status));
        ASSERT_TRUE(box.settings.setText(tv::kWizardMode, wizard.mode));
        if (wizard.package)
            box.folders.setAppStatus(wizard.package, getpid(), wizard.status);
        EXPECT_EQ(isShown(), wizard.shown);
    }
}

TEST_F(TheGuide, GoesOnToTheAccessPointHint)
{
    ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN"));
    ASSERT_TRUE(box.show("ShowMobileGuide", {"0042"}));
    const size_t mark = box.program->mark();
    // A key that is held down must not answer the hint as well.
    display().keyDown("Return");
    ASSERT_TRUE(box.program->waitForLog("Show APList popup", mark));
    const bool lived = tv::stays([&] { return box.program->running(); }, tv::Milliseconds(1500));
    display().keyUp("Return");
    ASSERT_TRUE(lived) << "the held key went through both popups";
    EXPECT_TRUE(
        box.program->logsInOrder({"Clos Button Clicked", "Show APList popup", "showTncText popup"}, mark));
    EXPECT_EQ(box.daemon->calls().size(), 1U) << "going on is no stop";

    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(false));
}

} // namespace
