/// A daemon that does not answer as it should must not take the program, or the viewer's way out, with it.
#include "TvTest.h"

namespace {

using tv::Answer;
using tv::waitUntil;

class ADaemon : public tv::TvTest { };

TEST_F(ADaemon, ThatIsUnwillingIsServedAndLeavesTheEndOrderly)
{
    struct {
        Answer atStart;
        Answer atStop;
        bool isError; ///< whether the stop fails, rather than bring an unusable answer
    } const faults[] = {
        {Answer::Refusal, Answer::Refusal, true},
        {Answer::WrongType, Answer::WrongType, false},
        {Answer::Zero, Answer::Vanish, true},
    };
    for (const auto& fault : faults) {
        SCOPED_TRACE(static_cast<int>(fault.atStop));
        box.daemon->answer("ServerStarted", fault.atStart);
        box.daemon->answer("StopTessel", fault.atStop);
        box.daemon->forget();
        ASSERT_TRUE(box.settings.setInt(tv::kStartMode, 0) && box.settings.setInt(tv::kReady, 0));
        ASSERT_TRUE(box.start());
        ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
        const size_t mark = box.program->mark();
        EXPECT_TRUE(box.press({"Return"}));
        EXPECT_TRUE(endedByViewer(true));
        EXPECT_EQ(box.program->logged("DBUS call failed: *", mark), fault.isError);
        EXPECT_TRUE(
            box.program->logsInOrder({"Stop Tessel", "Stopping Tessel", "In CTesselUI::OnTerminate"}, mark));
    }
}

TEST_F(ADaemon, MayComeLater)
{
    const std::string bus = box.daemon->busAddress();
    box.daemon.reset();
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(box.program->waitForLog("DBUS call failed: *"));

    box.daemon = std::make_unique<tv::Daemon>(bus);
    ASSERT_TRUE(waitUntil([&] { return box.daemon->findsUi(box.program->pid()); }));
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(box.daemon->calls(), std::vector<std::string> {"StopTessel(true, false)"});
}

} // namespace
