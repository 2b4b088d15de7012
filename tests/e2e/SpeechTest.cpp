/// What the machine's speech service is told, and what becomes of the program when that is not as it should
/// be.
#include "SpeechServer.h"
#include "TvTest.h"

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace {

using tv::SpeechServer;
using tv::waitUntil;
using Lines = std::vector<std::string>;

constexpr const char* kCancel = "CANCEL SELF";

class TheSpeechService : public tv::TvTest {
protected:
    void SetUp() override
    {
        box.setVariable("ORBIS_SPEECH_LOG", "");
        box.setVariable("SPEECHD_ADDRESS", "unix_socket:" + socket());
        box.setVariable("SPEECHD_CMD", (box.folders.root() / "no-service").string());
#ifdef __SANITIZE_ADDRESS__
        // The library never frees what it says of starting the service; only a whole stack tells whose it is.
        const auto file = box.folders.root() / "leaks";
        tv::writeFile(file, "leak:spd_open2\n");
        box.setVariable("LSAN_OPTIONS", "suppressions=" + file.string() + ":print_suppressions=0");
        box.setVariable("ASAN_OPTIONS", "fast_unwind_on_malloc=0");
#endif
        ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 1));
    }

    std::string socket() const
    {
        return (box.folders.root() / "speech").string();
    }

    /// Success when it has been told this last.
    testing::AssertionResult isTold(const SpeechServer& service, const Lines& last) const
    {
        const bool came = waitUntil([&] { return endsIn(service.told(), last); });
        if (came)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(service.told());
    }

    /// Success when it has been told a text with this part, and nothing after it.
    testing::AssertionResult hears(const SpeechServer& service, const std::string& part) const
    {
        const bool came = waitUntil([&] {
            const Lines told = service.told();
            return !told.empty() && told.back().find(part) != std::string::npos;
        });
        if (came)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(service.told());
    }

    static long cancels(const SpeechServer& service)
    {
        const Lines told = service.told();
        return std::count(told.begin(), told.end(), kCancel);
    }

    static bool endsIn(const Lines& told, const Lines& last)
    {
        return told.size() >= last.size() && std::equal(last.rbegin(), last.rend(), told.rbegin());
    }

    /// @return the processes that the program has started and that live
    std::string children() const
    {
        std::string all;
        const std::filesystem::path threads = "/proc/" + std::to_string(box.program->pid()) + "/task";
        for (const auto& thread : std::filesystem::directory_iterator(threads))
            all += tv::readFile(thread.path() / "children");
        return all;
    }

    testing::AssertionResult endsSoonOnSignal() const
    {
        constexpr tv::Milliseconds kSoon {1000};
        box.program->signal(SIGTERM);
        if (box.program->waitForExit(kSoon) == 0)
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
            << "a second later: " << testing::PrintToString(box.program->status().value_or(-1));
    }
};

TEST_F(TheSpeechService, IsToldEachTextInItsLanguageAndToStopWithThePopup)
{
    const SpeechServer service(socket());
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, "tlh_XX"));
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    ASSERT_TRUE(hears(service, ",0 0 4 2,"));
    EXPECT_TRUE(
        endsIn(service.told(), {"SET SELF LANGUAGE en", "SET SELF PRIORITY TEXT", service.told().back()}));
    EXPECT_EQ(service.told().size(), 3U) << "what nobody asked for, or a PIN twice";
    EXPECT_EQ(children(), "") << "others see what a process was started with";

    ASSERT_TRUE(box.show("ShowNetworkTest", {"Anna's phone", "Lakeside"}));
    ASSERT_TRUE(hears(service, "Lakeside"));
    EXPECT_EQ(service.told()[3], kCancel) << "both are heard";

    display().key("Return"); // the confirmation covers the popup
    ASSERT_TRUE(hears(service, "Yes"));
    EXPECT_EQ(cancels(service), 2);
    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(isTold(service, {kCancel})) << "what is read is of a popup that is gone";
    const size_t told = service.told().size();
    ASSERT_TRUE(box.request("HidePopup"));

    ASSERT_TRUE(box.show("ShowTnCPopup"));
    ASSERT_TRUE(hears(service, "terms and conditions"));
    EXPECT_NE(service.told()[told], kCancel) << "there was nothing to stop";
    ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 0));
    EXPECT_TRUE(isTold(service, {kCancel})) << "the reader was turned off";

    ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 1));
    ASSERT_TRUE(box.show("ShowApListPopup"));
    ASSERT_TRUE(hears(service, "Cancel"));
    EXPECT_TRUE(endsSoonOnSignal());
    EXPECT_TRUE(isTold(service, {kCancel})) << "the program is gone";
}

TEST_F(TheSpeechService, IsNotWaitedForWhenItNeverAnswers)
{
    for (const bool isStuckFromTheStart : {true, false}) {
        SCOPED_TRACE(isStuckFromTheStart);
        SpeechServer service(
            socket(), isStuckFromTheStart ? SpeechServer::Manner::IsSilent : SpeechServer::Manner::Answers);
        ASSERT_TRUE(box.start());
        ASSERT_TRUE(box.show("ShowTnCPopup"));
        if (!isStuckFromTheStart) {
            ASSERT_TRUE(hears(service, "terms"));
        }
        service.setManner(SpeechServer::Manner::IsSilent);
        ASSERT_TRUE(box.show("ShowNetworkTest", {"Anna's phone", "Lakeside"}));
        display().key("Return");
        ASSERT_TRUE(box.program->waitForLog("clicked on cancelBtnCB"));
        ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
        EXPECT_TRUE(box.program->waitForLog("++PBC Timer Entered [59]"));
        EXPECT_TRUE(endsSoonOnSignal());
        EXPECT_EQ(service.told().size(), isStuckFromTheStart ? 0U : 4U);
        box.program.reset();
        box.daemon->forget();
    }
}

TEST_F(TheSpeechService, MayBeAbsentDieAndComeBack)
{
    const std::string problem = "E/orbis-platform: The speech service is of no use: ";
    const auto complaints = [&] {
        const Lines& errors = box.program->errors();
        return std::count_if(errors.begin(), errors.end(),
            [&](const std::string& line) { return line.compare(0, problem.size(), problem) == 0; });
    };
    ASSERT_TRUE(box.start());
    for (const char* method : {"ShowTnCPopup", "ShowApListPopup", "ShowTnCPopup", "ShowApListPopup"})
        ASSERT_TRUE(box.show(method));
    EXPECT_EQ(complaints(), 1);
    for (const char* part : {"first", "second"}) {
        const SpeechServer service(socket());
        ASSERT_TRUE(box.show("ShowNetworkTest", {part, "Lakeside"}));
        EXPECT_TRUE(hears(service, part)) << "it is not found again";
        ASSERT_TRUE(box.request("HidePopup"));
        EXPECT_TRUE(isTold(service, {kCancel}));
    }
    {
        const SpeechServer service(socket(), SpeechServer::Manner::DiesInItsAnswer);
        ASSERT_TRUE(box.show("ShowTnCPopup"));
        EXPECT_TRUE(hears(service, "terms"));
    }
    for (const auto manner : {SpeechServer::Manner::Babbles, SpeechServer::Manner::Answers}) {
        const SpeechServer service(socket(), manner);
        ASSERT_TRUE(box.show("ShowApListPopup"));
        if (manner == SpeechServer::Manner::Answers) {
            EXPECT_TRUE(hears(service, "Wi-Fi"));
        }
    }
    EXPECT_EQ(children(), "");
    EXPECT_LE(complaints(), 2);
    EXPECT_TRUE(endsSoonOnSignal());
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
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    box.setVariable("SPEECHD_CMD", script.string());
    ASSERT_TRUE(box.start());
    for (const char* pin : {"0042", "0043", "0044"})
        ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", pin}));
    ASSERT_TRUE(waitUntil([&] { return tv::readLines(record).size() >= 2; }));
    const Lines lines = tv::readLines(record);
    ASSERT_EQ(lines.size(), 2U) << "started again and again";
    EXPECT_EQ(lines[0], "--spawn --communication-method unix_socket --socket-path " + socket());
    EXPECT_EQ(lines[1], "SigBlk:\t0000000000000000") << "the service cannot be ended";
    EXPECT_TRUE(endsSoonOnSignal());
}

} // namespace
