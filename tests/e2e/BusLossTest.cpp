/// The program without its bus: missing from the start, or lost on the way.
#include "TvTest.h"

#include <iostream>

namespace {

class WithoutABus : public tv::TvTest {
protected:
    void TearDown() override
    {
        if (HasFailure())
            std::cout << m_box.report();
    }

    tv::PrivateBus m_bus; // its own, since these tests end it
    tv::TvBox m_box {m_bus, display()};
};

TEST_F(WithoutABus, ItStartsAndIsEndedThroughTheSettings)
{
    m_box.setVariable("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + (m_box.folders.root() / "no-bus").string());
    m_box.program = m_box.launch({"LAUNCH_MODE=POPUP"});
    ASSERT_TRUE(m_box.program->waitForLog("Failed to open connection to bus: *"));
    EXPECT_FALSE(m_box.program->logged("Start CTesselUIDbus::Create")) << "a service that nobody can reach";

    ASSERT_TRUE(m_box.setStartMode(99));
    ASSERT_TRUE(m_box.setStartMode(100));
    EXPECT_TRUE(m_box.program->endsWith(0));
    EXPECT_TRUE(m_box.program->logsInOrder({"Exiting APP", "In CTesselUI::OnTerminate"}));
}

TEST_F(WithoutABus, ItLivesOnWhenTheBusDiesAndTheViewerStillGetsOut)
{
    ASSERT_TRUE(m_box.start());
    ASSERT_TRUE(m_box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    m_bus.kill();
    ASSERT_TRUE(tv::stays([&] { return m_box.program->running(); }, tv::Milliseconds(1000)))
        << "the bus took the program with it";
    ASSERT_TRUE(m_box.setStartMode(99));
    EXPECT_TRUE(display().showsAnything());
    display().key("Return");
    EXPECT_TRUE(m_box.program->endsWith(0));
    EXPECT_TRUE(m_box.program->logged("DBUS call failed: *")) << "the stop cannot have arrived";
    EXPECT_EQ(m_box.settings.getInt(tv::kStartMode), 5);
    EXPECT_EQ(m_box.settings.getInt(tv::kReady), 1);
}

} // namespace
