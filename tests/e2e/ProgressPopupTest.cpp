/// The popups of the network test and the sign-in wait for an answer, and take a key that is held for one.
#include "Cards.h"
#include "TvTest.h"

namespace {

class AProgressPopup : public tv::TvTest, public testing::WithParamInterface<tv::ShownRequest> { };

INSTANTIATE_TEST_SUITE_P(Of, AProgressPopup, testing::Values(tv::kNetworkTestRequest, tv::kSignInRequest),
    [](const auto& request) { return request.param.method; });

TEST_P(AProgressPopup, StaysUntilAnsweredAndIsNotCancelledByAKeyThatIsHeld)
{
    const auto& [method, texts, card] = GetParam();
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show(method, texts));
    EXPECT_TRUE(box.press({"Left", "Right", "Up", "Down", "XF86Back", "XF86Close", "Escape", "Menu"}));
    // One of them looks after its focus for two seconds, the other never does.
    const auto looks = [&] { return box.program->count("[Focus is not in Close Button],Set Focus"); };
    const size_t expected = method == std::string("ShowNetworkTest") ? 20 : 0;
    EXPECT_TRUE(tv::waitUntil([&] { return looks() >= expected; }));
    EXPECT_TRUE(tv::stays([&] { return box.program->running(); }, tv::Milliseconds(500)));
    EXPECT_TRUE(box.shows({card}));
    EXPECT_EQ(looks(), expected);

    const size_t mark = box.program->mark();
    display().keyDown("Return");
    EXPECT_TRUE(box.program->waitForLog("clicked on cancelBtnCB", mark));
    const bool lived = tv::stays([&] { return box.program->running(); }, tv::Milliseconds(1500));
    display().keyUp("Return");
    ASSERT_TRUE(lived) << "the held key answered the question as well";
    EXPECT_TRUE(box.shows({tv::below(card), tv::confirmation("Yes")}));
    EXPECT_EQ(box.daemon->calls().size(), 1U);
}

class AnAnsweredQuestion : public tv::TvTest { };

TEST_F(AnAnsweredQuestion, LeavesTheScreenBeforeTheDaemonAnswersAndIsAnsweredOnce)
{
    for (const char* method : {"ShowNetworkTest", "ShowSSOLoginPopup", "owned"}) {
        SCOPED_TRACE(method);
        box.daemon->forget();
        box.daemon->answer("StopTessel", tv::Answer::Held);
        ASSERT_TRUE(box.settings.setInt(tv::kStartMode, 0) && box.settings.setInt(tv::kOwned, 0));
        box.watchScreen();
        ASSERT_TRUE(box.start());
        const bool isOwned = method == std::string("owned");
        if (isOwned)
            ASSERT_TRUE(box.settings.setInt(tv::kOwned, 1));
        else
            ASSERT_TRUE(box.request(method, {"Anna's phone", "Attic"}));
        ASSERT_TRUE(tv::waitUntil([&] { return display().hasKeys(box.program->pid()); }));
        display().settledPicture();
        display().key("Return");
        ASSERT_TRUE(tv::waitUntil([&] {
            const auto cards = box.screen().cards;
            return !cards.empty() && cards.back().buttons.size() == 2;
        }));
        display().settledPicture();
        if (isOwned)
            display().key("Left");
        display().key("Return");

        ASSERT_TRUE(tv::waitUntil([&] { return box.daemon->received("StopTessel(true, false)"); }));
        EXPECT_TRUE(box.screenIsPlain());
        EXPECT_FALSE(box.program->logged("Stopping Tessel")) << "the call was to be held";
        display().key("Return");
        box.daemon->release();
        EXPECT_TRUE(endedByViewer(false));
        box.program.reset();
    }
}

} // namespace
