/// The program without its bus: missing from the start, or lost on the way.
#include "TvTest.h"

namespace {

class WithoutABus : public tv::TvTest {
protected:
    void SetUp() override
    {
        box.daemon = std::make_unique<tv::Daemon>(m_bus.address());
        box.setVariable("DBUS_SYSTEM_BUS_ADDRESS", m_bus.address());
    }

    tv::PrivateBus m_bus; // its own, since these tests end it
};

TEST_F(WithoutABus, ItStartsAndIsEndedThroughTheSettings)
{
    box.setVariable("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + (box.folders.root() / "no-bus").string());
    box.program = box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(box.program->waitForLog("Failed to open connection to bus: *"));
    EXPECT_FALSE(box.program->logged("Start CTesselUIDbus::Create")) << "a service that nobody can reach";

    ASSERT_TRUE(box.setStartMode(99));
    ASSERT_TRUE(box.setStartMode(100));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_TRUE(box.program->logsInOrder({"Exiting APP", "In CTesselUI::OnTerminate"}));
}

TEST_F(WithoutABus, ItLivesOnWhenTheBusDiesAndTheViewerStillGetsOut)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    m_bus.kill();
    ASSERT_TRUE(tv::stays([&] { return box.program->running(); }, tv::Milliseconds(1000)))
        << "the bus took the program with it";
    ASSERT_TRUE(box.setStartMode(99));
    EXPECT_TRUE(display().showsAnything());
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_TRUE(box.program->logged("DBUS call failed: *")) << "the stop cannot have arrived";
    EXPECT_EQ(box.settings.getInt(tv::kStartMode), 5);
    EXPECT_EQ(box.settings.getInt(tv::kReady), 1);
}

} // namespace
