#include "StoreFixture.h"

#include <filesystem>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace fs = std::filesystem;

/// A store on file systems of a test's own.
class AStoreInTrouble : public StoreFixture {
protected:
    void SetUp() override
    {
        if (!allowsBoxes())
            GTEST_SKIP() << "no mounts of a test's own on this machine";
        fs::create_directories(state());
        fs::create_directories(runtime() + "/memory");
        Words environment = m_folders.environment();
        environment.insert(environment.begin(), "ASAN_OPTIONS=detect_leaks=0"); // what a box prevents
        m_box = std::make_unique<tv::Process>(Words {"unshare", "-Urmpf", "--kill-child", "sh"}, environment);
        m_box->tell("settings() { " ORBIS_SETTINGS_TOOL " \"$@\"; }");
    }

    std::unique_ptr<tv::Process> m_box; ///< a shell that takes commands as lines
};

TEST_F(AStoreInTrouble, KeepsTheOldValueWhenTheDiskIsFullOrReadOnly)
{
    m_box->tell("mount -t tmpfs -o size=64k,nr_inodes=20 none \"$ORBIS_STATE_DIR\"; cd \"$ORBIS_STATE_DIR\"");
    m_box->tell("state() { echo $1 $? $(settings get db/k) $(ls -A db/.tmp | wc -l); }");
    m_box->tell("settings set -t string db/k old");
    m_box->tell("settings set -t string db/k \"$(head -c 70000 /dev/zero | tr '\\0' x)\"; state blocks");
    m_box->tell("i=0; while true >file$i; do i=$((i + 1)); done 2>/dev/null");
    m_box->tell("settings set -t int db/k 1; state inodes; rm file*; settings set -t string db/k new");
    m_box->tell(
        "mount -o remount,ro .; settings set -t int db/k 1; state write; settings unset db/k; state remove");
    ASSERT_TRUE(tells(*m_box, "remove 1 new 0"));
    EXPECT_EQ(
        m_box->output(), (Words {"blocks 1 old 0", "inodes 1 old 0", "write 1 new 0", "remove 1 new 0"}));
    EXPECT_EQ(m_box->errors(),
        (Words {"orbis-settings: cannot write db/k: No space left on device",
            "orbis-settings: cannot write db/k: No space left on device",
            "orbis-settings: cannot write db/k: Read-only file system",
            "orbis-settings: cannot remove db/k: Read-only file system"}));
}

TEST_F(AStoreInTrouble, FollowsWhatIsMountedOverItsFolder)
{
    m_box->tell("settings watch memory/k &");
    ASSERT_TRUE(listens(*m_box, "memory/k"));
    // Once over the folder itself, once over the one above it; each time nothing happens in a folder.
    for (const std::string place : {"\"$ORBIS_RUNTIME_DIR/memory\"", "\"$ORBIS_RUNTIME_DIR\""}) {
        const auto saysLast = [&](const std::string& line) {
            return tv::waitUntil([&] { return m_box->output().back() == line; });
        };
        vconf_set_int("memory/k", 1);
        ASSERT_TRUE(saysLast("memory/k 1"));
        m_box->tell("mount -t tmpfs none " + place);
        EXPECT_TRUE(saysLast("memory/k")) << place;
        m_box->tell("settings set -t int memory/k 2");
        EXPECT_TRUE(saysLast("memory/k 2")) << place;
        m_box->tell("umount -l " + place);
        EXPECT_TRUE(saysLast("memory/k 1")) << place;
    }
}

class AKeyThatIsNoFile : public StoreFixture { };

TEST_F(AKeyThatIsNoFile, IsLeftAloneUntilItIsReplaced)
{
    vconf_set_int("db/k", 1);
    const std::string folder = state() + "/db/";
    writeFile(m_folder + "/target", "int\n5");
    fs::create_symlink(m_folder + "/target", folder + "link");
    fs::create_directory(folder + "folder");
    ASSERT_EQ(mkfifo((folder + "pipe").c_str(), 0600), 0);
    Words names {"link", "folder", "pipe"};
    if (mknod((folder + "device").c_str(), S_IFCHR | 0600, makedev(1, 5)) == 0) // only root may
        names.emplace_back("device");
    const int opened = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    for (const std::string& name : names) {
        const std::string key = "db/" + name;
        inotify_add_watch(opened, (folder + name).c_str(), IN_OPEN | IN_DONT_FOLLOW);
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

    for (const std::string& name : names) {
        const std::string key = "db/" + name;
        const bool isFolder = name == "folder";
        const Watch watch(key);
        EXPECT_EQ(vconf_set_int(key.c_str(), 2), isFolder ? VCONF_ERROR : VCONF_OK) << key;
        EXPECT_EQ(isFolder ? 0 : modeOf(folder + name) & 0007U, 0U) << key << ": not the old mode";
        EXPECT_EQ(vconf_unset(key.c_str()), isFolder ? VCONF_ERROR : VCONF_OK) << key;
        if (isFolder)
            fs::remove(folder + name);
        EXPECT_TRUE(watch.called()) << key;
    }
    EXPECT_EQ(readFile(m_folder + "/target"), "int\n5");
    EXPECT_EQ(namesIn(drafts()), Words {});
}
