/// One popup at a time: each replaces the one before, and hiding leaves nothing.
#include "TvTest.h"

namespace {

using tv::waitUntil;

struct Request {
    const char* method;
    std::vector<std::string> texts;
};

class Popups : public tv::TvTest {
protected:
    void SetUp() override { ASSERT_TRUE(box.start()); }

    tv::Picture pictureOf(const Request& request)
    {
        EXPECT_TRUE(box.show(request.method, request.texts));
        return display().settledPicture();
    }

    /// Sends everything without waiting, then collects the answers.
    void sendAtOnce(const std::vector<Request>& requests)
    {
        const size_t before = box.daemon->replies().size();
        for (const Request& request : requests)
            box.daemon->send(request.method, request.texts);
        const size_t all = before + requests.size();
        ASSERT_TRUE(waitUntil([&] { return box.daemon->replies().size() == all; }));
        for (size_t i = before; i < all; ++i)
            EXPECT_EQ(box.daemon->replies()[i].value, "(0,)") << box.daemon->replies()[i].error;
    }
};

const Request kPin {"ShowPinPopup", {"Anna's phone", "0042"}};
const Request kTerms {"ShowTnCPopup", {}};
const Request kApList {"ShowApListPopup", {}};
const Request kFailed {"ShowFailedPopup", {"wifi"}};
const Request kSignInFailed {"ShowFailedPopup", {"sso"}};
const Request kHide {"HidePopup", {}};

TEST_F(Popups, AreGoneAfterHide)
{
    for (const Request& request : {kPin, kTerms, kApList, kFailed, kSignInFailed}) {
        SCOPED_TRACE(request.method);
        ASSERT_TRUE(box.show(request.method, request.texts));
        ASSERT_TRUE(box.request("HidePopup"));
        EXPECT_TRUE(box.screenIsPlain());
        EXPECT_FALSE(display().hasKeys(box.program->pid()));
    }
    EXPECT_FALSE(box.program->logged("Popup Hide")) << "that line is for a hide that did not work";
    EXPECT_TRUE(box.request("HidePopup")) << "with nothing to hide";
    EXPECT_EQ(box.daemon->calls().size(), 1U) << "none of this is a stop";
}

TEST_F(Popups, GoWithoutAComplaintOfTheToolkit)
{
    for (const Request& request : {kPin, kTerms, kApList, kHide, kFailed})
        ASSERT_TRUE(box.request(request.method, request.texts));
    ASSERT_TRUE(box.setStartMode(100));
    ASSERT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
}

TEST_F(Popups, ReplaceOneAnotherHoweverQuicklyTheyCome)
{
    const tv::Picture pin = pictureOf(kPin);
    ASSERT_TRUE(box.request("HidePopup"));
    const tv::Picture apList = pictureOf(kApList);
    ASSERT_GT(apList.differences(pin), 0U);

    sendAtOnce({kPin, kTerms, kFailed, kPin, kHide, kSignInFailed, kTerms, kPin});
    EXPECT_TRUE(display().waitForPicture([&](const tv::Picture& now) { return now == pin; }))
        << display().settledPicture().differences(pin) << " pixels are not the last popup's";
    sendAtOnce({kTerms, kPin, kFailed, kHide});
    EXPECT_TRUE(box.screenIsPlain());
    sendAtOnce({kHide, kPin, kSignInFailed, kTerms, kApList});
    EXPECT_TRUE(display().waitForPicture([&](const tv::Picture& now) { return now == apList; }))
        << display().settledPicture().differences(apList) << " pixels are not the last popup's";

    ASSERT_TRUE(waitUntil([&] { return display().hasKeys(box.program->pid()); }));
    display().key("Return");
    EXPECT_TRUE(endedByViewer(false)) << "one popup must have been left, and not the PIN";
    EXPECT_EQ(box.program->count("Close Button Clicked"), 1U);
}

TEST_F(Popups, OtherThanThePinEndWithoutTheReadyKey)
{
    for (const Request& request : {kTerms, kApList, kFailed, kSignInFailed}) {
        SCOPED_TRACE(
            std::string(request.method) + (request.texts.empty() ? "" : " " + request.texts.front()));
        box.program.reset();
        box.daemon->forget();
        ASSERT_TRUE(box.settings.setInt(tv::kStartMode, 0));
        ASSERT_TRUE(box.start());
        ASSERT_TRUE(box.show(request.method, request.texts));
        display().key("Return");
        EXPECT_TRUE(endedByViewer(false));
        EXPECT_TRUE(box.screenIsPlain());
    }
}

} // namespace
