#include "Process.h"
#include "StoreFixture.h"

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace fs = std::filesystem;

class OrbisSettings : public StoreFixture {
protected:
    /// @return the tool after it has ended
    std::unique_ptr<tv::Process> run(Words arguments) const
    {
        arguments.insert(arguments.begin(), ORBIS_SETTINGS_TOOL);
        auto result = std::make_unique<tv::Process>(arguments, m_folders.environment());
        result->waitForExit();
        return result;
    }
    /// A shell's work with the tool, which it knows as "$0".
    std::unique_ptr<tv::Process> shell(const std::string& script) const
    {
        return std::make_unique<tv::Process>(
            Words {"sh", "-c", script, ORBIS_SETTINGS_TOOL}, m_folders.environment());
    }
    /// Writes an integer until a tool that watches the key tells of it: from then on it listens.
    static bool listens(const tv::Process& tool, const char* key)
    {
        return tv::waitUntil([&] {
            vconf_set_int(key, 0);
            return !tool.output().empty();
        });
    }
    /// @return whether the line comes to be among those that the tool has printed
    static bool tells(const tv::Process& tool, const std::string& line)
    {
        const Words& lines = tool.output();
        return tv::waitUntil([&] { return std::count(lines.begin(), lines.end(), line) > 0; });
    }
};

TEST_F(OrbisSettings, SetsGetsListsAndRemoves)
{
    EXPECT_EQ(run({"set", "-t", "int", "db/n", "-5"})->status(), 0);
    EXPECT_EQ(run({"set", "-t", "string", "--", "db/s", "two\r\nlines\n"})->status(), 0);
    EXPECT_EQ(run({"set", "-t", "string", "memory/empty", ""})->status(), 0);
    EXPECT_EQ(m_settings.getInt("db/n"), -5);
    EXPECT_EQ(run({"get", "db/n"})->output(), Words {"-5"});
    EXPECT_EQ(run({"get", "db/s"})->output(), (Words {"two\r", "lines", ""}));
    EXPECT_EQ(run({"list"})->output(), (Words {"db/n -5", "db/s two  lines ", "memory/empty "}));
    EXPECT_EQ(run({"list", "db/s"})->output(), Words {"db/s two  lines "});
    EXPECT_EQ(run({"unset", "db/n"})->status(), 0);
    EXPECT_EQ(m_settings.getInt("db/n"), std::nullopt);
    EXPECT_EQ(run({"--help"})->status(), 0);
}

TEST_F(OrbisSettings, TellsFailuresFromMistakenCalls)
{
    fs::create_directories(state() + "/db");
    writeFile(state() + "/db/large", "string\n");
    fs::resize_file(state() + "/db/large", 17U * 1024 * 1024);
    fs::create_directory(runtime());
    fs::create_symlink("memory", runtime() + "/memory"); // leads nowhere
    for (const Words& mistaken : {Words {}, {"bogus"}, {"set"}, {"set", "db/n", "1"}, {"set", "-t"},
             {"set", "-t", "double", "db/n", "1"}, {"set", "-t", "int", "db/n"},
             {"set", "-t", "int", "db/n", "1", "2"}, {"get"}, {"get", "db/a", "db/b"}, {"list", "a", "b"},
             {"unset"}, {"watch"}}) {
        const auto result = run(mistaken);
        EXPECT_EQ(result->status(), 2) << testing::PrintToString(mistaken);
        EXPECT_EQ(result->output(), Words {});
        EXPECT_FALSE(result->errors().empty());
    }
    const std::pair<Words, std::string> failing[] = {
        {{"set", "-t", "int", "db/n", "1x"}, "not a whole number in the range of an int: 1x"},
        {{"set", "-t", "int", "db/n", "2147483648"}, "not a whole number in the range of an int: 2147483648"},
        {{"set", "-t", "int", "db/n", ""}, "not a whole number in the range of an int: "},
        {{"set", "-t", "int", "other/n", "1"}, "cannot write other/n: Invalid argument"},
        {{"get", "db/large"}, "no value in db/large: File too large"},
        {{"list"}, "cannot read the store: Too many levels of symbolic links"},
        {{"unset", "db/n"}, "cannot remove db/n: No such file or directory"},
        {{"watch", "db/ok", "other/n"}, "cannot watch other/n: Invalid argument"},
    };
    for (const auto& [arguments, error] : failing) {
        const auto result = run(arguments);
        EXPECT_EQ(result->status(), 1);
        EXPECT_EQ(result->output(), Words {});
        EXPECT_EQ(result->errors(), Words {"orbis-settings: " + error});
    }
    EXPECT_EQ(vconf_get_type("db/n"), VCONF_TYPE_NONE) << "a refused value was written";
}

TEST_F(OrbisSettings, WatchesUntilASignalAlsoWithoutAHome)
{
    const std::pair<int, std::string> cases[] = {{SIGTERM, ""}, {SIGINT, "unset HOME; "}};
    for (const auto& [signal, before] : cases) {
        const auto watch = shell(before + "exec \"$0\" watch db/k memory/k db/k");
        ASSERT_TRUE(listens(*watch, "db/k")) << testing::PrintToString(watch->errors());
        vconf_set_str("memory/k", "two\nlines");
        EXPECT_TRUE(tells(*watch, "memory/k two lines"));
        vconf_unset("memory/k");
        EXPECT_TRUE(tells(*watch, "memory/k"));
        watch->signal(signal);
        EXPECT_EQ(watch->waitForExit(), 0);
        EXPECT_EQ(namesIn(m_folder + "/home"), Words {});
    }
}

TEST_F(OrbisSettings, EndsWhenNobodyReadsItsChanges)
{
    const auto unread = shell("{ \"$0\" watch db/k; echo $? >&2; } | { read -r line; echo \"$line\"; }");
    ASSERT_TRUE(listens(*unread, "db/k"));
    EXPECT_EQ(unread->waitForExit(), 0) << "it waits for the next change to find out";
    EXPECT_EQ(unread->errors(), Words {"0"});

    vconf_set_int("db/k", 1);
    EXPECT_EQ(shell("\"$0\" get db/k >/dev/full")->waitForExit(), 1)
        << "what could not be written is no success";
}
