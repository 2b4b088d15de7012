// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"
#include "Processes.h"

#include <Ecore.h>
#include <algorithm>
#include <ctime>
#include <filesystem>
#include <grp.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

double s_ahead = 0; ///< of the machine's clock, seconds

} // namespace

/// The main loop finds this before its own.
extern "C" __attribute__((visibility("default"))) double ecore_time_get()
{
    timespec now = {};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) / 1e9 + s_ahead;
}

StoreFixture::StoreFixture()
{
    // The store makes its folders itself.
    fs::remove(state());
    fs::remove(runtime());
}

void becomeNobody(const std::string& folder)
{
    constexpr id_t kNobody = 65534;
    if (geteuid() != 0)
        return;
    EXPECT_EQ(lchown(folder.c_str(), kNobody, kNobody), 0);
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        EXPECT_EQ(lchown(entry.path().c_str(), kNobody, kNobody), 0);
    EXPECT_TRUE(setgroups(0, nullptr) == 0 && setgid(kNobody) == 0 && setuid(kNobody) == 0);
}

void enterBox()
{
    const std::string user = "0 " + std::to_string(geteuid()) + " 1";
    const std::string group = "0 " + std::to_string(getegid()) + " 1";
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        throw std::runtime_error("no namespace of a test's own");
    writeFile("/proc/self/setgroups", "deny");
    writeFile("/proc/self/uid_map", user);
    writeFile("/proc/self/gid_map", group);
}

bool allowsBoxes()
{
    const auto tryOut = [] {
        enterBox();
        return mount("none", "/tmp", "tmpfs", 0, nullptr)
            | access("/proc/sys/user/max_inotify_watches", W_OK);
    };
    return Child(tryOut).wait() == 0;
}

struct stat statusOf(const std::string& path)
{
    struct stat status = {};
    lstat(path.c_str(), &status);
    return status;
}

Words namesIn(const std::string& folder)
{
    Words names;
    for (const auto& entry : fs::directory_iterator(folder))
        names.push_back(entry.path().filename());
    std::sort(names.begin(), names.end());
    return names;
}

void passTime(double seconds)
{
    s_ahead += seconds;
    for (int round = 0; round < 3; ++round)
        ecore_main_loop_iterate();
}

void settle()
{
    // Every key of an area is looked at whenever anything happens in it.
    const Watch db("db/settle");
    const Watch memory("memory/settle");
    vconf_set_int("db/settle", 1);
    vconf_set_int("memory/settle", 1);
    EXPECT_TRUE(db.called() && memory.called());
}
