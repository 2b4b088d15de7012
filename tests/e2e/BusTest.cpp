/// The program without its bus, missing from the start, stalled, or lost on the way and back again; and with
/// a daemon that does not answer as it should. Neither takes the viewer's way out with it.
#include "Cards.h"
#include "Simulator.h"
#include "TvTest.h"

namespace {

using tv::Answer;
using tv::waitUntil;
using Calls = std::vector<std::string>;

class WithoutABus : public tv::TvTest {
protected:
    /// Starts the bus again, and with it the daemon; success when that is told that the program is there.
    testing::AssertionResult comesBack()
    {
        bus().restart();
        box.daemon = std::make_unique<tv::Daemon>(bus().address());
        if (waitUntil([&] { return box.daemon->received("ServerStarted(true)"); })
            && box.daemon->findsUi(box.program->pid()))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "it does not come back to the bus";
    }

    testing::AssertionResult endsThroughTheSettings()
    {
        if (auto handled = box.setStartMode(100); !handled)
            return handled;
        if (auto ended = box.program->endsWith(0); !ended)
            return ended;
        if (const auto entry = box.folders.appStatus(tv::kPackage))
            return testing::AssertionFailure() << "the status entry is left: " << *entry;
        return box.program->logsInOrder({"Exiting APP", "In CTesselUI::OnTerminate"});
    }
};

TEST_F(WithoutABus, ItStartsAndIsEndedThroughTheSettings)
{
    // One that takes the connection and dies over it; then none.
    bus().stall();
    for (const char* when : {"dies", "dead"}) {
        SCOPED_TRACE(when);
        box.program = box.launch({"LAUNCH_MODE=POPUP"});
        ASSERT_TRUE(box.program->waitForLog("Portrait Mode = *"));
        bus().kill();
        ASSERT_TRUE(box.program->waitForLog("Failed to open connection to bus: *"));
        EXPECT_FALSE(box.program->logged("Start CTesselUIDbus::Create")) << "a service that nobody can reach";
        ASSERT_TRUE(box.setStartMode(99));
        EXPECT_TRUE(endsThroughTheSettings());
    }
}

TEST_F(WithoutABus, EveryPopupStaysAndTheDaemonIsToldAgainWhenTheBusIsBack)
{
    ASSERT_TRUE(box.start());
    const auto loseBus = [&] {
        const size_t mark = box.program->mark();
        bus().kill();
        return box.program->waitForLog("The connection to the bus was closed", mark);
    };
    for (const auto& [method, texts, card] : tv::kRequests) {
        SCOPED_TRACE(method);
        ASSERT_TRUE(box.request(method, texts));
        ASSERT_TRUE(box.shows({card}));
        ASSERT_TRUE(loseBus());
        ASSERT_TRUE(comesBack());
        EXPECT_TRUE(box.shows({card}));
    }
    // The settings are served beside all this, and the viewer gets out.
    ASSERT_TRUE(box.settings.setInt(tv::kOwned, 1));
    ASSERT_TRUE(box.shows({tv::kOwnedCard}));
    ASSERT_TRUE(box.show(tv::kPinRequest));
    ASSERT_TRUE(loseBus());
    EXPECT_TRUE(box.setStartMode(99));
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_TRUE(box.program->logged("DBUS call failed: *")) << "the stop cannot have arrived";
    EXPECT_EQ(box.settings.getInt(tv::kStartMode), 5);
    EXPECT_EQ(box.settings.getInt(tv::kReady), 1);
    EXPECT_EQ(box.program->complaints(), Calls {});
}

TEST_F(WithoutABus, ItComesBackWhenTheBusDiedWhileTheDaemonWasBeingTold)
{
    box.daemon->answer("ServerStarted", Answer::Held);
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(waitUntil([&] { return box.daemon->received("ServerStarted(true)"); }));
    bus().kill();
    EXPECT_TRUE(box.program->waitForLog("DBUS call failed: *"));
    ASSERT_TRUE(comesBack());
    EXPECT_TRUE(box.request("HidePopup"));

    // One that is stalled does not hold the end up.
    ASSERT_TRUE(box.request("ShowTnCPopup"));
    bus().stall();
    const auto start = std::chrono::steady_clock::now();
    EXPECT_TRUE(endsThroughTheSettings());
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(4)) << "of 25";
}

class ADaemon : public tv::TvTest { };

TEST_F(ADaemon, ThatIsUnwillingIsServedAndLeavesTheEndOrderly)
{
    struct {
        const char* atStart;
        const char* atStop;
        bool isError; ///< whether the stop fails, rather than bring an answer, an unusable one perhaps
    } const faults[] = {
        {"refuse", "refuse", true},
        {"wrong-type", "wrong-type", false},
        {"dawdle 0.2", "silent", false},
        {"normal", "vanish", true},
    };
    box.daemon.reset();
    for (const auto& [atStart, atStop, isError] : faults) {
        SCOPED_TRACE(atStop);
        tv::Simulator daemon({"--behave", atStart}, box.environment());
        ASSERT_TRUE(daemon.says("ready"));
        box.settings.remove(tv::kStartMode);
        box.settings.remove(tv::kReady);
        box.program = box.launch({"LAUNCH_MODE=POPUP"});
        ASSERT_TRUE(daemon.says("received ServerStarted true"));
        daemon.tell("ShowPinPopup \"Anna's phone\" 0042");
        ASSERT_TRUE(daemon.says("reply ShowPinPopup 0"));
        ASSERT_TRUE(box.shows({tv::kPinRequest.card}));
        daemon.tell(std::string("behave ") + atStop);
        ASSERT_TRUE(daemon.says(std::string("behave ") + atStop));
        const size_t mark = box.program->mark();
        box.display.key("Return");
        ASSERT_TRUE(daemon.says("received StopTessel true false"));
        if (daemon.running())
            daemon.tell("behave normal"); // which breaks the silence
        EXPECT_TRUE(box.program->endsWith(0));
        EXPECT_EQ(box.settings.getInt(tv::kStartMode), 5);
        EXPECT_EQ(box.settings.getInt(tv::kReady), 1);
        EXPECT_EQ(box.program->logged("DBUS call failed: *", mark), isError);
        EXPECT_TRUE(
            box.program->logsInOrder({"Stop Tessel", "Stopping Tessel", "In CTesselUI::OnTerminate"}, mark));
    }
}

TEST_F(ADaemon, MayComeLaterAndGoAndComeAgain)
{
    box.daemon.reset();
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(box.program->waitForLog("DBUS call failed: *"));
    for (const tv::ShownRequest& request : {tv::kTermsRequest, tv::kPinRequest}) {
        box.daemon.reset();
        box.daemon = std::make_unique<tv::Daemon>(bus().address());
        ASSERT_TRUE(waitUntil([&] { return box.daemon->findsUi(box.program->pid()); }));
        ASSERT_TRUE(box.show(request));
    }
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(box.daemon->calls(), Calls {"StopTessel(true, false)"});
}

TEST_F(ADaemon, MayCallBackAtOnceAndWhileItIsTold)
{
    constexpr size_t kCalls = 50;
    box.daemon->callBackAt("ServerStarted", kCalls);
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(waitUntil([&] { return box.daemon->replies().size() == kCalls; }));
    for (const tv::Reply& reply : box.daemon->replies())
        EXPECT_EQ(reply.value, "(0,)") << reply.error;
}

TEST_F(ADaemon, IsServedOnceAnotherProgramLetsTheNameGo)
{
    auto squatter = std::make_unique<tv::Daemon>(bus().address(), tv::kUiName);
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(waitUntil([&] { return box.daemon->received("ServerStarted(true)"); }));
    ASSERT_TRUE(box.program->waitForLog("End m_OnBusAcquired"));
    EXPECT_FALSE(box.daemon->findsUi(box.program->pid()));
    // The settings reach it meanwhile.
    ASSERT_TRUE(box.settings.setText(tv::kRequest, R"({"page":"tnc"})"));
    EXPECT_TRUE(box.shows({tv::kTermsCard}));

    squatter.reset();
    ASSERT_TRUE(waitUntil([&] { return box.daemon->findsUi(box.program->pid()); }));
    ASSERT_TRUE(box.show(tv::kAccessPointsRequest));
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(false));
}

} // namespace
