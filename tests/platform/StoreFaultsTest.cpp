#include "StoreFixture.h"

#include <filesystem>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace fs = std::filesystem;

class AStoreInTrouble : public StoreFixture {
protected:
    /// @return whether the line is the last that the box has printed
    static bool tells(const tv::Process& box, const std::string& line)
    {
        return tv::waitUntil([&] { return !box.output().empty() && box.output().back() == line; });
    }
};

TEST_F(AStoreInTrouble, LeavesAloneWhatIsNoFile)
{
    vconf_set_int("db/k", 1);
    const std::string folder = state() + "/db/";
    writeFile(m_folder + "/target", "int\n5");
    fs::create_symlink(m_folder + "/target", folder + "link");
    fs::create_directory(folder + "folder");
    ASSERT_EQ(mkfifo((folder + "pipe").c_str(), 0600), 0);
    Words keys {"db/link", "db/folder", "db/pipe"};
    if (mknod((folder + "device").c_str(), S_IFCHR | 0600, makedev(1, 5)) == 0) // only root may
        keys.emplace_back("db/device");
    const int opened = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    for (const char* name : {"link", "pipe", "device"})
        inotify_add_watch(opened, (folder + name).c_str(), IN_OPEN | IN_DONT_FOLLOW);
    for (const std::string& key : keys) {
        int value = 77;
        EXPECT_EQ(vconf_get_int(key.c_str(), &value), VCONF_ERROR) << key;
        EXPECT_EQ(text(key), std::nullopt) << key;
        EXPECT_EQ(vconf_get_type(key.c_str()), VCONF_TYPE_NONE) << key;
    }
    int bytes = 0;
    EXPECT_EQ(ioctl(opened, FIONREAD, &bytes), 0);
    EXPECT_EQ(bytes, 0) << "something was opened";
    close(opened);
    const auto ignored = [](const char*, void*) {};
    EXPECT_EQ(vconf_list("db/", ignored, nullptr), 1);

    for (const std::string& key : keys) {
        const bool isFolder = key == "db/folder";
        const Watch watch(key);
        EXPECT_EQ(vconf_set_int(key.c_str(), 2), isFolder ? VCONF_ERROR : VCONF_OK) << key;
        EXPECT_EQ(isFolder ? 0 : modeOf(state() + '/' + key) & 0007U, 0U) << key << ": not the old mode";
        EXPECT_EQ(vconf_unset(key.c_str()), isFolder ? VCONF_ERROR : VCONF_OK) << key;
        if (isFolder)
            fs::remove(folder + "folder");
        EXPECT_TRUE(watch.called()) << key;
    }
    EXPECT_EQ(readFile(m_folder + "/target"), "int\n5");
    EXPECT_EQ(namesIn(drafts()), Words {});
}

TEST_F(AStoreInTrouble, KeepsTheOldValueWhenTheDiskIsFullOrReadOnly)
{
    if (!allowsBoxes())
        GTEST_SKIP() << "no file systems of a test's own on this machine";
    fs::create_directories(state());
    const auto shell = box();
    shell->tell("mount -t tmpfs -o size=64k,nr_inodes=20 none \"$ORBIS_STATE_DIR\"");
    shell->tell("cd \"$ORBIS_STATE_DIR\"; settings set -t string db/k old");
    shell->tell("long=$(head -c 70000 /dev/zero | tr '\\0' x)");
    shell->tell(
        "settings set -t string db/k \"$long\"; echo $? $(settings get db/k) $(ls -A db/.tmp | wc -l)");
    ASSERT_TRUE(tells(*shell, "1 old 0"));
    shell->tell("i=0; while true >file$i; do i=$((i + 1)); done 2>/dev/null"); // no inodes are left
    shell->tell("settings set -t int db/k 1; echo $? $(settings get db/k) $(ls -A db/.tmp | wc -l) inodes");
    ASSERT_TRUE(tells(*shell, "1 old 0 inodes"));
    shell->tell("rm file*; settings set -t string db/k new; mount -o remount,ro . ");
    shell->tell("settings set -t int db/k 1; a=$?; settings unset db/k; echo $a $? $(settings get db/k)");
    ASSERT_TRUE(tells(*shell, "1 1 new"));
    EXPECT_EQ(shell->errors(),
        (Words {"orbis-settings: cannot write db/k: No space left on device",
            "orbis-settings: cannot write db/k: No space left on device",
            "orbis-settings: cannot write db/k: Read-only file system",
            "orbis-settings: cannot remove db/k: Read-only file system"}));
}

TEST_F(AStoreInTrouble, FollowsWhatIsMountedOverItsFolder)
{
    if (!allowsBoxes())
        GTEST_SKIP() << "no mounts of a test's own on this machine";
    fs::create_directories(runtime() + "/memory");
    vconf_set_int("memory/k", 1);
    const auto shell = box();
    shell->tell("settings watch memory/k &");
    ASSERT_TRUE(listens(*shell, "memory/k"));
    vconf_set_int("memory/k", 1);
    ASSERT_TRUE(tells(*shell, "memory/k 1"));
    // Once over the folder itself, once over the one above it; each time nothing happens in a folder.
    for (const char* place : {"$ORBIS_RUNTIME_DIR/memory", "$ORBIS_RUNTIME_DIR"}) {
        shell->tell(std::string("mount -t tmpfs none ") + place);
        EXPECT_TRUE(tells(*shell, "memory/k")) << place;
        shell->tell("settings set -t int memory/k 2");
        EXPECT_TRUE(tells(*shell, "memory/k 2")) << place;
        shell->tell(std::string("umount -l ") + place);
        EXPECT_TRUE(tells(*shell, "memory/k 1")) << place;
    }
}

TEST_F(AStoreInTrouble, IsLookedAtFromTimeToTimeWhenNoWatchesAreLeft)
{
    if (!allowsBoxes())
        GTEST_SKIP() << "no limits of a test's own on this machine";
    vconf_set_int("memory/k", 1);
    vconf_set_int("db/k", 1);
    for (const char* limit : {"watches", "instances"}) {
        const std::string file = std::string(" >/proc/sys/user/max_inotify_") + limit;
        const auto shell = box();
        shell->tell("echo 0" + file);
        shell->tell("settings watch memory/k db/k &");
        ASSERT_TRUE(tv::waitUntil([&] { return !shell->errors().empty(); }));
        ASSERT_TRUE(listens(*shell, "memory/k"));
        vconf_set_int("memory/k", 2);
        EXPECT_TRUE(tells(*shell, "memory/k 2"));
        shell->tell("echo 100" + file);
        vconf_set_int("db/k", 2);
        EXPECT_TRUE(tells(*shell, "db/k 2"));
        EXPECT_EQ(shell->errors().size(), 1U) << testing::PrintToString(shell->errors());
        EXPECT_NE(shell->errors()[0].find("cannot be watched"), std::string::npos);
    }
}
