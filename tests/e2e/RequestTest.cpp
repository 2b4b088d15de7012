/// Every way to ask for a popup, and what is on the screen then.
#include "Cards.h"
#include "TvTest.h"

namespace {

class Requests : public tv::TvTest {
protected:
    void SetUp() override
    {
        box.watchScreen();
        ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN"));
        ASSERT_TRUE(box.start());
    }

    /// Writes a request into the store and waits until the program has read it.
    void write(const std::string& json, bool isRequest = true)
    {
        const size_t mark = box.program->mark();
        ASSERT_TRUE(box.settings.setText(tv::kRequest, json));
        ASSERT_TRUE(box.program->waitForLog(
            std::string("parsingSuccessful[") + (isRequest ? "true" : "false") + "]  root [*", mark));
    }
};

TEST_F(Requests, ShowTheirPopupInThePlaceOfTheOneBefore)
{
    for (const tv::ShownRequest& request : tv::kRequests) {
        SCOPED_TRACE(request.method);
        ASSERT_TRUE(box.request(request.method, request.texts));
        EXPECT_TRUE(box.shows({request.card}));
    }
    // The other way, each after another kind of popup than above.
    for (auto request = std::rbegin(tv::kRequests); request != std::rend(tv::kRequests); ++request) {
        if (!request->json)
            continue;
        SCOPED_TRACE(request->json);
        write(request->json);
        EXPECT_TRUE(box.shows({request->card}));
    }
    EXPECT_EQ(box.daemon->calls().size(), 1U) << "a popup that is replaced is no stop";
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
}

TEST_F(Requests, LeaveNothingAfterEitherWayToHide)
{
    for (const tv::ShownRequest& request : tv::kRequests) {
        SCOPED_TRACE(request.method);
        ASSERT_TRUE(box.request(request.method, request.texts));
        ASSERT_TRUE(box.shows({request.card}));
        ASSERT_TRUE(box.request("HidePopup"));
        ASSERT_TRUE(box.shows({}));
        ASSERT_TRUE(box.request(request.method, request.texts));
        ASSERT_TRUE(box.shows({request.card}));
        write(R"({"page":"success"})");
        ASSERT_TRUE(box.shows({}));
    }
    EXPECT_EQ(box.screen().dim, 0) << "the picture stays dimmed without a popup";
}

TEST_F(Requests, OfAnotherShapeChangeNothingAndAreSurvived)
{
    ASSERT_TRUE(box.request("ShowApListPopup"));
    ASSERT_TRUE(box.shows({tv::kAccessPointsCard}));
    const std::pair<std::string, bool> texts[] = {
        {"", false},
        {"pin", false},
        {R"({"page":"pin")", false},
        {R"(["page","pin"])", true},
        {R"("pin")", true},
        {"42", true},
        {"null", true},
        {R"({"page":"PIN"})", true},
        {R"({"page":["pin"]})", true},
        {R"({"page":{"page":"pin"}})", true},
        {R"({"page":1.5e300})", true},
        {R"({"page":"pin\u0000"})", true},
        {R"({"Page":"pin","mobilename":"Anna","pin":"0042"})", true},
        {std::string(100000, '['), false},
        {R"({"page":)" + std::string(100000, '['), false},
        {R"({"a":")" + std::string(1 << 20, 'x') + "\"}", true},
        {std::string(1 << 20, '\xFF'), false},
        {"\xEF\xBB\xBF{}", true},
    };
    for (const auto& [text, isJson] : texts) {
        SCOPED_TRACE(text.substr(0, 40) + " (" + std::to_string(text.size()) + " bytes)");
        write(text, isJson);
        ASSERT_TRUE(box.program->running());
        EXPECT_TRUE(box.shows({tv::kAccessPointsCard}));
    }
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
}

TEST_F(Requests, ReadMembersOfOtherTypesAndSurviveTheirBytes)
{
    const auto lineOf = [&] {
        const tv::Screen screen = box.screen();
        return screen.cards.empty() ? "no popup" : screen.cards[0].texts.back();
    };
    const std::pair<const char*, const char*> members[] = {
        {R"({"page":"wifi","ssid":7})", "Wi-Fi network: \u20687\u2069"},
        {R"({"page":"wifi","ssid":true})", "Wi-Fi network: \u2068true\u2069"},
        {R"({"page":"wifi","ssid":["a"]})", "Wi-Fi network:"},
        {R"({"page":"wifi","ssid":{"a":"b"}})", "Wi-Fi network:"},
        {R"({"page":"wifi"})", "Wi-Fi network:"},
        {R"({"page":"sso","account":"a & b"})", "Norvale account: \u2068a & b\u2069"},
    };
    for (const auto& [json, expected] : members) {
        write(json);
        EXPECT_TRUE(tv::waitUntil([&] { return lineOf().rfind(expected, 0) == 0; })) << json << lineOf();
    }
    for (const std::string& name : {std::string("\xFF\xFE\x80\xC3"), std::string(1 << 20, 'W'),
             std::string(5000, '&'), std::string("<b></color>%s%n%1")}) {
        write(R"({"page":"wifi","mobilename":")" + name + R"(","ssid":")" + name + "\"}");
        EXPECT_TRUE(tv::waitUntil([&] { return box.screen().cards.size() == 1; }));
        write(R"({"page":"sso","mobilename":")" + name + R"(","account":")" + name + "\"}");
        EXPECT_TRUE(tv::waitUntil([&] { return box.screen().cards.size() == 1; }));
        EXPECT_TRUE(box.program->running());
    }
    ASSERT_TRUE(box.request("ShowTnCPopup"));
    EXPECT_TRUE(box.shows({tv::kTermsCard}));
}

TEST_F(Requests, AreNotDisturbedByASecondLaunch)
{
    ASSERT_TRUE(box.show(tv::kSignInRequest.method, tv::kSignInRequest.texts));
    display().key("Return");
    const std::vector<tv::Card> asking {tv::below(tv::kSignInCard), tv::confirmation("Yes")};
    ASSERT_TRUE(box.shows(asking));
    const size_t mark = box.program->mark();
    const auto second = box.launch({"LAUNCH_MODE=POPUP"});
    EXPECT_TRUE(second->endsWith(0)) << second->tail();
    ASSERT_TRUE(box.program->waitForLog("In CTesselUI ::On Service ", mark));
    EXPECT_TRUE(box.shows(asking));
    EXPECT_TRUE(display().hasKeys(box.program->pid()));
    EXPECT_EQ(box.daemon->calls().size(), 1U);
}

} // namespace
