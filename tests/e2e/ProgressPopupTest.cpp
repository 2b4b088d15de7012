/// The popups of the network test and the sign-in: what they say, and the question before they are cancelled.
#include "Cards.h"
#include "TvTest.h"

namespace {

using tv::confirmation;

class AProgressPopup : public tv::TvTest, public testing::WithParamInterface<tv::ShownRequest> {
protected:
    void SetUp() override
    {
        box.watchScreen();
        ASSERT_TRUE(box.start());
        ASSERT_TRUE(box.show(GetParam().method, GetParam().texts));
    }

    const tv::Card& card() const { return GetParam().card; }

    /// The popup under the question, with the keys on @p focus.
    testing::AssertionResult asksWithFocusOn(const std::string& focus)
    {
        return box.shows({tv::below(card()), confirmation(focus)});
    }
};

INSTANTIATE_TEST_SUITE_P(Of, AProgressPopup, testing::Values(tv::kNetworkTestRequest, tv::kSignInRequest),
    [](const auto& request) { return request.param.method; });

TEST_P(AProgressPopup, NamesWhatCameFromThePhoneAndStaysUntilAnswered)
{
    ASSERT_TRUE(box.shows({card()}));
    const tv::Screen screen = box.screen();
    EXPECT_GT(screen.dim, 0) << "the picture behind is as bright as before";
    EXPECT_EQ(screen.cards[0].dim, 0) << "the picture behind is dimmed twice";
    EXPECT_EQ(screen.cards[0].half, 0);
    for (const char* key : {"Left", "Right", "Up", "Down", "XF86Back", "XF86Close", "Escape", "Menu"})
        display().key(key);
    // Longer than the two seconds in which it looks after its focus.
    EXPECT_TRUE(tv::stays([&] { return box.program->running(); }, tv::Milliseconds(2500)));
    EXPECT_TRUE(box.shows({card()}));
    EXPECT_EQ(box.program->count("[Focus is not in Close Button],Set Focus"),
        GetParam().method == std::string("ShowNetworkTest") ? 20U : 0U);
    EXPECT_EQ(box.daemon->calls().size(), 1U);
}

TEST_P(AProgressPopup, AsksBeforeItIsCancelledAndKeepsTheKeysInTheQuestion)
{
    display().key("Return");
    ASSERT_TRUE(asksWithFocusOn("Yes"));
    EXPECT_GT(box.screen().cards[1].dim, 0) << "the popup below looks as if it had the keys";
    const std::pair<const char*, const char*> moves[] = {{"Left", "Yes"}, {"Up", "Yes"}, {"Down", "Yes"},
        {"Right", "No"}, {"Right", "No"}, {"Down", "No"}, {"Up", "No"}, {"Left", "Yes"}, {"Tab", "No"},
        {"Tab", "Yes"}};
    for (const auto& [key, focus] : moves) {
        display().key(key);
        EXPECT_TRUE(asksWithFocusOn(focus)) << "after " << key;
    }
}

TEST_P(AProgressPopup, ComesBackAfterNoAndAsksAgain)
{
    const bool halfDims = GetParam().method == std::string("ShowSSOLoginPopup");
    for (int round = 0; round < 3; ++round) {
        SCOPED_TRACE(round);
        display().key("Return");
        ASSERT_TRUE(asksWithFocusOn("Yes"));
        EXPECT_EQ(box.screen().cards[0].half > 0, halfDims);
        display().key("Right");
        ASSERT_TRUE(asksWithFocusOn("No"));
        display().key("Return");
        ASSERT_TRUE(box.shows({card()}));
        EXPECT_EQ(box.screen().cards[0].half, 0);
    }
    EXPECT_EQ(box.daemon->calls().size(), 1U) << "No is no stop";
    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(box.shows({}));
    EXPECT_TRUE(box.screenIsPlain());
}

TEST_P(AProgressPopup, EndsTheProgramAfterYes)
{
    display().key("Return");
    ASSERT_TRUE(asksWithFocusOn("Yes"));
    const size_t mark = box.program->mark();
    display().key("Return");
    EXPECT_TRUE(endedByViewer(false));
    EXPECT_TRUE(box.program->logsInOrder(
        {"clicked on CloseBtnCB*", "Close Popups, stop Tessel, exit from App", "Stop Tessel", "result:0",
            "Stopping Tessel", "In CTesselUI::OnTerminate"},
        mark));
    EXPECT_TRUE(box.screenIsPlain());
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
}

TEST_P(AProgressPopup, IsNotCancelledByAKeyThatIsHeld)
{
    const size_t mark = box.program->mark();
    display().keyDown("Return");
    const bool asked = static_cast<bool>(box.program->waitForLog("clicked on cancelBtnCB", mark));
    const bool lived = tv::stays([&] { return box.program->running(); }, tv::Milliseconds(1500));
    display().keyUp("Return");
    EXPECT_TRUE(asked);
    ASSERT_TRUE(lived) << "the held key answered the question as well";
    EXPECT_TRUE(asksWithFocusOn("Yes"));
}

TEST_P(AProgressPopup, TakesItsQuestionAlongWhenItIsReplaced)
{
    display().key("Return");
    ASSERT_TRUE(asksWithFocusOn("Yes"));
    ASSERT_TRUE(box.request("ShowApListPopup"));
    EXPECT_TRUE(box.shows({tv::kAccessPointsCard}));
    display().key("Return");
    EXPECT_TRUE(endedByViewer(false)) << "one press closes the hint";
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
}

} // namespace
