/// A daemon that does not answer as it should must not take the program, or the viewer's way out, with it.
#include "TvTest.h"

namespace {

using tv::Answer;
using tv::waitUntil;

struct Fault {
    const char* name;
    Answer answer;
    bool isError; ///< whether the call fails, rather than bring an unusable answer
};

std::string nameOf(const testing::TestParamInfo<Fault>& info)
{
    return info.param.name;
}

class ADaemonThat : public tv::TvTest, public testing::WithParamInterface<Fault> { };

TEST_P(ADaemonThat, DoesThisToTheStopLeavesTheEndOrderly)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    box.daemon->answer("StopTessel", GetParam().answer);
    const size_t mark = box.program->mark();
    display().key("Return");
    EXPECT_TRUE(endedByViewer(true));
    EXPECT_EQ(box.program->logged("DBUS call failed: *", mark), GetParam().isError);
    EXPECT_TRUE(
        box.program->logsInOrder({"Stop Tessel", "Stopping Tessel", "In CTesselUI::OnTerminate"}, mark));
}

INSTANTIATE_TEST_SUITE_P(Faults, ADaemonThat,
    testing::Values(Fault {"Refuses", Answer::Refusal, true},
        Fault {"AnswersAWrongType", Answer::WrongType, false}, Fault {"Vanishes", Answer::Vanish, true}),
    nameOf);

class AtTheStart : public tv::TvTest { };

TEST_F(AtTheStart, AnUnwillingDaemonIsServedAllTheSame)
{
    for (Answer answer : {Answer::Refusal, Answer::WrongType}) {
        SCOPED_TRACE(static_cast<int>(answer));
        box.program.reset();
        box.daemon->answer("ServerStarted", answer);
        box.daemon->forget();
        ASSERT_TRUE(box.start());
        EXPECT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    }
}

TEST_F(AtTheStart, ADaemonMayComeLater)
{
    const std::string bus = box.daemon->busAddress();
    box.daemon.reset();
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(box.program->waitForLog("DBUS call failed: *"));

    box.daemon = std::make_unique<tv::Daemon>(bus);
    ASSERT_TRUE(waitUntil([&] { return box.daemon->findsUi(box.program->pid()); }));
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    display().key("Return");
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(box.daemon->calls(), std::vector<std::string> {"StopTessel(true, false)"});
}

} // namespace
