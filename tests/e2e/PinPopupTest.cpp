/// The PIN on the screen and the viewer's way out of it.
#include "TvTest.h"

#include <algorithm>

namespace {

using tv::waitUntil;

constexpr uint32_t kPinColour = 0x29C5FF;

class APinPopup : public tv::TvTest {
protected:
    void SetUp() override { ASSERT_TRUE(box.start()); }

    /// Starts another program that takes keys, and waits until it does.
    void startOther()
    {
        m_other = display().start({"xev", "-geometry", "1200x800+100+100"});
        ASSERT_TRUE(waitUntil([&] {
            display().key("Left");
            return keysOfOther() > 0;
        }));
        display().key("F1"); // behind all of the others
        ASSERT_TRUE(waitUntil([&] { return linesOfOther(", F1)") > 0; }));
    }
    long linesOfOther(const char* part) const
    {
        const auto& lines = m_other->output();
        return std::count_if(lines.begin(), lines.end(),
            [part](const std::string& line) { return line.find(part) != std::string::npos; });
    }
    long keysOfOther() const { return linesOfOther("KeyPress event"); }

    std::unique_ptr<tv::Process> m_other;
};

TEST_F(APinPopup, CoversTheScreenAndLeavesItBeforeTheDaemonAnswersTheStop)
{
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    EXPECT_EQ(display().visibleWindow(box.program->pid()), tv::Display::kScreen);
    EXPECT_GT(display().picture().count(kPinColour), 200U) << "no large text in the colour of the PIN";
    const size_t mark = box.program->mark();
    box.daemon->answer("StopTessel", tv::Answer::Held);
    display().key("Return");

    ASSERT_TRUE(waitUntil([&] { return box.daemon->received("StopTessel(true, false)"); }));
    EXPECT_TRUE(box.screenIsPlain());
    EXPECT_EQ(box.settings.getInt(tv::kReady), 1);
    EXPECT_NE(box.settings.getInt(tv::kStartMode), 5) << "the key follows the daemon's answer";
    EXPECT_TRUE(tv::stays([&] { return box.program->running(); }, tv::Milliseconds(1000)))
        << "it does not wait for a daemon that dawdles";

    box.daemon->release();
    EXPECT_TRUE(endedByViewer(true));
    EXPECT_TRUE(box.program->logsInOrder(
        {"Close Button Clicked", "Close Popups, stop Tessel, exit from App", "Stop Tessel", "Proxy Not NUll",
            "result:0", "Stopping Tessel", "In CTesselUI::OnTerminate", "In CTesselUI::Main after loop"},
        mark));
}

TEST_F(APinPopup, IgnoresTheKeysThatAreNotForIt)
{
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    const tv::Picture before = display().settledPicture();
    EXPECT_TRUE(box.press({"Left", "Right", "Up", "Down", "XF86Back", "XF86Close", "Menu", "Escape", "r"}));
    EXPECT_TRUE(box.program->running());
    EXPECT_EQ(box.daemon->calls().size(), 1U);
    EXPECT_EQ(display().settledPicture().differences(before), 0U) << "the focus left the only button";

    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(true));
}

TEST_F(APinPopup, TakesTheKeysWhileItIsUpAndGivesThemBack)
{
    startOther();
    const tv::Picture before = display().settledPicture();

    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    const auto keysSoFar = keysOfOther();
    EXPECT_TRUE(box.press({"Left"}));
    EXPECT_GT(display().settledPicture().differences(before), 0U);
    EXPECT_EQ(keysOfOther(), keysSoFar) << "a key went past the popup";

    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(display().waitForPicture([&](const tv::Picture& now) { return now == before; }));
    display().key("Return");
    EXPECT_TRUE(waitUntil([&] { return keysOfOther() > keysSoFar; })) << "the keys did not come back";
    EXPECT_EQ(box.daemon->calls().size(), 1U) << "the hidden popup took the key";
}

TEST_F(APinPopup, IsNotCancelledByAKeyThatWasHeldBeforeItAppeared)
{
    startOther();
    display().keyDown("Return");
    const auto before = keysOfOther();
    EXPECT_TRUE(waitUntil([&] { return keysOfOther() > before + 3; })) << "the key does not repeat";
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    EXPECT_FALSE(waitUntil(
        [&] { return !box.program->running() || box.daemon->calls().size() > 1; }, tv::Milliseconds(700)));
    display().keyUp("Return");

    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(true)) << "a new press does nothing";
}

} // namespace
