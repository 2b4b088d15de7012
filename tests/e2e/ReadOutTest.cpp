/// What the program says to a viewer who has the screen read out.
#include "Cards.h"
#include "TvTest.h"

namespace {

using tv::waitUntil;

class TheReadOut : public tv::TvTest {
protected:
    void startWith(int screenReader)
    {
        ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, screenReader));
        ASSERT_TRUE(box.start());
    }

    bool waitForUtterances(size_t count)
    {
        return waitUntil([&] { return box.utterances().size() >= count; });
    }

    static bool contains(const std::string& text, const std::string& part)
    {
        return text.find(part) != std::string::npos;
    }
};

/// Speech has no use for the marks of a text's direction.
std::string plain(std::string text)
{
    for (const char* mark : {"\u200e", "\u200f", "\u202d", "\u2068", "\u2069"}) {
        for (size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at))
            text.erase(at, std::string(mark).size());
    }
    return text;
}

class TheReadOutIn : public TheReadOut, public testing::WithParamInterface<const char*> { };

INSTANTIATE_TEST_SUITE_P(, TheReadOutIn, testing::Values("en_US", "ar_AE"),
    [](const auto& language) { return std::string(language.param, 2); });

TEST_P(TheReadOutIn, SaysWhatThePopupSaysInThisOrder)
{
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, GetParam()));
    ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN"));
    startWith(1);
    size_t count = 0;
    for (const tv::ShownRequest& request : tv::kRequests) {
        SCOPED_TRACE(request.method);
        ASSERT_TRUE(box.request(request.method, request.texts));
        ASSERT_TRUE(waitForUtterances(++count));
        const tv::Screen screen = box.screen();
        ASSERT_EQ(screen.cards.size(), 1U);
        const tv::Card& card = screen.cards[0];
        EXPECT_EQ(
            card.title == request.card.title, GetParam() == std::string("en_US") || card.title == "PIN");
        const std::string said = box.utterances().back();
        std::vector<std::string> parts {card.title};
        parts.insert(parts.end(), card.texts.begin(), card.texts.end());
        parts.push_back(card.focus);
        size_t at = 0;
        for (const std::string& part : parts) {
            const size_t found = said.find(plain(part), at);
            ASSERT_NE(found, std::string::npos) << plain(part) << "\nis not said, or too early, in\n" << said;
            at = found + plain(part).size();
        }
        EXPECT_EQ(plain(said), said);
        EXPECT_EQ(said.find('<'), std::string::npos) << said;
    }
    // The countdown looks after the focus every second; that must not be heard.
    ASSERT_TRUE(box.request("ShowPinPopup", {"Anna's phone", "0042"}));
    ASSERT_TRUE(box.program->waitForLog("++PBC Timer Entered [58]"));
    EXPECT_EQ(box.utterances().size(), count + 1);
}

TEST_F(TheReadOut, SurvivesMarkupInAName)
{
    startWith(1);
    ASSERT_TRUE(box.show("ShowPinPopup", {"Bob & Ann <3", "0042"}));
    ASSERT_TRUE(waitForUtterances(1));
    const std::string said = box.utterances().back();
    EXPECT_TRUE(contains(said, "Bob & Ann")) << said;
    EXPECT_TRUE(contains(said, "0042")) << "what follows the name is lost: " << said;
    EXPECT_TRUE(contains(said, "Cancel")) << said;
}

TEST_F(TheReadOut, FollowsTheFocus)
{
    startWith(1);
    ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN"));
    ASSERT_TRUE(box.show("ShowMobileGuide", {"0042"}));
    ASSERT_TRUE(waitForUtterances(1));
    ASSERT_TRUE(box.program->waitForLog("Showing tooltip"));
    ASSERT_TRUE(box.press({"Right"}));
    ASSERT_TRUE(waitForUtterances(2));
    const auto said = box.utterances();
    EXPECT_NE(said[1], said[0]) << "the other button was not named";
    EXPECT_LT(said[1].size(), said[0].size()) << "the whole text was said again";
}

TEST_F(TheReadOut, IsSilentUnlessTheViewerAskedForIt)
{
    startWith(0);
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    ASSERT_TRUE(box.program->waitForLog("++PBC Timer Entered [59]"));
    EXPECT_TRUE(box.utterances().empty()) << testing::PrintToString(box.utterances());

    // Asked for on the way, it begins with the next popup.
    ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 1));
    ASSERT_TRUE(box.show("ShowTnCPopup"));
    EXPECT_TRUE(waitForUtterances(1));
}

} // namespace
