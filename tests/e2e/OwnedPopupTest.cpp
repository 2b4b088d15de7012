/// The popup over the settings screen, which comes when the phone takes the TV over.
#include "Cards.h"
#include "TvTest.h"

namespace {

class TheOwnedPopup : public tv::TvTest {
protected:
    void SetUp() override
    {
        box.watchScreen();
        ASSERT_TRUE(box.start());
    }

    void own(int value)
    {
        const size_t mark = box.program->mark();
        ASSERT_TRUE(box.settings.setInt(tv::kOwned, value));
        ASSERT_TRUE(box.program->waitForLog("DEVICE_OWNED_VCONF == " + std::to_string(value), mark));
    }

    void appear()
    {
        own(1);
        ASSERT_TRUE(box.shows({tv::kOwnedCard}));
    }
};

TEST_F(TheOwnedPopup, ComesForOneOnlyAndOnceHoweverOftenItIsWritten)
{
    for (int value : {0, 2, -1})
        own(value);
    EXPECT_TRUE(box.shows({}));
    appear();
    own(1);
    EXPECT_TRUE(box.shows({tv::kOwnedCard})) << "the second write";
    own(0);
    EXPECT_TRUE(box.shows({tv::kOwnedCard})) << "only a request takes it away";
    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(box.shows({}));
    EXPECT_FALSE(box.program->logged("AfterPairingPopup Shown")) << "that line is for one that was not shown";
}

TEST_F(TheOwnedPopup, TurnsIntoItsQuestionAndBack)
{
    appear();
    for (int round = 0; round < 4; ++round) {
        SCOPED_TRACE(round);
        display().key("Return");
        ASSERT_TRUE(box.shows({tv::kOwnedQuestion}));
        display().key("Return");
        ASSERT_TRUE(box.shows({tv::kOwnedCard}));
    }
    EXPECT_GT(box.screen().cards[0].dim, 0) << "nothing else dims the picture behind it";
    EXPECT_EQ(box.daemon->calls().size(), 1U) << "No is no stop";
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
}

TEST_F(TheOwnedPopup, EndsTheProgramAfterYes)
{
    appear();
    display().key("Return");
    ASSERT_TRUE(box.shows({tv::kOwnedQuestion}));
    for (const auto& [key, focus] :
        {std::pair {"Right", "No"}, {"Down", "No"}, {"Left", "Yes"}, {"Left", "Yes"}}) {
        display().key(key);
        ASSERT_TRUE(box.shows({tv::withFocusOn(focus, tv::kOwnedQuestion)})) << "after " << key;
    }
    display().key("Return");
    EXPECT_TRUE(endedByViewer(false));
    EXPECT_TRUE(box.screenIsPlain());
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
}

} // namespace
