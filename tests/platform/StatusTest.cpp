#include "Processes.h"
#include "StoreFixture.h"

#include "aul.h"

#include <csignal>
#include <filesystem>
#include <sys/wait.h>
#include <unistd.h>

class AnApplication : public StoreFixture {
protected:
    std::string entry(const std::string& package) const { return runtime() + "/apps/" + package; }
};

TEST_F(AnApplication, RunsWhileItsProcessIsAlive)
{
    EXPECT_EQ(aul_app_is_running("org.app"), 0);
    EXPECT_EQ(aul_app_get_status("org.app"), -1);
    ASSERT_EQ(aul_app_set_status("org.app", STATUS_FOCUS), 0);
    EXPECT_EQ(readFile(entry("org.app")), std::to_string(getpid()) + " 2\n");
    EXPECT_EQ(aul_app_is_running("org.app"), 1);
    EXPECT_EQ(aul_app_get_status("org.app"), STATUS_FOCUS);

    Child other([] { return pause(); });
    writeFile(entry("org.app"), std::to_string(other.process()) + " 3\n");
    EXPECT_EQ(aul_app_get_status("org.app"), STATUS_VISIBLE);
    EXPECT_EQ(aul_app_remove_status("org.app"), -1) << "another process's entry";
    other.kill();
    siginfo_t info = {};
    waitid(P_PID, static_cast<id_t>(other.process()), &info, WEXITED | WNOWAIT); // ended, not yet reaped
    EXPECT_EQ(aul_app_is_running("org.app"), 0);
    other.wait();
    EXPECT_EQ(aul_app_is_running("org.app"), 0);

    ASSERT_EQ(aul_app_set_status("org.app", STATUS_BG), 0);
    EXPECT_EQ(aul_app_get_status("org.app"), STATUS_BG);
    EXPECT_EQ(aul_app_remove_status("org.app"), 0);
    EXPECT_EQ(aul_app_remove_status("org.app"), -1);
    EXPECT_FALSE(std::filesystem::exists(entry("org.app")));
}

TEST_F(AnApplication, WithAnUnusableNameOrEntryDoesNotRun)
{
    const std::string own = std::to_string(getpid());
    ASSERT_EQ(aul_app_set_status("app", STATUS_CREATED), 0);
    for (const std::string& contents : {std::string(), own, own + " ", own + " 5", own + " -1", own + "  2",
             " " + own + " 2", own + " 2 ", own + " 2\n\n", own + " 2x", own + "\t2", "-" + own + " 2",
             std::string("-1 2"), std::string("0 2"), std::string("+1 2"), std::string("99999999999 2"),
             own + " 99999999999", std::string(5000, '0') + own + " 2"}) {
        writeFile(entry("app"), contents);
        EXPECT_EQ(aul_app_is_running("app"), 0) << contents.substr(0, 40);
        EXPECT_EQ(aul_app_get_status("app"), -1) << contents.substr(0, 40);
    }
    writeFile(entry("app"), own + " 2"); // as a shell's printf writes it
    EXPECT_EQ(aul_app_get_status("app"), STATUS_FOCUS);

    writeFile(runtime() + "/outside", own + " 2\n");
    const std::string tooLong(256, 'a');
    for (const char* name :
        {static_cast<const char*>(nullptr), "", ".", "..", "../outside", "a/b", ".tmp", tooLong.c_str()}) {
        EXPECT_EQ(aul_app_is_running(name), 0);
        EXPECT_EQ(aul_app_get_status(name), -1);
        EXPECT_EQ(aul_app_set_status(name, STATUS_FOCUS), -1);
        EXPECT_EQ(aul_app_remove_status(name), -1);
    }
    EXPECT_EQ(aul_app_set_status("app", static_cast<aul_app_status>(5)), -1);
}
