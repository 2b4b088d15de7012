#include "Processes.h"
#include "StoreFixture.h"

#include <Ecore.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <sched.h>
#include <set>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

std::string s_countedPrefix;
int s_looks = 0;

/// Fewer descriptors than the process has had until now, while it lives.
class FewDescriptors {
public:
    explicit FewDescriptors(rlim_t more)
    {
        getrlimit(RLIMIT_NOFILE, &m_before);
        const int lowestFree = dup(0);
        close(lowestFree);
        const rlimit few = {static_cast<rlim_t>(lowestFree) + more, m_before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &few);
    }
    FewDescriptors(const FewDescriptors&) = delete;
    FewDescriptors& operator=(const FewDescriptors&) = delete;
    ~FewDescriptors() { setrlimit(RLIMIT_NOFILE, &m_before); }

private:
    rlimit m_before = {};
};

struct stat statusOf(const std::string& path)
{
    struct stat status = {};
    EXPECT_EQ(stat(path.c_str(), &status), 0) << path;
    return status;
}

/// Gives the calling process a file system of its own whose times are those of the kernel's last tick.
bool mountCoarseClock(const std::string& folder)
{
    const std::string user = "0 " + std::to_string(geteuid()) + " 1";
    const std::string group = "0 " + std::to_string(getegid()) + " 1";
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return false;
    writeFile("/proc/self/setgroups", "deny");
    writeFile("/proc/self/uid_map", user);
    writeFile("/proc/self/gid_map", group);
    return mount("none", folder.c_str(), "ramfs", 0, "mode=755") == 0;
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
    ~AWatchInTrouble() override { s_countedPrefix.clear(); }

    static std::vector<std::unique_ptr<Watch>> watchMany(int count)
    {
        std::vector<std::unique_ptr<Watch>> watches;
        for (int i = 0; i < count; ++i)
            watches.push_back(std::make_unique<Watch>("memory/many-" + std::to_string(i)));
        return watches;
    }
};

TEST_F(AWatchInTrouble, NeverSeesOneTimeTwiceWhereTheFileSystemsClockTicksRarely)
{
    if (!allowsBoxes())
        GTEST_SKIP() << "no file systems of a test's own on this machine";
    fs::create_directories(runtime() + "/memory");
    const std::string path = runtime() + "/memory/k";
    Child writer([&] {
        if (!mountCoarseClock(runtime() + "/memory"))
            return 2;
        std::set<std::pair<time_t, long>> times;
        for (int i = 0; i < 1000; ++i) {
            if (vconf_set_int("memory/k", 1) != VCONF_OK)
                return 3;
            const timespec time = statusOf(path).st_mtim;
            times.emplace(time.tv_sec, time.tv_nsec);
        }
        return times.size() == 1000 ? 0 : 1;
    });
    EXPECT_EQ(writer.wait(), 0);
    EXPECT_FALSE(fs::exists(path)) << "the file system is the child's alone";
}

TEST_F(AWatchInTrouble, TellsEveryWriteApartHoweverAlikeTheFiles)
{
    // The number of a removed file is given to the next one.
    const std::string path = runtime() + "/memory/k";
    vconf_set_int("memory/k", 1);
    const Watch watch("memory/k");
    for (int i = 0; i < 50; ++i) {
        const ino_t seen = statusOf(path).st_ino;
        bool isAlike = false;
        for (int tries = 0; tries < 5 && !isAlike; ++tries) {
            vconf_unset("memory/k");
            vconf_set_int("memory/k", 1);
            isAlike = statusOf(path).st_ino == seen;
        }
        ASSERT_TRUE(watch.called(i + 1)) << "with the same number: " << isAlike;
    }

    // What other programs write is told by each of the differences alone.
    const int calls = watch.calls();
    timespec time = statusOf(path).st_mtim;
    time.tv_nsec = time.tv_nsec == 0 ? 1 : time.tv_nsec - 1;
    writeFile(path, "int\n2");
    setTime(path, time);
    EXPECT_TRUE(watch.called(calls + 1)) << "another time";
    writeFile(path, "int\n33");
    setTime(path, time);
    EXPECT_TRUE(watch.called(calls + 2)) << "another size";
    writeFile(runtime() + "/memory/other", "int\n44");
    setTime(runtime() + "/memory/other", time);
    fs::rename(runtime() + "/memory/other", path);
    EXPECT_TRUE(watch.called(calls + 3)) << "another file";
}

TEST_F(AWatchInTrouble, TakesNoDescriptorForAKey)
{
    const FewDescriptors few(8);
    const auto watches = watchMany(3000);
    const int spare = dup(0);
    EXPECT_GE(spare, 0) << "none is left";
    close(spare);
    for (const size_t i : {size_t {0}, watches.size() - 1}) {
        EXPECT_EQ(vconf_set_int(("memory/many-" + std::to_string(i)).c_str(), 1), VCONF_OK);
        EXPECT_TRUE(watches[i]->called());
    }
}

TEST_F(AWatchInTrouble, LooksOnlyAtWhatAnEventNames)
{
    vconf_set_int("memory/many-5", 1);
    auto watches = watchMany(1000);
    settle();
    s_countedPrefix = runtime() + "/memory/many-";
    s_looks = 0;
    for (int i = 0; i < 100; ++i) {
        vconf_set_int("memory/unwatched", i);
        vconf_unset("memory/unwatched");
        writeFile(runtime() + "/other", "beside the folder");
        fs::remove(runtime() + "/other");
        settle();
    }
    EXPECT_EQ(s_looks, 0);
    ASSERT_TRUE(Child([] { return vconf_set_int("memory/many-5", 1); }).wait() == 0);
    EXPECT_TRUE(watches[5]->called());
    EXPECT_EQ(s_looks, 1);
    fs::rename(runtime() + "/memory", runtime() + "/moved");
    EXPECT_TRUE(watches[5]->called(2)) << "gone with its folder";
    EXPECT_GE(s_looks, 1001) << "of another folder all has to be looked at";
}

TEST_F(AWatchInTrouble, WaitsForAFolderThatMayNotBeMadeOrEntered)
{
    const Unprivileged user(m_folder);
    ASSERT_EQ(chmod(m_folder.c_str(), 0500), 0);
    writeFile(m_folder + "/home/file", "where a folder is missed");
    setenv("ORBIS_STATE_DIR", (m_folder + "/home/file").c_str(), 1);
    const Watch inFile("db/k");
    setenv("ORBIS_STATE_DIR", state().c_str(), 1);
    const Watch watch("db/k", {}, Watch::also);
    ASSERT_TRUE(inFile.active() && watch.active());
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
}

TEST_F(AWatchInTrouble, FollowsReplacedFoldersAndLinks)
{
    fs::create_directories(m_folder + "/one/db");
    fs::create_directories(m_folder + "/two/db");
    writeFile(m_folder + "/two/db/k", "int\n2");
    fs::create_directory_symlink(m_folder + "/one", state());
    setenv("ORBIS_STATE_DIR", (m_folder + "//home/../state/").c_str(), 1);
    const Watch watch("db/k");
    vconf_set_int("db/k", 1);
    ASSERT_TRUE(watch.called(1));

    fs::create_directory_symlink(m_folder + "/two", m_folder + "/link");
    fs::rename(m_folder + "/link", state());
    ASSERT_TRUE(watch.called(2)) << "a link above that leads elsewhere";
    const auto exchange = [&] {
        return renameat2(AT_FDCWD, (m_folder + "/one/db").c_str(), AT_FDCWD, (m_folder + "/two/db").c_str(),
            RENAME_EXCHANGE);
    };
    ASSERT_EQ(exchange(), 0);
    ASSERT_TRUE(watch.called(3)) << "another folder in its place";
    vconf_unset("db/k");
    ASSERT_TRUE(watch.called(4));
    fs::remove_all(drafts());
    fs::rename(m_folder + "/one/db", m_folder + "/two/db"); // over the empty one
    ASSERT_TRUE(watch.called(5));

    // Removed and made again, with a write in between, before the loop comes to look.
    fs::remove_all(m_folder + "/two");
    fs::create_directory(m_folder + "/two");
    vconf_set_int("db/k", 3);
    vconf_unset("db/k");
    vconf_set_int("db/k", 2);
    ASSERT_TRUE(watch.called(6));
    settle();
    EXPECT_EQ(watch.calls(), 6);
    vconf_set_int("db/k", 2);
    EXPECT_TRUE(watch.called(7)) << "the new folder is watched";
}
