// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Processes.h"
#include "StoreFixture.h"

#include <Ecore.h>
#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <memory>
#include <set>
#include <sys/mount.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

std::string s_countedPrefix;
int s_looks = 0;

void countLooksAt(const std::string& prefix)
{
    s_countedPrefix = prefix;
    s_looks = 0;
}

void setTime(const std::string& path, const timespec& time)
{
    const timespec times[2] = {time, time};
    EXPECT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

} // namespace

/// In the place of the C library's, for the store as well: counts the looks at the keys of a test.
extern "C" __attribute__((visibility("default"))) int lstat(const char* path, struct stat* status) noexcept
{
    if (!s_countedPrefix.empty()
        && std::string_view(path).substr(0, s_countedPrefix.size()) == s_countedPrefix)
        ++s_looks;
    return fstatat(AT_FDCWD, path, status, AT_SYMLINK_NOFOLLOW);
}

class AWatchInTrouble : public StoreFixture {
protected:
    ~AWatchInTrouble() override { countLooksAt(""); }
};

TEST_F(AWatchInTrouble, NeverSeesOneTimeTwiceWhereTheFileSystemsClockTicksRarely)
{
    if (!allowsBoxes())
        GTEST_SKIP() << "no file systems of a test's own on this machine";
    fs::create_directories(runtime() + "/memory");
    const std::string path = runtime() + "/memory/k";
    apart([&] {
        enterBox();
        // The times of its files are those of the kernel's last tick.
        ASSERT_EQ(mount("none", (runtime() + "/memory").c_str(), "ramfs", 0, "mode=755"), 0);
        std::set<std::pair<time_t, long>> times;
        for (int i = 0; i < 1000; ++i) {
            ASSERT_EQ(vconf_set_int("memory/k", 1), VCONF_OK);
            const timespec time = statusOf(path).st_mtim;
            times.emplace(time.tv_sec, time.tv_nsec);
        }
        EXPECT_EQ(times.size(), 1000U);
    });
    EXPECT_FALSE(fs::exists(path)) << "the file system is the child's alone";
}

TEST_F(AWatchInTrouble, LooksFromTimeToTimeOnlyAsLongAsTheKernelCannotWatch)
{
    if (!allowsBoxes())
        GTEST_SKIP() << "no limits of a test's own on this machine";
    const std::string limits = "/proc/sys/user/max_inotify_";
    for (const char* limit : {"watches", "instances"}) {
        apart([&] {
            ecore_fork_reset();
            enterBox();
            writeFile(limits + limit, "0");
            testing::internal::CaptureStderr();
            const Watch memory("memory/k");
            const Watch db("db/k");
            const std::string told = testing::internal::GetCapturedStderr();
            EXPECT_NE(told.find("cannot be watched"), std::string::npos);
            EXPECT_EQ(std::count(told.begin(), told.end(), '\n'), 1) << "once is enough: " << told;
            for (int value = 1; value <= 2; ++value) {
                vconf_set_int("memory/k", value);
                vconf_set_int("db/k", value);
                passTime(2.1);
                EXPECT_TRUE(memory.calls() == value && db.calls() == value) << "before the limit is lifted";
            }
            writeFile(limits + limit, "100");
            passTime(2.1);
            countLooksAt(m_folder);
            passTime(60);
            EXPECT_EQ(s_looks, 0) << "it looks though it can watch";
            vconf_set_int("memory/k", 3);
            vconf_set_int("db/k", 3);
            EXPECT_TRUE(memory.called(3) && db.called(3));
        });
    }
}

TEST_F(AWatchInTrouble, FollowsWhatIsMountedOverItsFolder)
{
    if (!allowsBoxes())
        GTEST_SKIP() << "no mounts of a test's own on this machine";
    vconf_set_int("memory/k", 1);
    apart([&] {
        ecore_fork_reset();
        enterBox();
        const Watch watch("memory/k");
        int calls = 0;
        // Once over the folder itself, once over the one above it; each time nothing happens in a folder.
        for (const std::string& place : {runtime() + "/memory", runtime()}) {
            ASSERT_EQ(mount("none", place.c_str(), "tmpfs", 0, nullptr), 0);
            EXPECT_TRUE(watch.called(++calls)) << "gone: " << place;
            vconf_set_int("memory/k", 2);
            EXPECT_TRUE(watch.called(++calls)) << place;
            ASSERT_EQ(umount2(place.c_str(), MNT_DETACH), 0);
            EXPECT_TRUE(watch.called(++calls)) << "back: " << place;
            EXPECT_EQ(m_settings.getInt("memory/k"), 1);
        }
    });
}

TEST_F(AWatchInTrouble, TellsWritesOfOthersByEachDifference)
{
    const std::string path = runtime() + "/memory/k";
    vconf_set_int("memory/k", 1);
    const Watch watch("memory/k");
    timespec time = statusOf(path).st_mtim;
    time.tv_nsec = time.tv_nsec == 0 ? 1 : time.tv_nsec - 1;
    writeFile(path, "int\n2");
    setTime(path, time);
    EXPECT_TRUE(watch.called(1)) << "another time";
    writeFile(path, "int\n33");
    setTime(path, time);
    EXPECT_TRUE(watch.called(2)) << "another size";
    writeFile(runtime() + "/memory/other", "int\n44");
    setTime(runtime() + "/memory/other", time);
    fs::rename(runtime() + "/memory/other", path);
    EXPECT_TRUE(watch.called(3)) << "another file";
}

TEST_F(AWatchInTrouble, LooksOnlyAtWhatAnEventNames)
{
    vconf_set_int("memory/many-5", 1);
    std::vector<std::unique_ptr<Watch>> watches;
    for (int i = 0; i < 1000; ++i)
        watches.push_back(std::make_unique<Watch>("memory/many-" + std::to_string(i)));
    settle();
    countLooksAt(runtime() + "/memory/many-");
    for (int i = 0; i < 100; ++i) {
        vconf_set_int("memory/unwatched", i);
        vconf_unset("memory/unwatched");
        writeFile(runtime() + "/other", "beside the folder");
        fs::remove(runtime() + "/other");
        settle();
    }
    EXPECT_EQ(s_looks, 0);
    EXPECT_EQ(Child([] { return vconf_set_int("memory/many-5", 1); }).wait(), 0);
    EXPECT_TRUE(watches[5]->called());
    EXPECT_EQ(s_looks, 1);
    fs::rename(runtime() + "/memory", runtime() + "/moved");
    EXPECT_TRUE(watches[5]->called(2)) << "gone with its folder";
    EXPECT_GE(s_looks, 1001) << "of another folder all has to be looked at";
}

TEST_F(AWatchInTrouble, WaitsForAFolderThatMayNotBeMadeOrEntered)
{
    apart([&] {
        ecore_fork_reset();
        becomeNobody(m_folder);
        ASSERT_EQ(chmod(m_folder.c_str(), 0500), 0);
        writeFile(m_folder + "/home/file", "where a folder is missed");
        setenv("ORBIS_STATE_DIR", (m_folder + "/home/file").c_str(), 1);
        const Watch inFile("db/k");
        setenv("ORBIS_STATE_DIR", state().c_str(), 1);
        const Watch watch("db/k", {}, Watch::also);
        EXPECT_FALSE(fs::exists(state()));

        ASSERT_EQ(chmod(m_folder.c_str(), 0700), 0);
        EXPECT_EQ(vconf_set_int("db/k", 1), VCONF_OK);
        ASSERT_TRUE(watch.called(1)) << "the folder has come";
        ASSERT_EQ(chmod(state().c_str(), 0), 0);
        ASSERT_TRUE(watch.called(2)) << "out of reach";
        ASSERT_EQ(chmod(state().c_str(), 0700), 0);
        ASSERT_TRUE(watch.called(3)) << "and back";
        EXPECT_EQ(vconf_set_int("db/k", 2), VCONF_OK);
        ASSERT_TRUE(watch.called(4));

        fs::remove(m_folder + "/home/file");
        fs::create_directories(m_folder + "/home/file/db");
        writeFile(m_folder + "/home/file/db/k", "int\n1");
        EXPECT_TRUE(inFile.called());
    });
}

TEST_F(AWatchInTrouble, FollowsFoldersAndLinksThatGoComeAndAreReplaced)
{
    const std::string one = m_folder + "/one";
    const std::string two = m_folder + "/two";
    fs::create_directories(one + "/db");
    fs::create_directories(two + "/db");
    writeFile(two + "/db/k", "int\n2");
    fs::create_directory_symlink(one, state());
    setenv("ORBIS_STATE_DIR", (m_folder + "//home/../state/").c_str(), 1);
    const Watch watch("db/k");
    vconf_set_int("db/k", 1);
    ASSERT_TRUE(watch.called(1));

    fs::create_directory_symlink(two, m_folder + "/link");
    fs::rename(m_folder + "/link", state());
    ASSERT_TRUE(watch.called(2)) << "a link above that leads elsewhere";
    ASSERT_EQ(
        renameat2(AT_FDCWD, (one + "/db").c_str(), AT_FDCWD, (two + "/db").c_str(), RENAME_EXCHANGE), 0);
    ASSERT_TRUE(watch.called(3)) << "another folder in its place";
    vconf_unset("db/k");
    ASSERT_TRUE(watch.called(4));
    fs::remove_all(drafts());
    fs::rename(one + "/db", two + "/db"); // over the empty one
    ASSERT_TRUE(watch.called(5));

    // Removed and made again, with a write in between, before the loop comes to look.
    fs::remove_all(two);
    fs::create_directory(two);
    vconf_set_int("db/k", 3);
    vconf_unset("db/k");
    vconf_set_int("db/k", 2);
    ASSERT_TRUE(watch.called(6));
    settle();
    EXPECT_EQ(watch.calls(), 6);
    vconf_set_int("db/k", 2);
    EXPECT_TRUE(watch.called(7)) << "the new folder is watched";

    fs::rename(two, m_folder + "/moved"); // nothing happens in the folder itself
    ASSERT_TRUE(watch.called(8)) << "gone with the folder above it";
    EXPECT_FALSE(fs::exists(two)) << "whoever takes a folder away does so in peace";
    fs::remove(state()); // a folder in the place of the link
    vconf_set_int("db/k", 3);
    ASSERT_TRUE(watch.called(9)) << "it has come again";
    writeFile(m_folder + "/moved/db/k", "int\n99");
    settle();
    EXPECT_EQ(watch.calls(), 9) << "the old folder no longer counts";

    fs::rename(state(), m_folder + "/aside");
    ASSERT_TRUE(watch.called(10));
    fs::create_directory_symlink("later/link", state()); // links that lead nowhere yet
    fs::create_directory(m_folder + "/later");
    fs::create_directory_symlink(m_folder + "/at/last", m_folder + "/later/link");
    passTime(0); // nothing can be written meanwhile
    fs::create_directories(m_folder + "/at/last/db");
    writeFile(m_folder + "/at/last/db/k", "int\n4");
    EXPECT_TRUE(watch.called(11)) << "what a link leads to has come";
}

TEST_F(AWatchInTrouble, LosesNothingWhenEventsAreDropped)
{
    const int room = std::stoi(readFile("/proc/sys/fs/inotify/max_queued_events"));
    const Watch first("memory/first");
    const Watch second("memory/second");
    // The quickest events that fill its queue; like ones in a row would count as one.
    for (int i = 0; i < room + 100; ++i)
        std::ofstream(runtime() + (i % 2 ? "/memory/one" : "/memory/another"));
    vconf_set_str("memory/first", "last"); // the events of these are dropped
    vconf_set_str("memory/second", "last");
    EXPECT_TRUE(first.called() && second.called());
}
