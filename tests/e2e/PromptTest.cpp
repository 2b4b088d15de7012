// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The simulator's prompt on a real terminal.
#include "PrivateBus.h"
#include "TvBox.h"

#include <algorithm>

namespace {

TEST(APrompt, CompletesRepeatsAndNeverHoldsTheRest)
{
    const tv::PrivateBus bus;
    const tv::Folders folders;
    auto environment = folders.environment();
    environment.push_back("DBUS_SYSTEM_BUS_ADDRESS=" + bus.address());
    environment.emplace_back("TERM=xterm");
    const std::string pid = folders.root() / "pid";
    const std::string simulator = tv::TvBox::binary("tessel-daemon-sim");
    const tv::Process terminal(
        {"script", "-qc", "sh -c 'echo $$ > " + pid + "; exec " + simulator + "'; echo status $?; stty -a",
            "/dev/null"},
        environment);
    const auto shows = [&](const std::string& text, ptrdiff_t times = 1) {
        return tv::waitUntil([&] {
            const auto& lines = terminal.output();
            return times <= std::count_if(lines.begin(), lines.end(),
                       [&](const std::string& line) { return line.find(text) != std::string::npos; });
        });
    };
    ASSERT_TRUE(shows("ready"));
    // The program is not there, but the simulator says what it would have asked.
    terminal.type("ShowP\tAnna 1\n");
    EXPECT_TRUE(shows("request ShowPinPopup \"Anna\" \"1\""));
    terminal.type("\x1b[A\n");
    EXPECT_TRUE(shows("request ShowPinPopup \"Anna\" \"1\"", 2)) << "Up does not repeat";
    terminal.type("set s\tdb/menu_w\tde_DE\n");
    EXPECT_TRUE(shows("set db/menu_widget/language de_DE"));
    terminal.type("scenario cancel-at-\t");
    EXPECT_TRUE(shows("cancel-at-terms"));

    // Half a key is no reason to wait for the rest of it.
    terminal.type("\x1b");
    tv::pass(tv::Milliseconds(300));
    kill(std::stoi(tv::readFile(pid)), SIGTERM);
    EXPECT_TRUE(shows("status 0")) << "the prompt holds the main loop";
    // The next run knows what was typed, and nobody else does.
    const auto history = folders.home() / ".local/state/tessel/history";
    EXPECT_NE(tv::readFile(history).find("ShowPinPopup"), std::string::npos);
    EXPECT_EQ(std::filesystem::status(history).permissions() & std::filesystem::perms(077),
        std::filesystem::perms::none);
    const tv::Process next({"script", "-qc", simulator, "/dev/null"}, environment);
    const auto says = [&](const std::string& text) {
        return tv::waitUntil([&] {
            const auto& lines = next.output();
            return std::any_of(lines.begin(), lines.end(),
                [&](const std::string& line) { return line.find(text) != std::string::npos; });
        });
    };
    ASSERT_TRUE(says("ready"));
    next.type("\x1b[A\n");
    EXPECT_TRUE(says("set db/menu_widget/language de_DE")) << "Up does not bring back what was typed before";
    EXPECT_TRUE(shows(" icanon ") && shows(" echo ")) << "the terminal is not left as it was for the prompt";
}

} // namespace
