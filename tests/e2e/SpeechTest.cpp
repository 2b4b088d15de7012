// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

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

/// The platform's own words in a language.
struct Words {
    const char* language;
    const char* button;
    const char* firstOfTwo;
    const char* secondOfTwo;
    const char* hint; ///< the program's, at the guide's picture
};

class TheReadOut : public tv::TvTest, public testing::WithParamInterface<Words> {
protected:
    /// @return what was said since the last call: at least @p number utterances, for which it waits
    Lines hear(size_t number)
    {
        waitUntil([&] { return box.utterances().size() >= m_heard + number; });
        const Lines all = box.utterances();
        const Lines result(all.begin() + static_cast<ptrdiff_t>(std::min(m_heard, all.size())), all.end());
        m_heard = all.size();
        return result;
    }
    Lines hear(const std::vector<std::string>& keys)
    {
        EXPECT_TRUE(box.press(keys));
        return hear(keys.size());
    }
    const char* next() const { return GetParam().language == std::string("en_US") ? "Right" : "Left"; }

    size_t m_heard = 0;
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

INSTANTIATE_TEST_SUITE_P(In, TheReadOut,
    testing::Values(Words {"en_US", "Button.", "Button, 1 of 2.", "Button, 2 of 2.", "Check your phone."},
        Words {"ar_AE", "زر.", "زر، 1 من 2.", "زر، 2 من 2.", "انظر إلى هاتفك."}),
    [](const auto& words) { return std::string(words.param.language, 2); });

TEST_P(TheReadOut, SaysWhatThePopupSaysInThisOrderAndFollowsTheFocus)
{
    const Words& words = GetParam();
    const bool isEnglish = words.language == std::string("en_US");
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, words.language));
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.request("ShowPinPopup", tv::kPinRequest.texts));
    ASSERT_TRUE(box.program->waitForLog("++PBC Timer Entered [59]"));
    EXPECT_EQ(box.utterances(), Lines {}) << "nobody asked for it";
    ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 1));
    EXPECT_EQ(hear(1).size(), 1U) << "the viewer does not know what is up";

    std::vector<tv::ShownRequest> requests(std::begin(tv::kRequests), std::end(tv::kRequests));
    requests.push_back({"ShowPinPopup", {"Bob & Ann <3", "0042"}, tv::pinCard("Bob & Ann <3", "0042")});
    for (const auto& [method, texts, english] : requests) {
        SCOPED_TRACE(method);
        ASSERT_TRUE(box.request(method, texts));
        const bool isGuide = method == std::string(tv::kGuideRequest.method);
        const Lines heard = hear(isGuide ? 2 : 1);
        ASSERT_EQ(heard.size(), isGuide ? 2U : 1U) << testing::PrintToString(heard);
        EXPECT_EQ(heard.back() == words.hint, isGuide) << heard.back();
        const std::string& said = heard[0];
        const tv::Screen screen = box.screen();
        ASSERT_EQ(screen.cards.size(), 1U);
        const tv::Card& card = screen.cards[0];
        EXPECT_EQ(card.title == english.title, isEnglish || card.title == "PIN");
        Lines parts {card.title};
        parts.insert(parts.end(), card.texts.begin(), card.texts.end());
        size_t at = 0;
        for (std::string part : parts) {
            part = part == "0042" ? "0 0 4 2." : plain(part);
            at = said.find(part, at);
            ASSERT_NE(at, std::string::npos) << part << "\nis not said, or too early, in\n" << said;
            at += part.size();
        }
        const std::string end =
            ' ' + card.focus + ". " + (card.buttons.size() > 1 ? words.firstOfTwo : words.button);
        EXPECT_EQ(said.substr(std::max(at, said.size() - std::min(said.size(), end.size()))), end) << said;
        EXPECT_EQ(plain(said), said);
        EXPECT_EQ(said.find("<b"), std::string::npos) << said;
    }
    // The countdown looks after the focus every second; that must not be heard.
    const size_t mark = box.program->mark();
    ASSERT_TRUE(box.program->waitForLog("++PBC Timer Entered [58]", mark));
    EXPECT_EQ(hear(0), Lines {});
}

/// The record of what is read out is one for the whole program, and holds what was written last.
TEST_P(TheReadOut, NamesTheButtonThatHasTheKeysAndSaysEveryQuestion)
{
    const Words& words = GetParam();
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, words.language));
    ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 1));
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowNetworkTest", tv::kNetworkTestRequest.texts));
    const std::string all = hear(1).back();
    const std::string cancel = box.screen().cards[0].focus;
    EXPECT_NE(hear({"Return"})[0].find(words.firstOfTwo), std::string::npos);
    const Lines no = hear({next()});
    EXPECT_EQ(no, (Lines {box.screen().cards[1].focus + ". " + words.secondOfTwo}));
    EXPECT_EQ(hear({"Return"}), (Lines {cancel + ". " + words.button})) << "after No";
    EXPECT_EQ(hear({"Up"}), Lines {all});

    ASSERT_TRUE(box.settings.setInt(tv::kOwned, 1));
    ASSERT_TRUE(waitUntil([&] { return box.utterances().size() > m_heard; }));
    const std::string informing = hear(0).back();
    const tv::Card before = box.screen().cards[0];
    EXPECT_EQ(informing, before.title + ". " + before.texts[0] + ". " + cancel + ". " + words.button);
    const Lines question = hear({"Return"});
    const tv::Card after = box.screen().cards[0];
    EXPECT_EQ(question, (Lines {after.texts[0] + " " + after.focus + ". " + words.secondOfTwo}));
    EXPECT_EQ(hear({"Return"}), (Lines {before.texts[0] + ". " + cancel + ". " + words.button}));
}

class TheSpeechService : public tv::TvTest {
protected:
    void SetUp() override
    {
        box.setVariable("ORBIS_SPEECH_LOG", "");
        box.setVariable("SPEECHD_ADDRESS", "unix_socket:" + m_socket);
        box.setVariable("SPEECHD_CMD", (box.folders.root() / "no-service").string());
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
    ASSERT_TRUE(hears(service, " 0 0 4 2. "));
    const Lines told = service.told();
    EXPECT_EQ(told, (Lines {"SET SELF LANGUAGE en", "SET SELF PRIORITY MESSAGE", told.back()}))
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
