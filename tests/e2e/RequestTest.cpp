/// One popup at a time, and nothing after it; what each shows is in the sessions of ScenarioTest.
#include "Cards.h"
#include "TvTest.h"

namespace {

using Texts = std::vector<std::string>;
using Request = std::pair<const char*, Texts>;

class Requests : public tv::TvTest {
protected:
    void SetUp() override
    {
        ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN"));
        ASSERT_TRUE(box.start());
    }

    /// Writes a request into the store and waits until the program has read it.
    void write(const std::string& json)
    {
        const size_t mark = box.program->mark();
        ASSERT_TRUE(box.settings.setText(tv::kRequest, json));
        ASSERT_TRUE(box.program->waitForLog("parsingSuccessful[true]  root [*", mark));
    }

    /// Tells whether the phone owns the TV.
    void own(int value)
    {
        const size_t mark = box.program->mark();
        ASSERT_TRUE(box.settings.setInt(tv::kOwned, value));
        ASSERT_TRUE(box.program->waitForLog("DEVICE_OWNED_VCONF == " + std::to_string(value), mark));
    }

    /// Sends everything without waiting, then collects the answers.
    void sendAtOnce(const std::vector<Request>& requests)
    {
        const size_t before = box.daemon->replies().size();
        for (const auto& [method, texts] : requests)
            box.daemon->send(method, texts);
        const size_t all = before + requests.size();
        ASSERT_TRUE(tv::waitUntil([&] { return box.daemon->replies().size() == all; }));
        for (size_t i = before; i < all; ++i)
            EXPECT_EQ(box.daemon->replies()[i].value, "(0,)") << box.daemon->replies()[i].error;
    }
};

TEST_F(Requests, LeaveNothingAfterEitherWayToHide)
{
    for (const tv::ShownRequest& request : tv::kRequests) {
        SCOPED_TRACE(request.method);
        ASSERT_TRUE(box.show(request.method, request.texts));
        ASSERT_TRUE(box.request("HidePopup"));
        ASSERT_TRUE(box.shows({}));
        EXPECT_TRUE(box.screenIsPlain());
        EXPECT_FALSE(display().hasKeys(box.program->pid()));
        ASSERT_TRUE(box.request(request.method, request.texts));
        ASSERT_TRUE(box.shows({request.card}));
        write(R"({"page":"success"})");
        ASSERT_TRUE(box.shows({}));
    }
    EXPECT_FALSE(box.program->logged("Popup Hide")) << "that line is for a hide that did not work";
    EXPECT_TRUE(box.request("HidePopup")) << "with nothing to hide";
    // What the interface does not offer is refused by the bus, arguments of another type too.
    EXPECT_NE(box.daemon->request("ShowNothing").error, "");
    EXPECT_NE(box.daemon->request("ShowPinPopup", {"0042"}).error, "");
    EXPECT_EQ(box.daemon->calls().size(), 1U) << "none of this is a stop";
}

TEST_F(Requests, ReplaceOneAnotherHoweverQuicklyTheyCome)
{
    const Request pin {"ShowPinPopup", {"Anna's phone", "0042"}};
    const Request terms {"ShowTnCPopup", {}};
    const Request failed {"ShowFailedPopup", {"sso"}};
    const Request hide {"HidePopup", {}};
    sendAtOnce({pin, terms, failed, pin, hide, failed, terms, pin});
    EXPECT_TRUE(box.shows({tv::pinCard("Anna's phone", "0042")}));
    sendAtOnce({terms, pin, failed, hide});
    EXPECT_TRUE(box.shows({}));
    sendAtOnce({hide, pin, failed, terms, {"ShowApListPopup", {}}});
    EXPECT_TRUE(box.shows({tv::kAccessPointsCard}));
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(false)) << "one popup must have been left, and not the PIN";
}

TEST_F(Requests, TakeAQuestionAlongAndAreNotDisturbedByASecondLaunch)
{
    for (const auto& [method, texts, card] : {tv::kNetworkTestRequest, tv::kSignInRequest}) {
        SCOPED_TRACE(method);
        ASSERT_TRUE(box.show(method, texts));
        ASSERT_TRUE(box.press({"Return"}));
        const std::vector<tv::Card> asking {tv::below(card), tv::confirmation("Yes")};
        ASSERT_TRUE(box.shows(asking));
        const size_t mark = box.program->mark();
        const auto second = box.launch({"LAUNCH_MODE=POPUP"});
        EXPECT_TRUE(second->endsWith(0)) << second->tail();
        EXPECT_FALSE(second->logged("In CTesselUI::OnCreate"));
        EXPECT_NE(box.folders.appStatus(tv::kPackage), std::nullopt) << "the entry is the first one's";
        ASSERT_TRUE(box.program->waitForLog("In CTesselUI ::On Service ", mark));
        EXPECT_TRUE(box.shows(asking));
        EXPECT_TRUE(display().hasKeys(box.program->pid()));
        ASSERT_TRUE(box.request("ShowApListPopup"));
        EXPECT_TRUE(box.shows({tv::kAccessPointsCard}));
    }
    EXPECT_EQ(box.daemon->calls().size(), 1U);
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(endedByViewer(false)) << "one press closes the hint";
    EXPECT_EQ(box.program->complaints(), Texts {});
}

TEST_F(Requests, ShowThePopupOfAnOwnedTvForOneOnlyAndOnce)
{
    for (int value : {0, 2, -1})
        own(value);
    EXPECT_TRUE(box.shows({}));
    for (int value : {1, 1, 0}) {
        own(value);
        EXPECT_TRUE(box.shows({tv::kOwnedCard})) << "only a request takes it away";
    }
    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(box.shows({}));
    EXPECT_FALSE(box.program->logged("AfterPairingPopup Shown")) << "that line is for one that was not shown";
}

} // namespace
