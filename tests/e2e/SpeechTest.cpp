/// What the program says to a viewer who has the screen read out, what the machine's speech service is told
/// of it, and what becomes of the program when that service is not as it should be.
#include "Cards.h"
#include "SpeechServer.h"
#include "TvTest.h"

#include <algorithm>
#include <csignal>

namespace {

namespace fs = std::filesystem;
using tv::SpeechServer;
using tv::waitUntil;
using Lines = std::vector<std::string>;

constexpr const char* kCancel = "CANCEL SELF";

class TheReadOut : public tv::TvTest, public testing::WithParamInterface<const char*> {
protected:
    /// @return the utterance of this number, which is the last
    std::string utterance(size_t number) const
    {
        waitUntil([&] { return box.utterances().size() >= number; });
        const Lines all = box.utterances();
        return all.size() == number ? all.back() : testing::PrintToString(all);
    }
};

/// Speech has no use for the marks of a text's direction.
std::string plain(std::string text)
{
    for (const std::string mark : {"\u200e", "\u200f", "\u202d", "\u2068", "\u2069"}) {
        for (size_t at; (at = text.find(mark)) != std::string::npos;)
            text.erase(at, mark.size());
    }
    return text;
}

INSTANTIATE_TEST_SUITE_P(In, TheReadOut, testing::Values("en_US", "ar_AE"),
    [](const auto& language) { return std::string(language.param, 2); });

TEST_P(TheReadOut, SaysWhatThePopupSaysInThisOrderAndFollowsTheFocus)
{
    const bool isEnglish = GetParam() == std::string("en_US");
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, GetParam()));
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.request("ShowPinPopup", tv::kPinRequest.texts));
    ASSERT_TRUE(box.program->waitForLog("++PBC Timer Entered [59]"));
    EXPECT_EQ(box.utterances(), Lines {}) << "nobody asked for it";

    ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 1));
    size_t count = 0;
    std::vector<tv::ShownRequest> requests(std::begin(tv::kRequests), std::end(tv::kRequests));
    requests.push_back({"ShowPinPopup", {"Bob & Ann <3", "0042"}, tv::pinCard("Bob & Ann <3", "0042")});
    for (const auto& [method, texts, english] : requests) {
        SCOPED_TRACE(method);
        ASSERT_TRUE(box.request(method, texts));
        const std::string said = utterance(++count);
        const tv::Screen screen = box.screen();
        ASSERT_EQ(screen.cards.size(), 1U);
        const tv::Card& card = screen.cards[0];
        EXPECT_EQ(card.title == english.title, isEnglish || card.title == "PIN");
        Lines parts {card.title};
        parts.insert(parts.end(), card.texts.begin(), card.texts.end());
        parts.push_back(card.focus);
        size_t at = 0;
        for (const std::string& part : parts) {
            at = said.find(plain(part), at);
            ASSERT_NE(at, std::string::npos) << plain(part) << "\nis not said, or too early, in\n" << said;
            at += plain(part).size();
        }
        EXPECT_EQ(plain(said), said);
        EXPECT_EQ(said.find("<b"), std::string::npos) << said;
    }
    // The countdown looks after the focus every second; that must not be heard.
    const size_t mark = box.program->mark();
    ASSERT_TRUE(box.program->waitForLog("++PBC Timer Entered [58]", mark));
    EXPECT_EQ(box.utterances().size(), count);

    ASSERT_TRUE(box.show("ShowMobileGuide", {"0042"}));
    const std::string all = utterance(++count);
    ASSERT_TRUE(box.press({isEnglish ? "Right" : "Left"}));
    EXPECT_LT(utterance(++count).size(), all.size()) << "the whole text was said again";
}

class TheSpeechService : public tv::TvTest {
protected:
    void SetUp() override
    {
        box.setVariable("ORBIS_SPEECH_LOG", "");
        box.setVariable("SPEECHD_ADDRESS", "unix_socket:" + m_socket);
        box.setVariable("SPEECHD_CMD", (box.folders.root() / "no-service").string());
#ifdef __SANITIZE_ADDRESS__
        // The library never frees what it says of starting the service; only a whole stack tells whose it is.
        const auto file = box.folders.root() / "leaks";
        tv::writeFile(file, "leak:spd_open2\n");
        box.setVariable("LSAN_OPTIONS", "suppressions=" + file.string() + ":print_suppressions=0");
        box.setVariable("ASAN_OPTIONS", "fast_unwind_on_malloc=0:verify_asan_link_order=0");
#endif
        ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 1));
    }

    /// Success when it has been told a line with this part, and nothing after it.
    static testing::AssertionResult hears(const SpeechServer& service, const std::string& part)
    {
        const bool came = waitUntil([&] {
            const Lines told = service.told();
            return !told.empty() && told.back().find(part) != std::string::npos;
        });
        return testing::AssertionResult(came) << testing::PrintToString(service.told());
    }

    /// @return the processes that the program has started and that live
    std::string children() const
    {
        std::string all;
        for (const auto& thread :
            fs::directory_iterator("/proc/" + std::to_string(box.program->pid()) + "/task"))
            all += tv::readFile(thread.path() / "children");
        return all;
    }

    bool endsSoonOnSignal() const
    {
        constexpr tv::Milliseconds kSoon {3000};
        box.program->signal(SIGTERM);
        return box.program->waitForExit(kSoon) == 0;
    }

    const std::string m_socket = box.folders.root() / "speech";
};

TEST_F(TheSpeechService, IsToldEachTextInItsLanguageAndToStopWithThePopup)
{
    const SpeechServer service(m_socket);
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, "tlh_XX"));
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show(tv::kPinRequest));
    ASSERT_TRUE(hears(service, ",0 0 4 2,"));
    const Lines told = service.told();
    EXPECT_EQ(told, (Lines {"SET SELF LANGUAGE en", "SET SELF PRIORITY TEXT", told.back()}))
        << "or a PIN twice";
    EXPECT_EQ(children(), "") << "others see what a process was started with";

    ASSERT_TRUE(box.show(tv::kNetworkTestRequest));
    ASSERT_TRUE(hears(service, "Attic"));
    EXPECT_EQ(service.told()[3], kCancel) << "both are heard";

    EXPECT_TRUE(box.press({"Return"})); // the confirmation covers the popup
    ASSERT_TRUE(hears(service, "Yes"));
    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(hears(service, kCancel)) << "what is read is of a popup that is gone";
    const Lines all = service.told();
    EXPECT_EQ(std::count(all.begin(), all.end(), kCancel), 3);
    ASSERT_TRUE(box.request("HidePopup"));

    ASSERT_TRUE(box.show(tv::kTermsRequest));
    ASSERT_TRUE(hears(service, "terms and conditions"));
    EXPECT_NE(service.told()[all.size()], kCancel) << "there was nothing to stop";
    ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 0));
    EXPECT_TRUE(hears(service, kCancel)) << "the reader was turned off";

    ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 1));
    ASSERT_TRUE(box.show(tv::kAccessPointsRequest));
    ASSERT_TRUE(hears(service, "Cancel"));
    EXPECT_TRUE(endsSoonOnSignal());
    EXPECT_TRUE(hears(service, kCancel)) << "the program is gone";
}

TEST_F(TheSpeechService, MayBeAbsentDieComeBackAndNeverAnswer)
{
    const auto complaints = [&] {
        return box.program->lines("E/orbis-platform: The speech service is of no use: ").size();
    };
    ASSERT_TRUE(box.start());
    for (const char* method : {"ShowTnCPopup", "ShowApListPopup", "ShowTnCPopup"})
        ASSERT_TRUE(box.show(method));
    EXPECT_EQ(complaints(), 1U);
    using Manner = SpeechServer::Manner;
    for (const auto manner : {Manner::Answers, Manner::DiesInItsAnswer, Manner::Babbles, Manner::Answers}) {
        SCOPED_TRACE(static_cast<int>(manner));
        const SpeechServer service(m_socket, manner);
        ASSERT_TRUE(box.show(tv::kNetworkTestRequest));
        EXPECT_TRUE(manner == Manner::Babbles || hears(service, "Attic")) << "it is not found again";
        ASSERT_TRUE(box.request("HidePopup"));
        EXPECT_TRUE(manner != Manner::Answers || hears(service, kCancel));
    }
    EXPECT_EQ(children(), "");
    EXPECT_LE(complaints(), 2U);

    // From the start, and in the midst of a conversation.
    for (const auto manner : {Manner::IsSilent, Manner::Answers}) {
        SCOPED_TRACE(static_cast<int>(manner));
        SpeechServer service(m_socket, manner);
        ASSERT_TRUE(box.startAgain());
        ASSERT_TRUE(box.show(tv::kTermsRequest));
        EXPECT_TRUE(manner == Manner::IsSilent || hears(service, "terms"));
        service.setManner(Manner::IsSilent);
        ASSERT_TRUE(box.show(tv::kPinRequest));
        EXPECT_TRUE(box.program->waitForLog("++PBC Timer Entered [59]")) << "the service is waited for";
        EXPECT_TRUE(endsSoonOnSignal());
    }
}

TEST_F(TheSpeechService, IsStartedOnceWithoutATextAndWithItsSignals)
{
    const auto script = box.folders.root() / "service";
    const auto record = box.folders.root() / "record";
    // Not the shell, which lets all signals through when it starts.
    tv::writeFile(script,
        "#!/usr/bin/perl\nopen(my $record, '>>', '" + record.string()
            + "'); open(my $status, '<', '/proc/self/status');\n"
              "print $record \"@ARGV\\n\", grep(/^SigBlk/, <$status>);\n");
    fs::permissions(script, fs::perms::owner_all);
    box.setVariable("SPEECHD_CMD", script.string());
    ASSERT_TRUE(box.start());
    for (const char* pin : {"0042", "0043", "0044"})
        ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", pin}));
    ASSERT_TRUE(waitUntil([&] { return tv::readLines(record).size() >= 2; }));
    EXPECT_EQ(tv::readLines(record),
        (Lines {"--spawn --communication-method unix_socket --socket-path " + m_socket,
            "SigBlk:\t0000000000000000"}))
        << "started again and again, or the service cannot be ended";
    EXPECT_TRUE(endsSoonOnSignal());
}

} // namespace
