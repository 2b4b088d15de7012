// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Whose presses count: the viewer answers what he has seen, once; and what is up stays usable while
/// language, screen and window manager change.
#include "Cards.h"
#include "TvTest.h"

#include <algorithm>
#include <csignal>

namespace {

using tv::below;
using tv::confirmation;
using tv::Milliseconds;
using tv::waitUntil;
using Keys = std::vector<std::string>;

class TheViewer : public tv::TvTest {
protected:
    void SetUp() override { ASSERT_TRUE(box.start()); }

    /// Does something while the program is busy, as in a call that blocks.
    void whileBusy(const std::function<void()>& action)
    {
        box.program->signal(SIGSTOP);
        action();
        box.program->signal(SIGCONT);
    }
    void pressWhileBusy(const Keys& keys)
    {
        whileBusy([&] { std::for_each(keys.begin(), keys.end(), [](auto& key) { display().key(key); }); });
    }
    void clickWhileBusy(int times)
    {
        whileBusy([&] {
            for (int i = 0; i < times; ++i)
                display().click(900, 715); // where Cancel is, and then Yes
        });
    }

    /// Success when so many presses and clicks have been ignored, and nothing was answered: the daemon was
    /// told of the start only, and the program runs on.
    testing::AssertionResult ignored(const std::string& what, size_t times) const
    {
        waitUntil([&] { return box.program->lines("I/orbis-platform: Ignored a " + what).size() == times; });
        return nothingIsAnswered();
    }
    testing::AssertionResult nothingIsAnswered(Milliseconds longEnough = Milliseconds(400)) const
    {
        const auto isUnanswered = [&] { return box.program->running() && box.daemon->calls().size() == 1; };
        return testing::AssertionResult(tv::stays(isUnanswered, longEnough)) << "something was answered";
    }

    /// Starts another program that takes keys.
    void startOther() { m_other = display().start({"xev", "-geometry", "1200x800+100+100"}); }
    long keysOfOther() const
    {
        const auto& lines = m_other->output();
        return std::count_if(lines.begin(), lines.end(),
            [](const std::string& line) { return line.find("KeyPress event") != std::string::npos; });
    }

    std::unique_ptr<tv::Process> m_other;
};

TEST_F(TheViewer, AnswersOnlyWhatHeHasSeen)
{
    ASSERT_TRUE(box.show(tv::kGuideRequest));
    const size_t mark = box.program->mark();
    pressWhileBusy({"Return", "Return", "Return"});
    ASSERT_TRUE(box.shows({tv::kAccessPointsCard})) << "the first press was for the guide";
    EXPECT_TRUE(ignored("press of Return: what it would act on", 2));
    EXPECT_TRUE(
        box.program->logsInOrder({"Clos Button Clicked", "Show APList popup", "showTncText popup"}, mark));

    ASSERT_TRUE(box.show(tv::kNetworkTestRequest));
    pressWhileBusy({"Return", "Return", "Return"});
    ASSERT_TRUE(box.shows({below(tv::kNetworkTestCard), confirmation("Yes")}));
    EXPECT_TRUE(ignored("press of Return", 4));

    ASSERT_TRUE(box.settings.setInt(tv::kOwned, 1));
    ASSERT_TRUE(box.shows({tv::kOwnedCard}));
    display().settledPicture();
    pressWhileBusy({"Return", "Left", "Return"});
    ASSERT_TRUE(box.shows({tv::kOwnedQuestion})) << "buttons that were swapped in place";
    EXPECT_TRUE(ignored("press of ", 6));

    display().settledPicture();
    pressWhileBusy({"Left", "Return"});
    EXPECT_TRUE(endedByViewer(false)) << "a press that came after the picture is lost";
}

TEST_F(TheViewer, DoesNotClickAtAButtonThatTookThePlaceOfAnother)
{
    ASSERT_TRUE(box.settings.setInt(tv::kOwned, 1));
    ASSERT_TRUE(box.shows({tv::kOwnedCard}));
    display().settledPicture();
    clickWhileBusy(2);
    EXPECT_TRUE(ignored("click", 1));
    display().settledPicture();
    clickWhileBusy(4);
    EXPECT_TRUE(endedByViewer(false))
        << "clicks that came after the picture are lost, or more than one counts";
}

TEST_F(TheViewer, FreesTheScreenAndStopsOnceHoweverOftenHePresses)
{
    struct {
        tv::ShownRequest request;
        Keys before; ///< the key that answers
        bool isPin;
    } const answers[] = {
        {tv::kPinRequest, {}, true},
        {tv::kGuideRequest, {"Right"}, false},
        {tv::kNetworkTestRequest, {"Return"}, false},
        {tv::kSignInRequest, {"Return"}, false},
        {{"", {}, tv::kOwnedCard}, {"Return", "Left"}, false},
    };
    for (const auto& [request, before, isPin] : answers) {
        SCOPED_TRACE(request.method);
        ASSERT_TRUE(box.startAgain());
        if (*request.method)
            ASSERT_TRUE(box.request(request.method, request.texts));
        else
            ASSERT_TRUE(box.settings.setInt(tv::kOwned, 1));
        ASSERT_TRUE(box.shows({request.card}));
        ASSERT_TRUE(box.press(before));
        ASSERT_TRUE(waitUntil([&] { return display().hasKeys(box.program->pid()); }));
        display().settledPicture();
        box.daemon->behave(tv::kSilent);
        const size_t mark = box.program->mark();
        pressWhileBusy({"Return", "Return", "KP_Enter", "Return"});
        ASSERT_TRUE(box.daemon->receives("StopTessel true false"));
        EXPECT_TRUE(box.screenIsPlain()) << "before the daemon answers";
        EXPECT_NE(box.settings.getInt(tv::kStartMode), 5) << "the key follows the daemon's answer";
        display().key("Return");
        display().key("KP_Enter");
        EXPECT_TRUE(tv::stays([&] { return box.program->running(); }, Milliseconds(300)))
            << "it does not wait for a daemon that dawdles";
        box.daemon->behave(tv::kWilling);
        EXPECT_TRUE(endedByViewer(isPin));
        std::vector<std::string> lines {"Stop Tessel", "Proxy Not NUll", "result:0", "Stopping Tessel",
            "In CTesselUI::OnTerminate", "In CTesselUI::Main after loop"};
        if (isPin)
            lines.insert(lines.begin(), {"Close Button Clicked", "Close Popups, stop Tessel, exit from App"});
        EXPECT_TRUE(box.program->logsInOrder(lines, mark));
    }
}

TEST_F(TheViewer, MayLetGoOfAKeyAfterItsPopupIsGone)
{
    ASSERT_TRUE(box.show(tv::kNetworkTestRequest));
    display().keyDown("Return");
    ASSERT_TRUE(box.shows({below(tv::kNetworkTestCard), confirmation("Yes")}));
    EXPECT_TRUE(nothingIsAnswered(Milliseconds(1200))) << "by the key that asked";
    ASSERT_TRUE(box.request("HidePopup"));
    ASSERT_TRUE(box.screenIsPlain());
    display().keyUp("Return");
    // The sooner the next press comes, the more it could be taken for a repeat.
    ASSERT_TRUE(box.request(tv::kPinRequest.method, tv::kPinRequest.texts));
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(true)) << "the press counted as held";
}

TEST_F(TheViewer, HasTheKeysOnAPopupWhileItIsUpAndNotThoseThatHeHeldBefore)
{
    startOther();
    ASSERT_TRUE(waitUntil([&] {
        display().key("F1");
        return keysOfOther() > 0;
    }));
    const tv::Picture plain = display().settledPicture();
    display().keyDown("Return");
    const auto before = keysOfOther();
    EXPECT_TRUE(waitUntil([&] { return keysOfOther() > before + 3; })) << "the key does not repeat";
    ASSERT_TRUE(box.show(tv::kPinRequest));
    EXPECT_TRUE(nothingIsAnswered(Milliseconds(700))) << "by a key that was held before";
    display().keyUp("Return");

    EXPECT_EQ(display().visibleWindow(box.program->pid()), tv::Display::kScreen);
    const tv::Picture picture = display().settledPicture();
    EXPECT_GT(picture.count(tv::kPinColour), 200U) << "no large text in the colour of the PIN";
    const auto keysSoFar = keysOfOther();
    EXPECT_TRUE(box.press({"Left", "Right", "Up", "Down", "XF86Back", "XF86Close", "Menu", "Escape", "r"}));
    EXPECT_TRUE(nothingIsAnswered());
    EXPECT_EQ(keysOfOther(), keysSoFar) << "a key went past the popup";
    EXPECT_LE(display().settledPicture().differences(picture), tv::kTimePasses)
        << "the focus left the only button";

    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(display().waitForPicture([&](const tv::Picture& now) { return now == plain; }));
    display().key("Return");
    EXPECT_TRUE(waitUntil([&] { return keysOfOther() > keysSoFar; })) << "the keys did not come back";
    EXPECT_TRUE(nothingIsAnswered()) << "by a popup that is hidden";
}

TEST_F(TheViewer, KeepsThePopupThatIsUpWhenTheLanguageChanges)
{
    ASSERT_TRUE(box.show(tv::kNetworkTestRequest));
    const tv::Picture before = display().settledPicture();
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, "ar_AE.UTF-8"));
    display().settledPicture();
    constexpr size_t kSpinner = size_t {104} * 104;
    EXPECT_LT(display().settledPicture().differences(before), kSpinner);
    ASSERT_TRUE(box.press({"Return", "Right"}));
    ASSERT_TRUE(box.shows({below(tv::kNetworkTestCard), confirmation("No")}));

    ASSERT_TRUE(box.show("ShowTnCPopup"));
    const tv::Screen next = box.screen();
    ASSERT_EQ(next.cards.size(), 1U);
    EXPECT_EQ(next.cards.front().buttons.size(), 1U);
    EXPECT_NE(next.cards.front().title, tv::kTermsCard.title) << "not in the new language";
}

class AScreen : public TheViewer {
protected:
    void TearDown() override
    {
        display().kill(); // the others count on its size and its manager
        TheViewer::TearDown();
    }
};

TEST_F(AScreen, MayGetAnotherSizeWithAPopupUp)
{
    const auto pictureOn = [&](int width, int height) {
        display().resize(width, height);
        const tv::Geometry whole {0, 0, width, height};
        EXPECT_TRUE(waitUntil([&] { return display().visibleWindow(box.program->pid()) == whole; }));
        return display().settledPicture();
    };
    const auto ofOneMadeLater = [&] {
        EXPECT_TRUE(box.show(tv::kPinRequest));
        return display().settledPicture();
    };
    ASSERT_TRUE(box.show(tv::kPinRequest));
    const tv::Picture large = display().settledPicture();
    const tv::Picture small = pictureOn(800, 600);
    constexpr double kSmaller = 800.0 / 1920 * 800 / 1920;
    const auto digits = static_cast<double>(large.count(tv::kPinColour));
    EXPECT_NEAR(static_cast<double>(small.count(tv::kPinColour)), digits * kSmaller, digits * kSmaller / 2)
        << "not scaled, or over the edge";
    EXPECT_LE(ofOneMadeLater().differences(small), tv::kTimePasses);
    const tv::Picture again = pictureOn(1920, 1080);
    for (const tv::Picture& open : {again, ofOneMadeLater()})
        EXPECT_NEAR(static_cast<double>(open.count(tv::kPinColour)), digits, digits / 10);
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(true));
}

TEST_F(AScreen, MayLoseItsWindowManagerForAWhile)
{
    ASSERT_TRUE(box.show(tv::kPinRequest));
    display().stopManager();
    startOther();
    ASSERT_TRUE(waitUntil([&] { return !m_other->output().empty(); }));
    display().startManager();
    EXPECT_TRUE(waitUntil([&] { return display().hasKeys(box.program->pid()); }))
        << "the keys do not come back";
    EXPECT_TRUE(display().waitForPicture([](const tv::Picture& now) {
        return now.count(tv::kPinColour) > 200;
    })) << "the popup lies below another window";
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(true));
}

} // namespace
