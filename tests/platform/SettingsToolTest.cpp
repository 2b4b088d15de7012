// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Process.h"
#include "StoreFixture.h"

#include <algorithm>
#include <climits>
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

/// Values and keys that a format may trip over.
void writeAwkwardValues()
{
    vconf_set_int("db/least", INT_MIN);
    vconf_set_int("db/most", INT_MAX);
    vconf_set_str("db/number as text", "5");
    vconf_set_str("db/empty", "");
    vconf_set_str("db/blanks", "  two \t ");
    vconf_set_str("db/lines", "\nend 3\r\n\\n\\x41#\n");
    vconf_set_str("db/bytes", "\x01\x7f\xff\xc3 caf\xc3\xa9 \xf0\x9f\x98\x80 \"'$(id)`");
    vconf_set_str("memory/a b\\c\n\xc3\xa9", std::string(70000, 'x').c_str());
}

TEST_F(OrbisSettings, PutsAStoreBackExactly)
{
    writeAwkwardValues();
    const std::string before = m_folder + "/before";
    const auto copyTo = [&](const std::string& folder) {
        const auto options = fs::copy_options::recursive;
        fs::create_directory(folder);
        fs::copy(state(), folder + "/state", options);
        fs::copy(runtime(), folder + "/runtime", options);
    };
    copyTo(before);
    const std::string there = "\"$0\" dump >" + m_folder + "/dump";
    ASSERT_EQ(shell(there)->waitForExit(), 0);
    for (const std::string key : {"db/least", "db/empty", "memory/a b\\c\n\xc3\xa9"})
        vconf_unset(key.c_str());
    vconf_set_str("db/most", "another type");
    vconf_set_int("db/more", 1);
    ASSERT_EQ(shell("\"$0\" restore <" + m_folder + "/dump")->waitForExit(), 0);
    const std::string after = m_folder + "/after";
    copyTo(after);
    EXPECT_EQ(shell("diff -r " + before + " " + after)->waitForExit(), 0);

    // Neither what is so already nor what the dump's prefix leaves out is touched.
    const Watch same("db/most");
    vconf_set_int("memory/other", 1);
    vconf_set_int("db/more", 1);
    ASSERT_EQ(shell("\"$0\" dump db/m >" + m_folder + "/part")->waitForExit(), 0);
    vconf_set_int("db/more", 2);
    vconf_set_int("db/mine", 3);
    ASSERT_EQ(run({"restore", "--keep", m_folder + "/part"})->status(), 0);
    EXPECT_EQ(m_settings.getInt("db/more"), 1);
    EXPECT_EQ(m_settings.getInt("db/mine"), 3);
    ASSERT_EQ(run({"restore", m_folder + "/part"})->status(), 0);
    EXPECT_EQ(m_settings.getInt("db/mine"), std::nullopt);
    EXPECT_EQ(m_settings.getInt("memory/other"), 1);
    settle();
    EXPECT_EQ(same.calls(), 0);
}

TEST_F(OrbisSettings, RestoresAllOrNothing)
{
    vconf_set_int("db/n", 1);
    vconf_set_str("db/t", "old");
    const std::string right = "orbis-settings-dump 1 \nint db/n 2\nstring db/t new\nend 2\n";
    const std::pair<std::string, std::string> wrong[] = {
        {"", "1: no dump"},
        {"int db/n 2\nend 1\n", "1: no dump"},
        {right.substr(0, right.size() - 6), "the end is missing"},
        {right + "int db/x 1\n", "5: something behind the end"},
        {"orbis-settings-dump 1 \nint db/n 2\nend 2\n", "3: neither"},
        {"orbis-settings-dump 1 \nint db/n 2\nint db/n 3\nend 2\n", "3: the key comes twice"},
        {"orbis-settings-dump 1 \nint db/n 2x\nend 1\n", "2: not a whole number"},
        {"orbis-settings-dump 1 \nint db/n 2147483648\nend 1\n", "2: not a whole number"},
        {"orbis-settings-dump 1 \nint db/n 2\nint other/n 2\nend 2\n", "3: there can be no such key"},
        {"orbis-settings-dump 1 \nint db/n 2\nint db/../n 2\nend 2\n", "3: there can be no such key"},
        {"orbis-settings-dump 1 \nint db/n 2\nstring db/t \\q\nend 2\n", "3: a backslash"},
        {"orbis-settings-dump 1 \nint db/n 2\nstring db/t \\x00\nend 2\n", "3: a backslash"},
        {"orbis-settings-dump 1 db/t\nint db/n 2\nend 1\n", "2: the key does not begin with db/t"},
        {"orbis-settings-dump 1 \nint db/n 2\nreal db/t 2\nend 2\n", "3: neither"},
    };
    for (const auto& [dump, problem] : wrong) {
        SCOPED_TRACE(dump);
        writeFile(m_folder + "/dump", dump);
        const auto refused = run({"restore", m_folder + "/dump"});
        EXPECT_EQ(refused->status(), 1);
        EXPECT_NE(refused->errors().at(0).find(":" + problem), std::string::npos) << refused->errors().at(0);
        EXPECT_NE(refused->errors().at(0).find("; nothing was changed"), std::string::npos);
        EXPECT_EQ(m_settings.getInt("db/n"), 1);
        EXPECT_EQ(text("db/t"), "old");
    }
    // Where the store itself refuses, what was written already goes back.
    fs::create_directories(state() + "/db/z");
    writeFile(m_folder + "/dump", right.substr(0, right.size() - 6) + "int db/z 3\nend 3\n");
    const auto stopped = run({"restore", m_folder + "/dump"});
    EXPECT_EQ(stopped->status(), 1);
    EXPECT_EQ(m_settings.getInt("db/n"), 1) << testing::PrintToString(stopped->errors());
    EXPECT_EQ(text("db/t"), "old");

    fs::remove(state() + "/db/z");
    writeFile(m_folder + "/dump", right);
    EXPECT_EQ(run({"restore", m_folder + "/dump"})->status(), 0);
    EXPECT_EQ(m_settings.getInt("db/n"), 2);
    EXPECT_EQ(text("db/t"), "new");
}

TEST_F(OrbisSettings, CarriesOutBatchesAndPrintsJson)
{
    const std::string batch =
        "# a comment\n\nset -t int db/n 5\r\nset -t string -- db/s 'two words' # why\nget db/s\n"
        "unset db/n\nset -t int db/n -7";
    writeFile(m_folder + "/batch", batch);
    const auto fromFile = run({"batch", m_folder + "/batch"});
    EXPECT_EQ(fromFile->status(), 0) << testing::PrintToString(fromFile->errors());
    EXPECT_EQ(fromFile->output(), Words {"two words"});
    EXPECT_EQ(m_settings.getInt("db/n"), -7);

    const auto stops =
        shell("printf 'set -t int db/a 1\\nset -t int db/b x\\nset -t int db/c 1\\n' | \"$0\" batch");
    EXPECT_EQ(stops->waitForExit(), 1);
    EXPECT_EQ(stops->errors().back(), "orbis-settings: standard input:2: the batch ends here");
    EXPECT_EQ(m_settings.getInt("db/a"), 1);
    EXPECT_EQ(m_settings.getInt("db/c"), std::nullopt);
    EXPECT_EQ(shell("echo watch db/a | \"$0\" batch")->waitForExit(), 2);
    EXPECT_EQ(run({"batch", m_folder + "/none"})->status(), 1);

    vconf_set_str("db/s", "\"\\\n\xff\xc3\xa9");
    EXPECT_EQ(run({"get", "--json", "db/s"})->output(), Words {"\"\\\"\\\\\\n\\ufffd\\u00e9\""});
    EXPECT_EQ(run({"list", "--json", "db/n"})->output(), (Words {"{", "  \"db/n\": -7", "}"}));
    EXPECT_EQ(run({"list", "--json", "db/none"})->output(), Words {"{}"});
}
