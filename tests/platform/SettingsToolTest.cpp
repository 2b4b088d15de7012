#include "Processes.h"
#include "StoreFixture.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

class OrbisSettings : public StoreFixture {
protected:
    ToolResult run(const Words& arguments) const { return runTool(arguments, m_folder); }

    /// Writes until the tool answers, that is, until it listens.
    static bool waitUntilReady(ToolWatch& tool, const char* key)
    {
        for (int i = 0; i < 100; ++i) {
            vconf_set_int(key, 0);
            if (tool.readLine(100))
                return true;
        }
        return false;
    }
};

TEST_F(OrbisSettings, SetsGetsListsAndRemoves)
{
    EXPECT_EQ(run({"set", "-t", "int", "db/n", "-5"}).status, 0);
    EXPECT_EQ(run({"set", "-t", "string", "--", "db/s", "two\r\nlines\n"}).status, 0);
    EXPECT_EQ(run({"set", "-t", "string", "memory/empty", ""}).status, 0);
    int number = 0;
    EXPECT_EQ(vconf_get_int("db/n", &number), VCONF_OK);
    EXPECT_EQ(number, -5);
    EXPECT_EQ(run({"get", "db/n"}).output, "-5\n");
    EXPECT_EQ(run({"get", "db/s"}).output, "two\r\nlines\n\n");
    EXPECT_EQ(run({"list"}).output, "db/n -5\ndb/s two  lines \nmemory/empty \n");
    EXPECT_EQ(run({"list", "db/s"}).output, "db/s two  lines \n");
    EXPECT_EQ(run({"unset", "db/n"}).status, 0);
    const ToolResult absent = run({"get", "db/n"});
    EXPECT_EQ(absent.status, 1);
    EXPECT_EQ(absent.output, "");
    EXPECT_NE(absent.errors.find("db/n"), std::string::npos);
}

TEST_F(OrbisSettings, TellsFailuresFromMistakenCalls)
{
    for (const Words& mistaken : {Words {}, {"bogus"}, {"set"}, {"set", "db/n", "1"}, {"set", "-t"},
             {"set", "-t", "double", "db/n", "1"}, {"set", "-x", "db/n", "1"}, {"set", "-t", "int", "db/n"},
             {"set", "-t", "int", "db/n", "1", "2"}, {"get"}, {"get", "db/a", "db/b"}, {"list", "a", "b"},
             {"unset"}, {"watch"}}) {
        const ToolResult result = run(mistaken);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.output, "");
        EXPECT_FALSE(result.errors.empty());
    }
    for (const Words& failing :
        {Words {"set", "-t", "int", "db/n", "1x"}, {"set", "-t", "int", "db/n", "2147483648"},
            {"set", "-t", "int", "db/n", ""}, {"set", "-t", "int", "other/n", "1"}, {"get", "other/n"},
            {"unset", "db/n"}, {"watch", "db/ok", "other/n"}}) {
        const ToolResult result = run(failing);
        EXPECT_EQ(result.status, 1);
        EXPECT_FALSE(result.errors.empty());
    }
    EXPECT_EQ(vconf_get_type("db/n"), VCONF_TYPE_NONE) << "a refused value was written";
    const ToolResult help = run({"--help"});
    EXPECT_EQ(help.status, 0);
    EXPECT_NE(help.output.find("watch KEY"), std::string::npos);
}

TEST_F(OrbisSettings, WatchesUntilASignal)
{
    for (const int signal : {SIGTERM, SIGINT}) {
        ToolWatch tool({"db/k", "memory/k", "db/k"});
        ASSERT_TRUE(waitUntilReady(tool, "db/k"));
        vconf_set_str("memory/k", "two\nlines");
        std::optional<std::string> line = tool.readLine();
        while (line == "db/k 0") // from the waiting above
            line = tool.readLine();
        EXPECT_EQ(line, "memory/k two lines");
        vconf_unset("memory/k");
        EXPECT_EQ(tool.readLine(), "memory/k");
        tool.child().signal(signal);
        EXPECT_EQ(tool.child().wait(), 0);
    }
}

TEST_F(OrbisSettings, EndsWhenNobodyReadsItsChanges)
{
    ToolWatch idle({"db/k"});
    ASSERT_TRUE(waitUntilReady(idle, "db/k"));
    idle.closeReader();
    EXPECT_TRUE(runUntil([&] { return idle.child().poll().has_value(); }));
    EXPECT_EQ(idle.child().poll(), 0);

    vconf_set_int("db/k", 1);
    const int full = open("/dev/full", O_WRONLY | O_CLOEXEC);
    ASSERT_GE(full, 0);
    const int saved = dup(STDOUT_FILENO);
    dup2(full, STDOUT_FILENO);
    Child get([] { return execl(ORBIS_SETTINGS_TOOL, ORBIS_SETTINGS_TOOL, "get", "db/k", nullptr); });
    dup2(saved, STDOUT_FILENO);
    close(saved);
    close(full);
    EXPECT_EQ(get.wait(), 1) << "what could not be written is no success";
}
