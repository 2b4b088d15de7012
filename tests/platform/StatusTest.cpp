#include "Processes.h"
#include "StoreFixture.h"

#include "aul.h"

#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <linux/sched.h>
#include <sys/prctl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
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

TEST_F(AnApplication, IsNotTakenForAnotherOneWithItsProcessNumber)
{
    const auto setOwn = [] {
        const bool done =
            aul_app_set_status("org.app", STATUS_FOCUS) == 0 && aul_app_is_running("org.app") == 1;
        return done ? 0 : 1;
    };
    Child first(setOwn);
    ASSERT_EQ(first.wait(), 0);
    const std::string text = readFile(entry("org.app"));
    EXPECT_EQ(text, std::to_string(first.process()) + " 2\n");
    struct stat status = {};
    ASSERT_EQ(stat(entry("org.app").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0644U) << "no secret";

    // The time of the start is told by a clock that nobody sets, and that the next process has moved on from.
    const auto uptime = std::stol(readFile("/proc/uptime"));
    EXPECT_LE(status.st_mtim.tv_sec, uptime);
    EXPECT_GE(status.st_mtim.tv_sec, uptime - 60);
    pid_t number = first.process();
    clone_args arguments = {};
    arguments.exit_signal = SIGCHLD;
    arguments.set_tid = reinterpret_cast<uintptr_t>(&number);
    arguments.set_tid_size = 1;
    usleep(20000); // a tick, by which starts are told apart
    const auto second = static_cast<pid_t>(syscall(SYS_clone3, &arguments, sizeof arguments));
    if (second == 0) {
        prctl(PR_SET_PDEATHSIG, SIGKILL);
        while (true)
            pause();
    }
    if (second < 0)
        GTEST_SKIP() << "a process cannot be given a number here: " << strerror(errno);
    ASSERT_EQ(second, first.process());
    EXPECT_EQ(aul_app_is_running("org.app"), 0);
    EXPECT_EQ(aul_app_get_status("org.app"), -1);
    writeFile(entry("org.app"), text); // as written by other means, with the time of that
    EXPECT_EQ(aul_app_get_status("org.app"), STATUS_FOCUS);
    kill(second, SIGKILL);
    waitpid(second, nullptr, 0);
    EXPECT_EQ(aul_app_is_running("org.app"), 0);
}

TEST_F(AnApplication, KnowsAnEntryThatAnEarlierProcessOfItsNumberLeft)
{
    ASSERT_EQ(aul_app_set_status("org.app", STATUS_FOCUS), 0);
    struct stat status = {};
    ASSERT_EQ(stat(entry("org.app").c_str(), &status), 0);
    const auto isRunningAt = [&](timespec time) {
        const timespec times[2] = {time, time};
        EXPECT_EQ(utimensat(AT_FDCWD, entry("org.app").c_str(), times, 0), 0);
        return aul_app_is_running("org.app") == 1;
    };
    timespec own = status.st_mtim;
    EXPECT_TRUE(isRunningAt(own));
    EXPECT_FALSE(isRunningAt({own.tv_sec - 1, own.tv_nsec}));
    EXPECT_EQ(aul_app_remove_status("org.app"), -1) << "not its own";
    EXPECT_TRUE(isRunningAt({own.tv_sec, own.tv_nsec + 1})) << "a time that no start is written as";
    EXPECT_TRUE(isRunningAt({time(nullptr), own.tv_nsec})) << "a date";
    EXPECT_EQ(aul_app_remove_status("org.app"), 0);
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
