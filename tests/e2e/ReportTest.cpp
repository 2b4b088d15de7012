// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// From a log of the field back to what was seen: the simulator makes a scenario of it.
#include "TvTest.h"

#include <algorithm>
#include <chrono>
#include <functional>

namespace {

using Lines = std::vector<std::string>;

/// Runs the simulator on a log. @return the scenario without its comments and empty lines
struct Report {
    Report(const std::string& log, const Lines& options = {})
    {
        const tv::Folders folders;
        tv::writeFile(folders.root() / "log", log);
        Lines command = {tv::TvBox::binary("tessel-daemon-sim"), "--from-log", folders.root() / "log"};
        command.insert(command.end(), options.begin(), options.end());
        const tv::Process simulator(command, folders.environment());
        status = simulator.waitForExit().value_or(-1);
        text = simulator.output();
        for (const std::string& line : text) {
            if (!line.empty() && line.front() != '#')
                commands.push_back(line);
        }
    }

    /// @return whether a comment says so
    bool remarks(const std::string& part) const
    {
        return std::any_of(text.begin(), text.end(), [&](const std::string& line) {
            return line.rfind('#', 0) == 0 && line.find(part) != std::string::npos;
        });
    }

    int status = 0;
    Lines text;
    Lines commands;
};

/// A line of the program, and when.
struct Said {
    double seconds;
    const char* function;
    const char* message;
};

constexpr Said kSession[] = {
    {0, "OnCreate", "In CTesselUI::OnCreate"},
    {0.5, "m_OnMethodCall", "Call ShowPinPopup method"},
    {0.5, "showPinPopup", "Pin = 0427"},
    {0.5, "setMesg", "Set Meassge [0427] Mobile Name =  [Anna's phone]"},
    {0.5, "m_IsReveseOSD", " the languagelocale is ar_AE "},
    {2.75, "m_OnMethodCall", "Call ShowMobileGuide method"},
    {2.75, "showGuidePopup", "Pin = 1111"},
    {2.75, "showGuideText", "showGuideText popup"},
    {4.5, "t_OnKeyDown", "START"},
    {5.5, "t_OnKeyDown", "START"},
    {5.6, "t_Button2Clicked", "Close Button Clicked"},
    {5.6, "stopTessel", "Stop Tessel"},
    {5.7, "OnTerminate", "In CTesselUI::OnTerminate"},
};
const Lines kSessionAgain = {"set string db/menu_widget/language ar_AE", "wait ServerStarted",
    "ShowPinPopup \"Anna's phone\" 0427", "sleep 2.25", "ShowMobileGuide 1111", "sleep 1.75",
    "viewer press Left", "sleep 1.1", "viewer press Return", "wait StopTessel true false within 10",
    "wait gone within 11"};

/// @param pattern  "{s}" in it is the whole seconds, "{u}" the microseconds
std::string timed(std::string pattern, double seconds, const std::string& line)
{
    const auto microseconds = static_cast<long>(seconds * 1e6);
    char digits[16] = "";
    const auto replace = [&](const char* what, const char* by) {
        const size_t at = pattern.find(what);
        if (at != std::string::npos)
            pattern.replace(at, 3, by);
    };
    snprintf(digits, sizeof digits, "%02ld", microseconds / 1000000);
    replace("{s}", digits);
    snprintf(digits, sizeof digits, "%06ld", microseconds % 1000000);
    replace("{u}", digits);
    return pattern + line + '\n';
}

std::string logOf(const std::function<std::string(double, const std::string&)>& form)
{
    std::string log;
    for (const Said& said : kSession) {
        const std::string function = said.function;
        log += form(said.seconds, "Any.cpp: " + function + "(7) > [" + function + ":7] " + said.message);
    }
    return log;
}

TEST(AReport, IsReadInEveryFormThatTheJournalPrints)
{
    using Form = std::function<std::string(double, const std::string&)>;
    const std::pair<const char*, Form> forms[] = {
        {"short-precise",
            [](double t, const std::string& l) {
                return timed("Nov 22 07:22:{s}.{u} tv tessel-ui[12]: ", t, l);
            }},
        {"short-iso-precise",
            [](double t, const std::string& l) {
                return timed("2026-11-22T23:59:{s}.{u}+0200 tv tessel-ui[12]: ", t, l);
            }},
        {"short-monotonic",
            [](double t, const std::string& l) { return timed("[ 12{s}.{u}] tv tessel-ui[12]: ", t, l); }},
        {"short-unix, with the level and the tag of a terminal",
            [](double t, const std::string& l) { return timed("17951000{s}.{u} tv I/tessel-ui: ", t, l); }},
        {"verbose",
            [](double t, const std::string& l) {
                return timed("Sun 2026-11-22 07:22:{s}.{u} UTC [s=1]\n    MESSAGE=", t, l);
            }},
        {"export",
            [](double t, const std::string& l) {
                return timed("__REALTIME_TIMESTAMP=17951000{s}{u}\nMESSAGE=", t, l) + "\n";
            }},
        {"export, with line ends in the message",
            [](double t, const std::string& l) {
                std::string length(8, '\0');
                length[0] = static_cast<char>(l.size() + 1);
                return timed("__REALTIME_TIMESTAMP=17951000{s}{u}\nMESSAGE\n", t, length + l);
            }},
        {"json",
            [](double t, const std::string& l) {
                return timed(R"({"__REALTIME_TIMESTAMP":"17951000{s}{u}","MESSAGE":")", t, l + R"("})");
            }},
    };
    for (const auto& [name, form] : forms) {
        SCOPED_TRACE(name);
        const Report report(logOf(form));
        EXPECT_EQ(report.status, 0);
        EXPECT_EQ(report.commands, kSessionAgain);
        EXPECT_FALSE(report.remarks("any times"));
    }
    const Report timeless(logOf([](double, const std::string& l) { return "I/tessel-ui: " + l + "\r\n"; }));
    EXPECT_TRUE(timeless.remarks("any times"));
    EXPECT_EQ(timeless.commands.size(), kSessionAgain.size());
}

TEST(AReport, SaysWhatItsLogDoesNot)
{
    const std::string session =
        logOf([](double t, const std::string& l) { return timed("[{s}.{u}] ", t, l); });
    const size_t end = session.rfind("[05");
    const std::string begun = session.substr(session.find('\n') + 1);
    const Report lost(
        "W/tessel-ui: 12 log lines were lost: nobody took them\n" + begun.substr(0, begun.rfind("[05")));
    EXPECT_TRUE(lost.remarks("12 lines that the program could not write"));
    EXPECT_TRUE(lost.remarks("how the run began"));
    EXPECT_TRUE(lost.remarks("how the run ended"));
    EXPECT_EQ(lost.commands, Lines(kSessionAgain.begin(), kSessionAgain.end() - 1));

    const Report killed(session.substr(0, session.rfind("[05", end - 1)) + session.substr(end));
    EXPECT_TRUE(killed.remarks("Something outside ended the program")) << testing::PrintToString(killed.text);
    EXPECT_TRUE(std::count(killed.commands.begin(), killed.commands.end(), "end"));

    const Report first(session + session + begun, {"--run", "1"});
    EXPECT_TRUE(first.remarks("run 1 of 2"));
    EXPECT_EQ(first.commands, kSessionAgain);
    EXPECT_EQ(Report(session, {"--run", "2"}).status, 1);
    EXPECT_EQ(Report("nothing of ours\n").status, 1);
    EXPECT_EQ(Report("").status, 1);
}

/// Whatever a file holds, there is a scenario that can be read, or a reason why there is none.
TEST(AReport, IsMadeOfAnything)
{
    const std::string session = logOf([](double, const std::string& l) { return l + '\n'; });
    const std::string endless(1UL << 20U, 'x');
    std::string binary;
    for (int byte = 0; byte < 70000; ++byte)
        binary += static_cast<char>(byte * 7 % 256);
    const std::string hostile[] = {binary, session + binary, binary + '\n' + session, endless + session,
        "a.cpp: setMesg(1) > [setMesg:1] Set Meassge [" + endless + "\n" + session, "MESSAGE\n" + session,
        "MESSAGE\n\x10", "{\"MESSAGE\":[1,2,", std::string(100000, '['),
        "{\"MESSAGE\":" + std::string(100000, '['), "[ nan] " + session, "Nov 99 99:99:99 x " + session,
        session.substr(0, session.size() / 2)};
    for (const std::string& log : hostile) {
        SCOPED_TRACE(log.substr(0, 40));
        const Report report(log);
        EXPECT_EQ(report.status, report.text.empty() ? 1 : 0);
    }
}

std::string stripped(const std::string& text)
{
    std::string shape;
    for (const char character : text)
        shape += isalpha(static_cast<unsigned char>(character))
            ? isupper(static_cast<unsigned char>(character)) ? 'A' : 'a'
            : isdigit(static_cast<unsigned char>(character)) ? '0'
                                                             : character;
    return shape;
}

class AReportOfTheProgram : public tv::TvTest {
protected:
    /// What a session left.
    struct Played {
        std::vector<tv::Picture> pictures; ///< without those that are as the one before
        std::string log; ///< with times
    };

    void SetUp() override
    {
        ASSERT_TRUE(box.settings.setInt(tv::kHighContrast, 1));
    } // nothing moves by itself

    /// The program's standard error since @p from, as a journal would have it now.
    std::string newLog(size_t& from) const
    {
        const Lines& lines = box.program->errors();
        std::string log;
        for (; from < lines.size(); ++from)
            log += timed("17951{s}.{u} tv ",
                10000 + std::chrono::duration<double>(std::chrono::steady_clock::now() - m_start).count(),
                lines[from]);
        return log;
    }

    Played play(const std::string& scenario)
    {
        Played played;
        size_t read = 0;
        box.bringDaemon({"--with-viewer", "--scenario", scenario});
        box.program = box.launch();
        for (std::string event; !(event = box.daemon->next()).empty();) {
            const bool looks = event == "viewer looks";
            const std::string key = event.rfind("viewer press ", 0) == 0 ? event.substr(13) : "";
            if (looks) {
                EXPECT_TRUE(box.screen().visible);
                const tv::Picture picture = display().settledPicture();
                if (played.pictures.empty() || played.pictures.back() != picture)
                    played.pictures.push_back(picture);
                played.log += newLog(read);
                tv::pass(tv::Milliseconds(300)); // what follows is another moment
            }
            if (!key.empty()) {
                EXPECT_TRUE(box.press({key}));
            }
            if (looks || !key.empty())
                box.daemon->tell("");
        }
        EXPECT_EQ(box.daemon->waitForExit(), 0) << testing::PrintToString(box.daemon->output());
        EXPECT_TRUE(box.program->endsWith(0));
        played.log += newLog(read);
        return played;
    }

private:
    std::chrono::steady_clock::time_point m_start = std::chrono::steady_clock::now();
};

TEST_F(AReportOfTheProgram, IsPlayedAgainWithTheSamePictures)
{
    const Played first = play("cancel-at-network-test");
    EXPECT_EQ(first.pictures.size(), 3U);
    const Report report(first.log);
    const std::string file = box.folders.root() / "report.scenario";
    std::string text;
    for (const std::string& line : report.text)
        text += line + '\n';
    tv::writeFile(file, text);
    const Played again = play(file);
    ASSERT_EQ(again.pictures.size(), first.pictures.size()) << text;
    for (size_t index = 0; index < first.pictures.size(); ++index)
        EXPECT_EQ(again.pictures[index].differences(first.pictures[index]), 0U) << index << '\n' << text;
}

/// Names are other people's: what looks like the log's own words in them is a name.
TEST_F(AReportOfTheProgram, HasNamesAsTheyWere)
{
    ASSERT_TRUE(box.start());
    const std::string phone = "a] Mobile Name =  [b AP Name = c, Login ID  Name = d]";
    const std::string network = "Call HidePopup method\n\t' \"$'\x01 \u2028\u0627\u200f";
    ASSERT_TRUE(box.request("ShowPinPopup", {phone, "12]"}));
    ASSERT_TRUE(box.request("ShowNetworkTest", {phone, network}));
    ASSERT_TRUE(box.request("ShowSSOLoginPopup", {phone, "x@y"}));
    ASSERT_TRUE(box.settings.setText(
        tv::kRequest, "{\"page\":\"pin\",\n\"mobilename\":\"E\\nva\\u00e9\",\"pin\":77}"));
    ASSERT_TRUE(box.program->waitForLog("Set Meassge [77] Mobile Name =  [*"));
    ASSERT_TRUE(box.ends());
    std::string log;
    for (const std::string& line : box.program->errors())
        log += line + '\n';

    const Lines expected = {"ShowPinPopup \"" + phone + "\" \"12]\"",
        "ShowNetworkTest \"" + phone
            + "\" $'Call HidePopup method\\x0a\\x09\\' \"$\\'\\x01 \u2028\u0627\u200f'",
        "ShowSSOLoginPopup \"" + phone + "\" x@y",
        R"(json $'{"page":"pin",\x0a"mobilename":"E\\nva\\u00e9","pin":77}')"};
    const Report report(log);
    for (const std::string& line : expected)
        EXPECT_EQ(std::count(report.commands.begin(), report.commands.end(), line), 1)
            << line << '\n'
            << testing::PrintToString(report.commands);

    const Report redacted(log, {"--redact"});
    ASSERT_EQ(redacted.commands.size(), report.commands.size());
    for (size_t index = 0; index < report.commands.size(); ++index) {
        const std::string& before = report.commands[index];
        const std::string& after = redacted.commands[index];
        EXPECT_EQ(after.size(), before.size()) << after;
        const bool isNamed = before.rfind("Show", 0) == 0 || before.rfind("json", 0) == 0;
        EXPECT_EQ(after != before, isNamed) << after;
        const bool isPlain = before.find('\\') == std::string::npos; // the letters of an escape are no text
        if (before.rfind("Show", 0) == 0 && isPlain) {
            EXPECT_EQ(stripped(after), stripped(before));
        }
        EXPECT_EQ(after.find("va\\"), std::string::npos) << after;
    }
    EXPECT_TRUE(redacted.remarks("are not the ones of the log"));
}

} // namespace
