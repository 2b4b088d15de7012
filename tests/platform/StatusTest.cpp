// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Processes.h"
#include "StoreFixture.h"

#include "aul.h"

#include <fcntl.h>
#include <filesystem>
#include <tuple>

class AnApplication : public StoreFixture {
protected:
    void write(const std::string& content) const { writeFile(entry(), content); }
    std::string entry() const { return runtime() + "/apps/org.app"; }
    timespec written() const { return statusOf(entry()).st_mtim; }
    bool isRunningAt(timespec time) const
    {
        const timespec times[2] = {time, time};
        EXPECT_EQ(utimensat(AT_FDCWD, entry().c_str(), times, 0), 0);
        return aul_app_is_running("org.app") == 1;
    }
};

TEST_F(AnApplication, RunsWhileItsProcessIsAlive)
{
    EXPECT_EQ(aul_app_is_running("org.app"), 0);
    EXPECT_EQ(aul_app_get_status("org.app"), -1);
    ASSERT_EQ(aul_app_set_status("org.app", STATUS_FOCUS), 0);
    EXPECT_EQ(readFile(entry()), std::to_string(getpid()) + " 2\n");
    EXPECT_EQ(modeOf(entry()), 0644U) << "no secret";
    EXPECT_EQ(aul_app_is_running("org.app"), 1);
    EXPECT_EQ(aul_app_get_status("org.app"), STATUS_FOCUS);

    Child other([] { return pause(); });
    write(std::to_string(other.process()) + " 3\n");
    EXPECT_EQ(aul_app_get_status("org.app"), STATUS_VISIBLE);
    EXPECT_EQ(aul_app_remove_status("org.app"), -1) << "another process's entry";
    kill(other.process(), SIGKILL);
    siginfo_t info = {};
    waitid(P_PID, static_cast<id_t>(other.process()), &info, WEXITED | WNOWAIT); // ended, not yet reaped
    EXPECT_EQ(aul_app_is_running("org.app"), 0);
    other.wait();
    EXPECT_EQ(aul_app_is_running("org.app"), 0);

    ASSERT_EQ(aul_app_set_status("org.app", STATUS_BG), 0);
    EXPECT_EQ(aul_app_remove_status("org.app"), 0);
    EXPECT_EQ(aul_app_remove_status("org.app"), -1);
    EXPECT_FALSE(std::filesystem::exists(entry()));
}

TEST_F(AnApplication, IsNotTakenForAnEarlierOneOfItsProcessNumber)
{
    ASSERT_EQ(aul_app_set_status("org.app", STATUS_FOCUS), 0);
    const timespec own = written();
    EXPECT_LE(own.tv_sec, std::stol(readFile("/proc/uptime"))) << "by a clock that nobody sets";
    EXPECT_TRUE(isRunningAt(own));
    EXPECT_FALSE(isRunningAt({own.tv_sec - 1, own.tv_nsec}));
    EXPECT_EQ(aul_app_remove_status("org.app"), -1) << "not its own";
    EXPECT_TRUE(isRunningAt({own.tv_sec, own.tv_nsec + 1})) << "a time that no start is written as";
    EXPECT_TRUE(isRunningAt({time(nullptr), own.tv_nsec})) << "a date, as of an entry written by other means";
    EXPECT_EQ(aul_app_remove_status("org.app"), 0);

    usleep(20000); // a tick, by which starts are told apart
    ASSERT_EQ(Child([] { return aul_app_set_status("org.app", STATUS_FOCUS); }).wait(), 0);
    const timespec later = written();
    EXPECT_GT(std::tie(later.tv_sec, later.tv_nsec), std::tie(own.tv_sec, own.tv_nsec));
    EXPECT_LE(later.tv_sec, std::stol(readFile("/proc/uptime")));
}

TEST_F(AnApplication, WithAnUnusableNameOrEntryDoesNotRun)
{
    const std::string own = std::to_string(getpid());
    ASSERT_EQ(aul_app_set_status("org.app", STATUS_CREATED), 0);
    for (const std::string& contents : Words {"", own, own + " ", own + " 5", own + " -1", own + "  2",
             " " + own + " 2", own + " 2 ", own + " 2\n\n", own + "\t2", "-" + own + " 2", "0 2", "+1 2",
             "99999999999 2", own + " 99999999999", std::string(5000, '0') + own + " 2"}) {
        write(contents);
        EXPECT_EQ(aul_app_get_status("org.app"), -1) << contents.substr(0, 40);
    }
    write(own + " 2"); // as a shell's printf writes it
    EXPECT_EQ(aul_app_get_status("org.app"), STATUS_FOCUS);

    writeFile(runtime() + "/outside", own + " 2\n");
    const std::string tooLong(256, 'a');
    for (const char* name :
        {static_cast<const char*>(nullptr), "", ".", "..", "../outside", "a/b", ".tmp", tooLong.c_str()}) {
        EXPECT_EQ(aul_app_is_running(name), 0);
        EXPECT_EQ(aul_app_set_status(name, STATUS_FOCUS), -1);
    }
    EXPECT_EQ(aul_app_set_status("org.app", static_cast<aul_app_status>(5)), -1);
}
