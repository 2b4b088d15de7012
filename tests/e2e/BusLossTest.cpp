/// The program without its bus: missing from the start, stalled, or lost on the way and back again.
#include "Cards.h"
#include "TvTest.h"

namespace {

using Clock = std::chrono::steady_clock;
using tv::waitUntil;
using Calls = std::vector<std::string>;

class WithoutABus : public tv::TvTest {
protected:
    void SetUp() override
    {
        box.daemon = std::make_unique<tv::Daemon>(m_bus.address());
        box.setVariable("DBUS_SYSTEM_BUS_ADDRESS", m_bus.address());
        ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN"));
    }

    /// Starts the bus again, and with it the daemon.
    void bringBack()
    {
        m_bus.restart();
        box.daemon = std::make_unique<tv::Daemon>(m_bus.address());
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

    tv::PrivateBus m_bus; // its own, since these tests end it
};

TEST_F(WithoutABus, ItStartsAndIsEndedThroughTheSettings)
{
    const std::string nowhere = "unix:path=" + (box.folders.root() / "no-bus").string();
    box.setVariable("DBUS_SYSTEM_BUS_ADDRESS", nowhere);
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(box.program->waitForLog("Failed to open connection to bus: *"));
    EXPECT_FALSE(box.program->logged("Start CTesselUIDbus::Create")) << "a service that nobody can reach";
    ASSERT_TRUE(box.setStartMode(99));
    EXPECT_TRUE(endsThroughTheSettings());

    // A bus that takes the connection and dies over it.
    box.setVariable("DBUS_SYSTEM_BUS_ADDRESS", m_bus.address());
    m_bus.stall();
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(box.program->waitForLog("Portrait Mode = *"));
    m_bus.kill();
    ASSERT_TRUE(box.program->waitForLog("Failed to open connection to bus: *"));
    EXPECT_TRUE(endsThroughTheSettings());
}

TEST_F(WithoutABus, ItLivesOnWhenTheBusDiesAndTheViewerStillGetsOut)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    m_bus.kill();
    ASSERT_TRUE(box.program->waitForLog("The connection to the bus was closed"));
    ASSERT_TRUE(box.setStartMode(99)) << "the bus took the program with it";
    EXPECT_TRUE(display().showsAnything());
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_TRUE(box.program->logged("DBUS call failed: *")) << "the stop cannot have arrived";
    EXPECT_EQ(box.settings.getInt(tv::kStartMode), 5);
    EXPECT_EQ(box.settings.getInt(tv::kReady), 1);
}

TEST_F(WithoutABus, EveryPopupStaysAndTheDaemonIsToldAgainWhenTheBusIsBack)
{
    box.watchScreen();
    ASSERT_TRUE(box.start());
    for (const tv::ShownRequest& request : tv::kRequests) {
        SCOPED_TRACE(request.method);
        ASSERT_TRUE(box.request(request.method, request.texts));
        ASSERT_TRUE(box.shows({request.card}));
        const size_t mark = box.program->mark();
        m_bus.kill();
        ASSERT_TRUE(box.program->waitForLog("The connection to the bus was closed", mark));
        bringBack();
        ASSERT_TRUE(waitUntil([&] { return box.daemon->received("ServerStarted(true)"); }));
        EXPECT_TRUE(box.daemon->findsUi(box.program->pid()));
        EXPECT_TRUE(box.shows({request.card}));
    }
    // The settings are served beside all this, and the last popup's answer reaches the daemon.
    ASSERT_TRUE(box.settings.setInt(tv::kOwned, 1));
    ASSERT_TRUE(box.shows({tv::kOwnedCard}));
    ASSERT_TRUE(box.show("ShowApListPopup"));
    display().key("Return");
    EXPECT_TRUE(endedByViewer(false));
    EXPECT_EQ(box.program->complaints(), Calls {});
}

TEST_F(WithoutABus, ItComesBackWhenTheBusDiedWhileTheDaemonWasBeingTold)
{
    box.daemon->answer("ServerStarted", tv::Answer::Held);
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(waitUntil([&] { return box.daemon->received("ServerStarted(true)"); }));
    m_bus.kill();
    EXPECT_TRUE(box.program->waitForLog("DBUS call failed: *"));
    bringBack();
    ASSERT_TRUE(waitUntil([&] { return box.daemon->received("ServerStarted(true)"); }));
    EXPECT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(endsThroughTheSettings());
}

TEST_F(WithoutABus, AStalledOneDoesNotHoldTheEndUp)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.request("ShowTnCPopup"));
    m_bus.stall();
    const auto start = Clock::now();
    EXPECT_TRUE(endsThroughTheSettings());
    EXPECT_LT(Clock::now() - start, std::chrono::seconds(4)) << "the library waits for 25 seconds";
    m_bus.goOn();
}

} // namespace
