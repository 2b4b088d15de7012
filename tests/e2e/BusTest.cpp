// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The program without its bus, missing from the start, stalled, or lost on the way and back again; and with
/// a daemon that does not answer as it should. Neither takes the viewer's way out with it.
#include "Cards.h"
#include "TvTest.h"

namespace {

using Calls = std::vector<std::string>;

class WithoutABus : public tv::TvTest {
protected:
    testing::AssertionResult loses()
    {
        const size_t mark = box.program->mark();
        bus().kill();
        return box.program->waitForLog("The connection to the bus was closed", mark);
    }

    /// Starts the bus again, and with it the daemon; success when that is told that the program is there.
    testing::AssertionResult comesBack()
    {
        box.program->signal(SIGSTOP); // it would find the bus before the daemon does
        bus().restart();
        box.bringDaemon();
        box.program->signal(SIGCONT);
        const bool isBack =
            box.daemon->receives("ServerStarted true") && box.daemon->findsUi(box.program->pid());
        return testing::AssertionResult(isBack) << "it does not come back to the bus";
    }

    testing::AssertionResult endsInOrder()
    {
        if (auto ended = box.ends(); !ended)
            return ended;
        if (std::filesystem::exists(box.folders.appStatus(tv::kPackage)))
            return testing::AssertionFailure() << "the status entry is left";
        return box.program->logsInOrder({"Exiting APP", "In CTesselUI::OnTerminate"});
    }
};

TEST_F(WithoutABus, ItStartsAndIsEndedThroughTheSettings)
{
    // One that takes the connection and dies over it; then none.
    bus().stall();
    for (const char* when : {"dies", "dead"}) {
        SCOPED_TRACE(when);
        box.program = box.launch();
        ASSERT_TRUE(box.program->waitForLog("Portrait Mode = *"));
        bus().kill();
        ASSERT_TRUE(box.program->waitForLog("Failed to open connection to bus: *"));
        EXPECT_FALSE(box.program->logged("Start CTesselUIDbus::Create")) << "a service that nobody can reach";
        ASSERT_TRUE(box.setStartMode(99));
        EXPECT_TRUE(endsInOrder());
    }
}

TEST_F(WithoutABus, EveryPopupStaysAndTheDaemonIsToldAgainWhenTheBusIsBack)
{
    ASSERT_TRUE(box.start());
    for (const auto& [method, texts, card] : tv::kRequests) {
        SCOPED_TRACE(method);
        ASSERT_TRUE(box.request(method, texts));
        ASSERT_TRUE(box.shows({card}));
        ASSERT_TRUE(loses());
        ASSERT_TRUE(comesBack());
        EXPECT_TRUE(box.shows({card}));
    }
    // The settings are served beside all this, and the viewer gets out.
    ASSERT_TRUE(box.settings.setInt(tv::kOwned, 1));
    ASSERT_TRUE(box.shows({tv::kOwnedCard}));
    ASSERT_TRUE(box.show(tv::kPinRequest));
    ASSERT_TRUE(loses());
    EXPECT_TRUE(box.setStartMode(99));
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_TRUE(box.program->logged("DBUS call failed: *")) << "the stop cannot have arrived";
    EXPECT_TRUE(isMarkedAsStopped(true));
    EXPECT_EQ(box.program->complaints(), Calls {});
}

TEST_F(WithoutABus, ItComesBackWhenTheBusDiedWhileTheDaemonWasBeingTold)
{
    box.daemon->behave(tv::kSilent);
    box.program = box.launch();
    ASSERT_TRUE(box.daemon->receives("ServerStarted true"));
    bus().kill();
    EXPECT_TRUE(box.program->waitForLog("DBUS call failed: *"));
    ASSERT_TRUE(comesBack());
    EXPECT_TRUE(box.request("HidePopup"));

    // One that is stalled does not hold the end up.
    ASSERT_TRUE(box.request("ShowTnCPopup"));
    bus().stall();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(endsInOrder());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4)) << "of 25";
}

/// The library's request for the name is under way then, in every second try or so.
TEST_F(WithoutABus, ItComesBackWhenTheBusIsThereAgainBeforeTheDaemon)
{
    for (int i = 0; i < 6; ++i) {
        SCOPED_TRACE(i);
        box.reset();
        box.daemon->behave(tv::kSilent);
        box.program = box.launch();
        ASSERT_TRUE(box.daemon->receives("ServerStarted true"));
        box.daemon.reset();
        bus().kill();
        bus().restart();
        box.bringDaemon();
        ASSERT_TRUE(tv::waitUntil([&] { return box.daemon->findsUi(box.program->pid()); }));
        EXPECT_EQ(box.program->complaints(), Calls {});
    }
}

class ADaemon : public tv::TvTest { };

TEST_F(ADaemon, ThatIsUnwillingIsServedAndLeavesTheEndOrderly)
{
    struct {
        const char* atStart;
        const char* atStop;
        bool isError; ///< whether the stop fails, rather than bring an answer, an unusable one perhaps
    } const faults[] = {
        {tv::kRefusing, tv::kRefusing, true},
        {"wrong-type", "wrong-type", false},
        {"dawdle 0.2", tv::kSilent, false},
        {tv::kWilling, "vanish", true},
    };
    for (const auto& [atStart, atStop, isError] : faults) {
        SCOPED_TRACE(atStop);
        box.daemon->behave(atStart);
        ASSERT_TRUE(box.startAgain());
        ASSERT_TRUE(box.show(tv::kPinRequest));
        box.daemon->behave(atStop);
        const size_t mark = box.program->mark();
        display().key("Return");
        ASSERT_TRUE(box.daemon->receives("StopTessel true false"));
        if (atStop == tv::kSilent)
            box.daemon->behave(tv::kWilling);
        EXPECT_TRUE(endedByViewer(true));
        EXPECT_EQ(box.program->logged("DBUS call failed: *", mark), isError);
        EXPECT_TRUE(
            box.program->logsInOrder({"Stop Tessel", "Stopping Tessel", "In CTesselUI::OnTerminate"}, mark));
    }
}

TEST_F(ADaemon, MayComeLaterAndGoAndComeAgain)
{
    box.daemon.reset();
    box.program = box.launch();
    ASSERT_TRUE(box.program->waitForLog("DBUS call failed: *"));
    for (const tv::ShownRequest& request : {tv::kTermsRequest, tv::kPinRequest}) {
        box.bringDaemon();
        ASSERT_TRUE(tv::waitUntil([&] { return box.daemon->findsUi(box.program->pid()); }));
        ASSERT_TRUE(box.show(request));
    }
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(box.daemon->calls(), Calls {"StopTessel true false"});
}

TEST_F(ADaemon, MayCallBackAtOnceAndWhileItIsTold)
{
    constexpr size_t kCalls = 50;
    box.daemon->behave(tv::kSilent);
    box.program = box.launch();
    ASSERT_TRUE(box.daemon->receives("ServerStarted true"));
    // The program waits for the daemon; what it has not asked for by now it cannot have.
    EXPECT_TRUE(box.daemon->findsUi(box.program->pid())) << "told before the name is the program's";
    for (size_t i = 0; i < kCalls; ++i)
        box.daemon->send("HidePopup");
    box.daemon->behave(tv::kWilling);
    ASSERT_TRUE(tv::waitUntil([&] { return box.daemon->replies().size() == kCalls; }));
    EXPECT_EQ(box.daemon->replies(), Calls(kCalls, tv::kTaken));
}

TEST_F(ADaemon, IsServedOnceAnotherProgramLetsTheNameGo)
{
    constexpr guint kDoNotQueue = 4;
    ASSERT_TRUE(box.daemon->askBus("RequestName", g_variant_new("(su)", tv::kUiName, kDoNotQueue)));
    box.program = box.launch();
    ASSERT_TRUE(box.daemon->receives("ServerStarted true"));
    ASSERT_TRUE(box.program->waitForLog("End m_OnBusAcquired"));
    EXPECT_FALSE(box.daemon->findsUi(box.program->pid()));
    // The settings reach it meanwhile.
    ASSERT_TRUE(box.settings.setText(tv::kRequest, R"({"page":"tnc"})"));
    EXPECT_TRUE(box.shows({tv::kTermsCard}));

    ASSERT_TRUE(box.daemon->askBus("ReleaseName", g_variant_new("(s)", tv::kUiName)));
    ASSERT_TRUE(tv::waitUntil([&] { return box.daemon->findsUi(box.program->pid()); }));
    ASSERT_TRUE(box.show(tv::kAccessPointsRequest));
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(false));
}

} // namespace
