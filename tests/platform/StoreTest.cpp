// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Processes.h"
#include "StoreFixture.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <malloc.h>
#include <memory>
#include <sys/inotify.h>
#include <sys/ioctl.h>
#include <sys/sysmacros.h>
#include <sys/time.h>

namespace fs = std::filesystem;

class ASettingsStore : public StoreFixture { };

TEST_F(ASettingsStore, KeepsEachKeyInAFileOfItsArea)
{
    for (const std::string value : {"", "12", "int\n5", "lines\r\n\n", "\xFF\xFE\x01 no UTF-8", "été 电视"}) {
        vconf_set_str("db/a/text", value.c_str());
        EXPECT_EQ(text("db/a/text"), value);
    }
    vconf_set_int("memory/a/number", 5);
    EXPECT_EQ(readFile(runtime() + "/memory/a%2Fnumber"), "int\n5");
    EXPECT_TRUE(fs::exists(state() + "/db/a%2Ftext"));
    EXPECT_EQ(vconf_get_type("db/a/text"), VCONF_TYPE_STRING);
    vconf_set_int("db/a/text", 12);
    EXPECT_EQ(vconf_get_type("db/a/text"), VCONF_TYPE_INT);
    EXPECT_EQ(vconf_unset("db/a/text"), VCONF_OK);
    EXPECT_EQ(vconf_get_type("db/a/text"), VCONF_TYPE_NONE);
}

TEST_F(ASettingsStore, RefusesKeysOutsideItsAreas)
{
    const std::string tooLong = "db/" + std::string(256, 'k');
    const std::string tooLongEscaped = "db/" + std::string(86, ' ');
    for (const char* key :
        {"", "db", "db/", "memory/", "file/x", "Db/x", "/db/x", "db//x", "db/x/", "db/.", "db/..", "db/../x",
            "db/x/..", "db/x/./y", "memory/../../x", tooLong.c_str(), tooLongEscaped.c_str()}) {
        EXPECT_EQ(vconf_set_int(key, 1), VCONF_ERROR) << key;
        EXPECT_EQ(vconf_set_str(key, "1"), VCONF_ERROR) << key;
        EXPECT_EQ(vconf_notify_key_changed(key, Watch::on_changed, nullptr), VCONF_ERROR) << key;
    }
    EXPECT_FALSE(fs::exists(state())) << "nothing was written";
}

TEST_F(ASettingsStore, EscapesNamesAndListsThemSorted)
{
    const std::vector<std::string> keys = {"db/.hidden", "db/...", "db/a b%2F\n", "db/a/b", "db/été",
        "db/" + std::string(255, 'k'), "memory/.tmp", "memory/a"};
    for (const std::string& key : keys)
        ASSERT_EQ(vconf_set_str(key.c_str(), key.c_str()), VCONF_OK) << key;
    for (const char* foreign : {"%2f", "%2F", "%", "%4", "%41", "a%", "plain~"})
        writeFile(state() + "/db/" + foreign, "int\n1");
    fs::create_directory(state() + "/db/folder");

    const auto collect = [](const char* key, void* data) {
        static_cast<std::vector<std::string>*>(data)->push_back(key);
    };
    std::vector<std::string> found;
    EXPECT_EQ(vconf_list(nullptr, collect, &found), 8);
    auto sorted = keys;
    std::sort(sorted.begin(), sorted.end());
    EXPECT_EQ(found, sorted);
    for (const std::string& key : keys)
        EXPECT_EQ(text(key), key);
    found.clear();
    EXPECT_EQ(vconf_list("db/a", collect, &found), 2);
    EXPECT_EQ(vconf_list("db/none", collect, &found), 0);
    EXPECT_EQ(found, (std::vector<std::string> {"db/a b%2F\n", "db/a/b"}));
}

TEST_F(ASettingsStore, TakesTornOrForeignContentsForUnreadable)
{
    vconf_set_int("db/k", 1);
    const std::string nul("string\na\0b", 10);
    const std::string tooLong = "string\n" + std::string(16U * 1024 * 1024, 'x');
    for (const std::string& contents :
        Words {"", "i", "int", "int\n", "int\n5 ", "int\n5\n", "int\n+5", "int\n2147483648",
            "int\n-2147483649", "int\n0x5", "string", "string \nx", "double\n1.5", nul, tooLong}) {
        writeFile(state() + "/db/k", contents);
        EXPECT_EQ(m_settings.getInt("db/k"), std::nullopt) << contents.substr(0, 20);
        EXPECT_EQ(text("db/k"), std::nullopt) << contents.substr(0, 20);
        EXPECT_EQ(vconf_get_type("db/k"), VCONF_TYPE_NONE) << contents.substr(0, 20);
    }
    EXPECT_EQ(errno, EFBIG) << "the last one's reason";
}

TEST_F(ASettingsStore, BoundsWhatItWritesAndKeepsNoneOfIt)
{
    const size_t most = 16U * 1024 * 1024 - std::strlen("string\n");
    const std::string largest(most, 'x');
    const auto held = [] { // nothing under a sanitizer, which has an allocator of its own
        const struct mallinfo2 now = mallinfo2();
        return now.uordblks + now.hblkhd;
    };
    const size_t before = held();
    EXPECT_EQ(vconf_set_str("memory/k", largest.c_str()), VCONF_OK);
    EXPECT_TRUE(text("memory/k") == largest);
    EXPECT_LT(held(), before + (1U << 20U)) << "the memory of a value of 16 MiB is kept";

    errno = 0;
    EXPECT_EQ(vconf_set_str("memory/k", (largest + 'y').c_str()), VCONF_ERROR);
    EXPECT_EQ(errno, EFBIG);
    EXPECT_TRUE(text("memory/k") == largest) << "the old value stays";
}

TEST_F(ASettingsStore, SweepsTheDraftsOfKilledWritersAndLeavesNoneItself)
{
    fs::create_directories(drafts());
    writeFile(drafts() + "/old", "half");
    writeFile(drafts() + "/young", "half");
    const timeval longAgo[2] = {{time(nullptr) - 120, 0}, {time(nullptr) - 120, 0}};
    ASSERT_EQ(utimes((drafts() + "/old").c_str(), longAgo), 0);
    EXPECT_EQ(vconf_set_int("db/k", 1), VCONF_OK);
    fs::create_directory(state() + "/db/taken"); // the rename of this write fails
    EXPECT_EQ(vconf_set_int("db/taken", 1), VCONF_ERROR);
    EXPECT_EQ(namesIn(drafts()), Words {"young"});
}

TEST_F(ASettingsStore, LeavesAloneWhatIsNoFileUntilItIsReplaced)
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

TEST_F(ASettingsStore, ShowsNoHalfValueOfManyWritersAndDeliversTheLast)
{
    // A text tells whether it is whole: it is one letter, from end to end, as often as that letter has it.
    const auto some = [](int number) {
        return std::string(
            1 + 400U * (static_cast<unsigned int>(number) % 26), static_cast<char>('a' + number % 26));
    };
    int bad = 0;
    std::string last;
    const Watch watch("memory/storm", [&] {
        last = text("memory/storm").value_or("");
        bad += last.empty() || last != some(last[0] - 'a');
    });
    std::vector<std::unique_ptr<Child>> writers;
    for (int writer = 0; writer < 4; ++writer) {
        writers.push_back(std::make_unique<Child>([=] {
            int failures = 0;
            for (int i = 0; i < 400; ++i)
                failures += vconf_set_str("memory/storm", some(writer + i).c_str()) != VCONF_OK;
            return failures;
        }));
    }
    for (const auto& writer : writers) {
        EXPECT_TRUE(runUntil([&] { return writer->wait(WNOHANG).has_value(); }, 120));
        EXPECT_EQ(writer->wait(WNOHANG), 0);
    }
    EXPECT_TRUE(runUntil([&] { return last == text("memory/storm"); }));
    EXPECT_EQ(bad, 0);
}
