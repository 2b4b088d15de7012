/// Whose presses count: the viewer answers what he has seen, once; and what is up stays usable while
/// language, screen and window manager change.
#include "Cards.h"
#include "TvTest.h"

#include <algorithm>
#include <csignal>
#include <iostream>

namespace {

using tv::below;
using tv::Card;
using tv::confirmation;
using tv::waitUntil;

class TheViewer : public tv::TvTest {
protected:
    void SetUp() override
    {
        box.watchScreen();
        ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN"));
        ASSERT_TRUE(box.start());
    }
    /// Sends a request and waits until exactly this card is up and has been drawn.
    void show(const tv::ShownRequest& request)
    {
        ASSERT_TRUE(box.show(request.method, request.texts));
        ASSERT_TRUE(box.shows({request.card}));
    }
    /// Presses keys while the program is busy, as in a call that blocks.
    void pressWhileBusy(std::initializer_list<const char*> keys)
    {
        box.program->signal(SIGSTOP);
        for (const char* key : keys)
            display().key(key);
        box.program->signal(SIGCONT);
    }
    long ignored(const std::string& what) const
    {
        const auto& lines = box.program->errors();
        return std::count_if(lines.begin(), lines.end(),
            [&](const std::string& line) { return line.rfind("I/orbis: Ignored a " + what, 0) == 0; });
    }
    /// Success when nothing was answered: the daemon was told of the start only, and the program runs on.
    testing::AssertionResult nothingWasAnswered() const
    {
        constexpr tv::Milliseconds kLongEnough {400};
        if (tv::stays([&] { return box.program->running() && box.daemon->calls().size() == 1; }, kLongEnough))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "something was answered";
    }
};

const tv::ShownRequest kGuide {"ShowMobileGuide", {"0042"}, tv::kGuideCard};
const tv::ShownRequest kPin {"ShowPinPopup", {"Anna's phone", "0042"}, tv::pinCard("Anna's phone", "0042")};

TEST_F(TheViewer, AnswersOnlyWhatHeHasSeen)
{
    show(kGuide);
    pressWhileBusy({"Return", "Return", "Return"});
    ASSERT_TRUE(box.shows({tv::kAccessPointsCard})) << "the first press was for the guide";
    EXPECT_TRUE(waitUntil([&] { return ignored("press of Return: what it would act on") == 2; }));
    EXPECT_TRUE(nothingWasAnswered());

    show(tv::kNetworkTestRequest);
    pressWhileBusy({"Return", "Return", "Return"});
    ASSERT_TRUE(box.shows({below(tv::kNetworkTestCard), confirmation("Yes")}));
    EXPECT_TRUE(waitUntil([&] { return ignored("press of Return") == 4; }));
    EXPECT_TRUE(nothingWasAnswered());

    ASSERT_TRUE(box.settings.setInt(tv::kOwned, 1));
    ASSERT_TRUE(box.shows({tv::kOwnedCard}));
    display().settledPicture();
    pressWhileBusy({"Return", "Left", "Return"});
    ASSERT_TRUE(box.shows({tv::kOwnedQuestion})) << "buttons that were swapped in place";
    EXPECT_TRUE(waitUntil([&] { return ignored("press of ") == 6; }));
    EXPECT_TRUE(nothingWasAnswered());

    display().settledPicture();
    pressWhileBusy({"Left", "Return"});
    EXPECT_TRUE(endedByViewer(false)) << "a press that came after the picture is lost";
}

TEST_F(TheViewer, DoesNotClickAtAButtonThatTookThePlaceOfAnother)
{
    ASSERT_TRUE(box.settings.setInt(tv::kOwned, 1));
    ASSERT_TRUE(box.shows({tv::kOwnedCard}));
    display().settledPicture();
    constexpr int kOnCancelAndYes[] = {900, 715};
    box.program->signal(SIGSTOP);
    for (int i = 0; i < 2; ++i)
        display().click(kOnCancelAndYes[0], kOnCancelAndYes[1]);
    box.program->signal(SIGCONT);
    EXPECT_TRUE(waitUntil([&] { return ignored("click") == 1; }));
    EXPECT_TRUE(nothingWasAnswered());
    display().settledPicture();
    display().click(kOnCancelAndYes[0], kOnCancelAndYes[1]);
    EXPECT_TRUE(endedByViewer(false)) << "a click that came after the picture is lost";
}

TEST_F(TheViewer, StopsOnceHoweverOftenHeClicks)
{
    ASSERT_TRUE(box.show("ShowFailedPopup", {"wifi"}));
    box.program->signal(SIGSTOP);
    for (int i = 0; i < 4; ++i)
        display().click(960, 690);
    box.program->signal(SIGCONT);
    EXPECT_TRUE(endedByViewer(false));
}

TEST_F(TheViewer, StopsOnceHoweverOftenHePresses)
{
    struct {
        tv::ShownRequest request;
        std::vector<const char*> before;
    } const answers[] = {{kPin, {}}, {kGuide, {"Right"}}, {tv::kNetworkTestRequest, {"Return"}},
        {tv::kSignInRequest, {"Return"}}};
    for (const auto& [request, before] : answers) {
        SCOPED_TRACE(request.method);
        if (!box.program->running()) {
            box.daemon->forget();
            ASSERT_TRUE(box.start());
        }
        show(request);
        for (const char* key : before) {
            display().key(key);
            display().settledPicture();
        }
        box.daemon->answer("StopTessel", tv::Answer::Held);
        pressWhileBusy({"Return", "Return", "KP_Enter", "Return"});
        ASSERT_TRUE(waitUntil([&] { return box.daemon->calls().size() > 1; }));
        display().key("Return");
        display().key("KP_Enter");
        box.daemon->answer("StopTessel", tv::Answer::Zero);
        box.daemon->release();
        EXPECT_TRUE(box.program->endsWith(0));
        EXPECT_EQ(box.daemon->calls(),
            (std::vector<std::string> {"ServerStarted(true)", "StopTessel(true, false)"}));
    }
}

TEST_F(TheViewer, MayLetGoOfAKeyAfterItsPopupIsGone)
{
    show(tv::kNetworkTestRequest);
    display().keyDown("Return");
    ASSERT_TRUE(box.shows({below(tv::kNetworkTestCard), confirmation("Yes")}));
    ASSERT_TRUE(box.request("HidePopup"));
    ASSERT_TRUE(box.screenIsPlain());
    display().keyUp("Return");
    ASSERT_TRUE(box.request(kPin.method, kPin.texts));
    ASSERT_TRUE(waitUntil([&] { return display().hasKeys(box.program->pid()); }));
    ASSERT_TRUE(display().waitForPicture([](const tv::Picture& now) { return now.count(0x29C5FF) > 200; }));
    display().key("Return");
    EXPECT_TRUE(endedByViewer(true)) << "the press counted as held";
}

TEST_F(TheViewer, KeepsThePopupThatIsUpWhenTheLanguageChanges)
{
    show(tv::kNetworkTestRequest);
    const tv::Picture before = display().settledPicture();
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, "ar_AE.UTF-8"));
    display().settledPicture();
    constexpr size_t kSpinner = size_t {104} * 104;
    EXPECT_LT(display().settledPicture().differences(before), kSpinner);
    display().key("Return");
    ASSERT_TRUE(box.shows({below(tv::kNetworkTestCard), confirmation("Yes")}));
    display().settledPicture();
    display().key("Right");
    ASSERT_TRUE(box.shows({below(tv::kNetworkTestCard), confirmation("No")}));

    ASSERT_TRUE(box.show("ShowTnCPopup"));
    const tv::Screen next = box.screen();
    ASSERT_EQ(next.cards.size(), 1U);
    EXPECT_EQ(next.cards.front().buttons.size(), 1U);
    EXPECT_NE(next.cards.front().title, tv::kTermsCard.title) << "not in the new language";
}

/// On a display of its own: the others count on its size.
class AScreen : public testing::Test {
protected:
    static constexpr uint32_t kPinColour = 0x29C5FF;

    void TearDown() override
    {
        if (HasFailure())
            std::cout << box.report();
    }
    /// @return what surrounds the digits of the PIN on a screen of this size; what is beyond it is left over
    tv::Geometry digits(int width, int height) const
    {
        const tv::Picture now = display.settledPicture();
        int left = 1920;
        int top = 1080;
        int right = -1;
        int bottom = -1;
        for (size_t i = 0; i < now.pixels.size(); ++i) {
            const int x = static_cast<int>(i % 1920);
            const int y = static_cast<int>(i / 1920);
            if (now.pixels[i] != kPinColour || x >= width || y >= height)
                continue;
            left = std::min(left, x);
            right = std::max(right, x);
            top = std::min(top, y);
            bottom = std::max(bottom, y);
        }
        return {left, top, right - left + 1, bottom - top + 1};
    }

    tv::PrivateBus bus;
    tv::Display display;
    tv::TvBox box {bus, display};
};

TEST_F(AScreen, MayGetAnotherSizeWithAPopupUp)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    const tv::Geometry large = digits(1920, 1080);
    display.resize(800, 600);
    const tv::Geometry small {0, 0, 800, 600};
    EXPECT_TRUE(waitUntil([&] { return display.visibleWindow(box.program->pid()) == small; }));
    constexpr double kScale = 800 / 1920.0;
    for (const char* when : {"open", "made later"}) {
        SCOPED_TRACE(when);
        const tv::Geometry now = digits(800, 600);
        EXPECT_NEAR(now.width, large.width * kScale, 12);
        EXPECT_NEAR(now.x + now.width / 2, 400, 3);
        EXPECT_LT(now.y + now.height, 600);
        ASSERT_TRUE(box.request("ShowPinPopup", {"Anna's phone", "0042"}));
    }
    display.resize(1920, 1080);
    EXPECT_TRUE(waitUntil([&] { return display.visibleWindow(box.program->pid()) == tv::Display::kScreen; }));
    const tv::Geometry again = digits(1920, 1080);
    EXPECT_NEAR(again.width, large.width, 12) << "in pixels of the small screen's rounding";
    EXPECT_NEAR(again.x + again.width / 2, 960, 3);
    display.key("Return");
    EXPECT_TRUE(box.program->endsWith(0));
}

TEST_F(AScreen, MayLoseItsWindowManagerForAWhile)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    display.stopManager();
    const auto other = display.start({"xev", "-geometry", "1200x800+100+100"});
    ASSERT_TRUE(waitUntil([&] { return !other->output().empty(); }));
    display.startManager();
    EXPECT_TRUE(waitUntil([&] { return display.hasKeys(box.program->pid()); }))
        << "the keys do not come back";
    EXPECT_TRUE(display.waitForPicture([](const tv::Picture& now) { return now.count(kPinColour) > 200; }))
        << "the popup lies below another window";
    display.settledPicture();
    display.key("Return");
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(box.daemon->calls().size(), 2U);
}

} // namespace
