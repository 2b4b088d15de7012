/// What the program says to a viewer who has the screen read out.
#include "TvTest.h"

namespace {

using tv::waitUntil;

class TheReadOut : public tv::TvTest {
protected:
    void startWith(int screenReader)
    {
        ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, screenReader));
        ASSERT_TRUE(box.start());
    }

    bool waitForUtterances(size_t count)
    {
        return waitUntil([&] { return box.utterances().size() >= count; });
    }

    static bool contains(const std::string& text, const std::string& part)
    {
        return text.find(part) != std::string::npos;
    }
};

TEST_F(TheReadOut, NamesThePhoneThePinAndTheButtonOnce)
{
    startWith(1);
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    ASSERT_TRUE(waitForUtterances(1));
    // The countdown looks after the focus every second; that must not be heard.
    ASSERT_TRUE(box.program->waitForLog("++PBC Timer Entered [59]"));
    const auto said = box.utterances();
    ASSERT_EQ(said.size(), 1U) << testing::PrintToString(said);
    EXPECT_TRUE(contains(said[0], "Anna's phone")) << said[0];
    EXPECT_TRUE(contains(said[0], "0042")) << said[0];
    EXPECT_TRUE(contains(said[0], "Cancel")) << said[0];
    EXPECT_FALSE(contains(said[0], "<")) << "markup is read out: " << said[0];
}

TEST_F(TheReadOut, SurvivesMarkupInAName)
{
    startWith(1);
    ASSERT_TRUE(box.show("ShowPinPopup", {"Bob & Ann <3", "0042"}));
    ASSERT_TRUE(waitForUtterances(1));
    const std::string said = box.utterances().back();
    EXPECT_TRUE(contains(said, "Bob & Ann")) << said;
    EXPECT_TRUE(contains(said, "0042")) << "what follows the name is lost: " << said;
    EXPECT_TRUE(contains(said, "Cancel")) << said;
}

TEST_F(TheReadOut, FollowsTheFocus)
{
    startWith(1);
    ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN"));
    ASSERT_TRUE(box.show("ShowMobileGuide", {"0042"}));
    ASSERT_TRUE(waitForUtterances(1));
    ASSERT_TRUE(box.program->waitForLog("Showing tooltip"));
    display().key("Right");
    ASSERT_TRUE(waitForUtterances(2));
    const auto said = box.utterances();
    EXPECT_NE(said[1], said[0]) << "the other button was not named";
    EXPECT_LT(said[1].size(), said[0].size()) << "the whole text was said again";
}

TEST_F(TheReadOut, IsSilentUnlessTheViewerAskedForIt)
{
    startWith(0);
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    ASSERT_TRUE(box.program->waitForLog("++PBC Timer Entered [59]"));
    EXPECT_TRUE(box.utterances().empty()) << testing::PrintToString(box.utterances());

    // Asked for on the way, it begins with the next popup.
    ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 1));
    ASSERT_TRUE(box.show("ShowTnCPopup"));
    EXPECT_TRUE(waitForUtterances(1));
}

} // namespace
