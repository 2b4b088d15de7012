// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Processes.h"
#include "StoreFixture.h"

#include <cerrno>
#include <filesystem>
#include <glib.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

constexpr id_t kNobody = 65534;
constexpr gid_t kGroup = 4242;

} // namespace

class ASharedStore : public StoreFixture {
protected:
    ~ASharedStore() override { umask(m_umask); }

    const mode_t m_umask = umask(022);
    const std::string m_area = state() + "/db";
};

TEST_F(ASharedStore, KeepsNewKeysFromOthersAndTheModeOfOldOnes)
{
    const std::string path = state() + "/db/k";
    umask(0);
    vconf_set_str("db/k", "secret");
    vconf_set_int("memory/k", 1);
    EXPECT_EQ(modeOf(path), 0640U);
    EXPECT_EQ(modeOf(runtime() + "/memory/k"), 0640U);
    EXPECT_EQ(modeOf(m_area), 0755U);
    umask(077);
    vconf_set_int("db/narrow", 1);
    EXPECT_EQ(modeOf(state() + "/db/narrow"), 0600U);
    for (const mode_t mode : {0666U, 0640U, 0604U, 0600U, 0440U}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        EXPECT_EQ(vconf_set_str("db/k", "other"), VCONF_OK);
        EXPECT_EQ(modeOf(path), mode);
    }
    vconf_unset("db/k");
    vconf_set_int("db/k", 1);
    EXPECT_EQ(modeOf(path), 0600U) << "a key that was removed is a new one";
    chmod(path.c_str(), 0604);
    ASSERT_TRUE(
        g_file_set_contents_full(path.c_str(), "int\n2", -1, G_FILE_SET_CONTENTS_CONSISTENT, 0640, nullptr));
    EXPECT_NE(modeOf(path), 0604U) << "the library could write the store; see docs/architecture.md";
}

TEST_F(ASharedStore, LetsThePlaceOfTheDraftsFollowTheFolder)
{
    umask(077);
    fs::create_directories(m_area);
    for (const mode_t mode : {02775U, 0755U, 0700U, 01777U}) {
        ASSERT_EQ(chmod(m_area.c_str(), mode), 0);
        EXPECT_EQ(vconf_set_int("db/k", 1), VCONF_OK);
        EXPECT_EQ(modeOf(drafts()), mode);
    }
    fs::remove_all(drafts());
    fs::create_directory(m_folder + "/elsewhere");
    fs::create_directory_symlink(m_folder + "/elsewhere", drafts());
    EXPECT_EQ(vconf_set_int("db/k", 2), VCONF_ERROR) << "drafts must not be led elsewhere";
    EXPECT_EQ(namesIn(m_folder + "/elsewhere"), Words {});
}

TEST_F(ASharedStore, KeepsTheGroupOfAFolderAndTheOwnerOfAKey)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give files to other users and groups";
    fs::create_directories(m_area);
    ASSERT_EQ(chown(m_area.c_str(), 0, kGroup), 0);
    ASSERT_EQ(vconf_set_int("db/own", 1), VCONF_OK);
    EXPECT_EQ(statusOf(m_area + "/own").st_gid, getegid()) << "the folder hands on no group";
    EXPECT_EQ(statusOf(drafts()).st_gid, kGroup);
    ASSERT_EQ(chmod(m_area.c_str(), 02775), 0);
    ASSERT_EQ(chmod(drafts().c_str(), 0755), 0);
    ASSERT_EQ(chown(drafts().c_str(), 0, 0), 0); // as an earlier writer left it
    EXPECT_EQ(vconf_set_int("db/k", 1), VCONF_OK);
    EXPECT_EQ(statusOf(m_area + "/k").st_gid, kGroup);
    EXPECT_EQ(statusOf(drafts()).st_gid, kGroup);

    ASSERT_EQ(chown((m_area + "/k").c_str(), kNobody, kNobody), 0);
    ASSERT_EQ(chmod((m_area + "/k").c_str(), 0640), 0);
    EXPECT_EQ(vconf_set_int("db/k", 2), VCONF_OK);
    EXPECT_EQ(statusOf(m_area + "/k").st_uid, kNobody);
    EXPECT_EQ(statusOf(m_area + "/k").st_gid, kNobody);
    EXPECT_EQ(modeOf(m_area + "/k"), 0640U);
}

TEST_F(ASharedStore, ServesAUserWhoseFolderRootWroteIn)
{
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can write in other users' folders";
    fs::create_directories(m_area);
    ASSERT_EQ(chown(m_area.c_str(), kNobody, kNobody), 0);
    for (const std::string& folder : {m_folder, state()})
        ASSERT_EQ(chmod(folder.c_str(), 0755), 0);
    EXPECT_EQ(vconf_set_int("db/k", 1), VCONF_OK);
    ASSERT_EQ(chmod((m_area + "/k").c_str(), 0600), 0);
    const auto beUser = [&] { becomeNobody(m_folder + "/home"); };
    apart([&] {
        beUser();
        EXPECT_EQ(vconf_get_type("db/k"), VCONF_TYPE_NONE);
        EXPECT_EQ(errno, EACCES);
        EXPECT_EQ(vconf_set_int("db/k", 2), VCONF_OK) << "the folder is the user's";
        EXPECT_EQ(vconf_get_type("db/k"), VCONF_TYPE_INT);
        EXPECT_EQ(modeOf(m_area + "/k"), 0600U);
    });
    fs::remove_all(drafts());
    ASSERT_EQ(mkdir(drafts().c_str(), 0755), 0); // root's, as an older writer made it
    apart([&] {
        beUser();
        EXPECT_EQ(vconf_set_int("db/k", 3), VCONF_OK);
    });
}

TEST_F(ASharedStore, RefusesAWriterWhoMayNotAndLeavesNothing)
{
    ASSERT_EQ(vconf_set_str("db/k", "old"), VCONF_OK);
    apart([&] {
        becomeNobody(m_folder);
        ASSERT_EQ(chmod(m_area.c_str(), 0500), 0);
        EXPECT_EQ(vconf_set_str("db/k", "new"), VCONF_ERROR);
        EXPECT_EQ(errno, EACCES);
        EXPECT_EQ(vconf_unset("db/k"), VCONF_ERROR);
        EXPECT_EQ(text("db/k"), "old");
        EXPECT_EQ(namesIn(drafts()), Words {});
        ASSERT_EQ(chmod(m_area.c_str(), 0300), 0);
        const auto ignored = [](const char*, void*) {};
        EXPECT_EQ(vconf_list("", ignored, nullptr), VCONF_ERROR);
        EXPECT_EQ(errno, EACCES);
        EXPECT_EQ(vconf_list("memory/", ignored, nullptr), 0) << "not asked about";
        chmod(m_area.c_str(), 0700);
    });
}
