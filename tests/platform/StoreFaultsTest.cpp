#include "StoreFixture.h"

#include <filesystem>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace fs = std::filesystem;

class AStoreInTrouble : public StoreFixture { };

TEST_F(AStoreInTrouble, LeavesAloneWhatIsNoFileUntilItIsReplaced)
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
