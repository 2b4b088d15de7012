/// A launch while the program runs, starts or ends: afterwards exactly one process serves.
#include "TvTest.h"

#include <csignal>

namespace {

using tv::waitUntil;

constexpr int kDenied = 4;

class ALaunch : public tv::TvTest {
protected:
    std::unique_ptr<tv::Program> launch() const { return box.launch({"LAUNCH_MODE=POPUP"}); }

    /// Success when, at last, @p served is the one that the daemon reaches.
    testing::AssertionResult serves(const tv::Program& served)
    {
        if (!waitUntil([&] { return box.daemon->findsUi(served.pid()) || !served.running(); }))
            return testing::AssertionFailure() << "nobody serves";
        if (!served.running())
            return testing::AssertionFailure() << "it ended with " << *served.status();
        return box.request("ShowTnCPopup");
    }

    /// Success when the later of two processes has either been taken over by the first or taken its place.
    testing::AssertionResult oneServes(const tv::Program& first, const tv::Program& second)
    {
        const bool decided = waitUntil(
            [&] { return !second.running() || (!first.running() && box.daemon->findsUi(second.pid())); });
        if (!decided)
            return testing::AssertionFailure() << "it is not decided who serves";
        if (second.running())
            return serves(second);
        if (second.status() != 0)
            return testing::AssertionFailure() << "the launch ended with " << *second.status();
        return serves(first) << " (the first, which took the launch)";
    }
};

TEST_F(ALaunch, WhileTheFirstEndsTakesItsPlace)
{
    constexpr int kRounds = 30;
    ASSERT_TRUE(box.start());
    for (int round = 0; round < kRounds; ++round) {
        SCOPED_TRACE(round);
        // The daemon writes its 100 and launches again at once.
        ASSERT_TRUE(box.settings.setInt(tv::kStartMode, 100));
        auto second = launch();
        ASSERT_TRUE(box.program->endsWith(0));
        ASSERT_TRUE(oneServes(*box.program, *second)) << second->tail();
        ASSERT_TRUE(second->running()) << "the first was asked to end, and took a launch";
        ASSERT_TRUE(box.settings.setInt(tv::kStartMode, 0));
        box.program = std::move(second);
    }
}

TEST_F(ALaunch, AtAnyMomentOfTheFirstLeavesExactlyOneThatServes)
{
    for (int delayMs : {0, 5, 15, 30, 60, 120}) {
        SCOPED_TRACE(delayMs);
        box.program = launch();
        tv::stays([] { return true; }, tv::Milliseconds(delayMs));
        auto second = launch();
        ASSERT_TRUE(oneServes(*box.program, *second)) << second->tail();
        // Whoever was launched later may have come first; nobody was asked to end, so the other one did.
        if (!box.program->running())
            std::swap(box.program, second);
        EXPECT_TRUE(second->endsWith(0)) << "the other one was not needed";
        // Also in the middle of its end.
        box.program->signal(SIGTERM);
        tv::stays([] { return true; }, tv::Milliseconds(delayMs));
        second = launch();
        ASSERT_TRUE(oneServes(*box.program, *second)) << second->tail();
        EXPECT_TRUE(second->running()) << "the first was asked to end, and took a launch";
        EXPECT_EQ(box.program->waitForExit(), 0);
    }
}

TEST_F(ALaunch, WaitsForAFirstThatIsBlockedAndIsThenServed)
{
    box.daemon->answer("ServerStarted", tv::Answer::Held);
    box.program = launch();
    ASSERT_TRUE(waitUntil([&] { return !box.daemon->calls().empty(); }));
    const auto second = launch();
    EXPECT_TRUE(tv::stays([&] { return second->running(); }, tv::Milliseconds(700)))
        << "nobody can have answered it";
    const size_t mark = box.program->mark();
    box.daemon->release();
    EXPECT_TRUE(second->endsWith(0));
    EXPECT_TRUE(box.program->waitForLog("In CTesselUI ::On Service ", mark));

    // One that is stopped while it has the launch in its hands, and then killed, serves nobody.
    box.program->signal(SIGSTOP);
    const auto third = launch();
    EXPECT_TRUE(tv::stays([&] { return third->running(); }, tv::Milliseconds(300)));
    box.program->signal(SIGKILL);
    box.daemon->answer("ServerStarted", tv::Answer::Zero);
    ASSERT_TRUE(oneServes(*box.program, *third));
    EXPECT_TRUE(third->running());
}

TEST_F(ALaunch, ByAnotherUserIsDeniedWhileTheFirstRuns)
{
    if (getuid() != 0)
        GTEST_SKIP() << "only root can be another user";
    namespace fs = std::filesystem;
    for (const fs::path& folder : {box.folders.root(), box.folders.runtime(), box.folders.state()})
        fs::permissions(folder, fs::perms::owner_all | fs::perms::others_exec | fs::perms::others_read);
    ASSERT_TRUE(box.start());
    const tv::Program other(
        {"setpriv", "--reuid=65534", "--clear-groups", tv::TvBox::binary("tessel-ui"), "LAUNCH_MODE=POPUP"},
        box.environment());
    EXPECT_TRUE(other.endsWith(kDenied)) << other.tail();
    EXPECT_FALSE(other.logged("In CTesselUI::OnCreate"));
    EXPECT_NE(other.tail().find("org.orbis.tessel-UI runs already"), std::string::npos) << other.tail();
    EXPECT_TRUE(serves(*box.program));
}

TEST_F(ALaunch, ThatWasStoppedAndContinuedGoesOn)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    box.program->signal(SIGSTOP);
    tv::stays([] { return true; }, tv::Milliseconds(2500));
    box.program->signal(SIGCONT);
    EXPECT_TRUE(box.request("ShowFailedPopup", {"pin"}));
    box.press({"Return"});
    EXPECT_TRUE(endedByViewer(false));
}

} // namespace
