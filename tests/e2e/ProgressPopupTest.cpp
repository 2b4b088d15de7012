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

} // namespace
