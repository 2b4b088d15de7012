// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What all tools have in common: their help, their version, and what the shells know of them.
#include "PrivateBus.h"
#include "TvBox.h"

#include <algorithm>

namespace {

using Lines = std::vector<std::string>;

constexpr const char* kTools[] = {"orbis-settings", "tessel-daemon-sim", "tessel-gallery"};

bool has(const Lines& lines, const std::string& text)
{
    return std::any_of(lines.begin(), lines.end(),
        [&](const std::string& line) { return line.find(text) != std::string::npos; });
}

class TheTools : public testing::Test {
protected:
    TheTools()
    {
        for (std::string& variable : environment) {
            if (variable.rfind("PATH=", 0) == 0)
                variable.insert(5, tv::TvBox::binary("") + ":");
        }
        environment.emplace_back("TERM=xterm");
        settings.setInt("db/menu_widget/some", 1);
    }

    std::unique_ptr<tv::Process> run(const Lines& command) const
    {
        auto process = std::make_unique<tv::Process>(command, environment);
        process->waitForExit();
        return process;
    }

    tv::Folders folders;
    tv::Settings settings {folders};
    std::vector<std::string> environment = folders.environment();
};

TEST_F(TheTools, TellTheirVersionAndExitStatuses)
{
    for (const std::string tool : kTools) {
        const auto version = run({tv::TvBox::binary(tool), "--version"});
        EXPECT_EQ(version->status(), 0);
        ASSERT_EQ(version->output().size(), 1U);
        EXPECT_EQ(version->output()[0].rfind(tool + " ", 0), 0U) << version->output()[0];
        const auto help = run({tv::TvBox::binary(tool), "--help"});
        EXPECT_TRUE(has(help->output(), "Exit status:"));
        EXPECT_FALSE(has(help->output(), "completion"));
        EXPECT_EQ(run({tv::TvBox::binary(tool), "--no-such-option"})->status(), 2);
        EXPECT_FALSE(has(run({tv::TvBox::binary(tool), "--no-such-option"})->errors(), "\x1b"))
            << "no terminal";
        EXPECT_EQ(run({tv::TvBox::binary(tool), "--completion", "csh"})->status(), 2);
    }
    const std::string mistake = tv::TvBox::binary("orbis-settings") + " --mistake";
    EXPECT_TRUE(has(run({"script", "-qc", mistake, "/dev/null"})->output(), "\x1b["));
    EXPECT_FALSE(has(run({"script", "-qc", "NO_COLOR=1 " + mistake, "/dev/null"})->output(), "\x1b["));
}

/// The shells themselves, at a terminal, with the files that are installed.
TEST_F(TheTools, AreCompletedByTheShells)
{
    struct Shell {
        const char* name;
        const char* start;
        const char* setUp;
        const char* joint; ///< between an option and its value
    };
    const Shell shells[] = {{"bash", "bash --norc --noprofile -i",
                                "for tool in orbis-settings tessel-daemon-sim; do . %/bash/$tool; done", " "},
        {"zsh", "zsh -f -i", "fpath=(%/zsh $fpath); autoload -U compinit; compinit -u -D", "="}};
    for (const Shell& shell : shells) {
        SCOPED_TRACE(shell.name);
        const tv::Process terminal({"script", "-qc", shell.start, "/dev/null"}, environment);
        std::string setUp = shell.setUp;
        setUp.replace(setUp.find('%'), 1, COMPLETIONS);
        terminal.tell(setUp);
        // In the tools' places something that says what was typed.
        terminal.tell("typed() { printf '<%s>\\n' \"$*\"; }");
        terminal.tell("tessel-daemon-sim() { [ \"$1\" = --list ] && command tessel-daemon-sim --list || "
                      "typed \"$@\"; }");
        terminal.tell(
            "orbis-settings() { [ \"$1\" = list ] && command orbis-settings list || typed \"$@\"; }");
        terminal.tell("echo re''ady");
        ASSERT_TRUE(tv::waitUntil([&] { return has(terminal.output(), "ready"); }));
        const std::pair<const char*, std::string> cases[] = {
            {"tessel-daemon-sim --vi\tse\t\n", std::string("<--via") + shell.joint + "settings>"},
            {"tessel-daemon-sim --scenario cancel-at-p\t\n", "<--scenario cancel-at-pin>"},
            {"orbis-settings dum\t\n", "<dump>"},
            {"orbis-settings get db/menu_w\t\n", "<get db/menu_widget/some>"},
            // A command has its own options, and not another's.
            {"orbis-settings restore --k\t\n", "<restore --keep>"},
            {"orbis-settings get --k\t\n", "<get --k>"},
            {"orbis-settings set -t i\t\n", "<set -t int>"},
        };
        for (const auto& [typed, expected] : cases) {
            terminal.type(typed);
            EXPECT_TRUE(tv::waitUntil(
                [&, &line = expected] { return has(terminal.output(), line); }, tv::Milliseconds(10000)))
                << typed << testing::PrintToString(terminal.output());
        }
        terminal.tell("exit");
    }
    const auto fish = [&](const std::string& typed) {
        return run({"fish", "-c",
                       "for file in " COMPLETIONS "/fish/*; source $file; end; complete -C '" + typed + "'"})
            ->output();
    };
    EXPECT_TRUE(has(fish("tessel-daemon-sim --via s"), "settings"));
    EXPECT_TRUE(has(fish("tessel-daemon-sim --scenario cancel-at-p"), "cancel-at-pin"));
    EXPECT_TRUE(has(fish("orbis-settings dum"), "dump\tprint all keys"));
    EXPECT_TRUE(has(fish("orbis-settings get db/menu_w"), "db/menu_widget/some"));
    EXPECT_TRUE(has(fish("orbis-settings restore --"), "--keep"));
    EXPECT_FALSE(has(fish("orbis-settings get --"), "--keep"));
    EXPECT_TRUE(has(fish("orbis-settings set -t i"), "int"));
}

} // namespace
