#include "StoreFixture.h"

#include <Ecore.h>
#include <filesystem>
#include <memory>

namespace fs = std::filesystem;

class AWatch : public StoreFixture { };

TEST_F(AWatch, HearsEveryKindOfChangeFromTheLoopOnly)
{
    const Watch watch("db/k");
    ASSERT_TRUE(watch.active()) << "a key need not exist yet";
    vconf_set_int("db/k", 1);
    EXPECT_EQ(watch.calls(), 0) << "called from inside a write";
    EXPECT_TRUE(watch.called(1));
    vconf_set_int("db/k", 1);
    EXPECT_TRUE(watch.called(2)) << "the same value again";
    vconf_unset("db/k");
    EXPECT_TRUE(watch.called(3)) << "removed";
    for (int i = 0; i < 100; ++i)
        vconf_set_int("db/k", i);
    settle();
    EXPECT_EQ(watch.calls(), 4) << "a burst that the loop did not see is one change";
    vconf_set_int("db/other", 1);
    settle();
    EXPECT_EQ(watch.calls(), 4) << "another key";
}

TEST_F(AWatch, StartsFromTheValueOfItsRegistration)
{
    const Watch early("db/k");
    vconf_set_int("db/k", 1);
    const Watch late("db/k", {}, Watch::also);
    EXPECT_EQ(vconf_notify_key_changed("db/k", Watch::on_changed, nullptr), VCONF_ERROR)
        << "registered twice";
    settle();
    EXPECT_EQ(early.calls(), 1);
    EXPECT_EQ(late.calls(), 0);
    vconf_set_int("db/k", 1);
    EXPECT_TRUE(early.called(2) && late.called(1));
}

TEST_F(AWatch, MayEndItselfAndOthersAndBeginNewOnesInACallback)
{
    std::unique_ptr<Watch> added;
    Watch* other = nullptr;
    Watch* self = nullptr;
    Watch first("db/k", [&] {
        EXPECT_EQ(other->end(), VCONF_OK);
        EXPECT_EQ(self->end(), VCONF_OK);
        added = std::make_unique<Watch>("db/k");
        vconf_set_int("memory/from-callback", 5);
    });
    Watch second("db/k", {}, Watch::also);
    other = &second;
    self = &first;
    vconf_set_int("db/k", 1);
    EXPECT_TRUE(first.called());
    settle();
    vconf_set_int("db/k", 2);
    ASSERT_TRUE(added && added->active());
    EXPECT_TRUE(added->called());
    EXPECT_EQ(first.calls(), 1);
    EXPECT_EQ(second.calls(), 0) << "ended before its turn";
    EXPECT_EQ(added->calls(), 1) << "only what came after it began";
    EXPECT_EQ(vconf_get_type("memory/from-callback"), VCONF_TYPE_INT);
}

TEST_F(AWatch, MayRunTheLoopInACallback)
{
    int depth = 0;
    Watch* inner = nullptr;
    const Watch outer("db/k", [&] {
        if (++depth > 1)
            return;
        vconf_set_int("db/k", 2);
        EXPECT_TRUE(runUntil([&] { return depth == 2 && inner->calls() == 1; }));
    });
    Watch last("db/k", {}, Watch::also);
    inner = &last;
    vconf_set_int("db/k", 1);
    EXPECT_TRUE(outer.called(2));
    settle();
    EXPECT_EQ(last.calls(), 1) << "told of its pending change once";
}

TEST_F(AWatch, FollowsAFolderThatGoesAndComes)
{
    const Watch watch("db/k");
    vconf_set_int("db/k", 1);
    ASSERT_TRUE(watch.called(1));
    fs::remove_all(state()); // with the folder above it
    ASSERT_TRUE(watch.called(2)) << "the folder's end removes the key";
    EXPECT_FALSE(fs::exists(state())) << "whoever removes a folder does so in peace";
    fs::create_directories(state() + "/db");
    settle();
    vconf_set_int("db/k", 3);
    ASSERT_TRUE(watch.called(3));
    fs::rename(state(), m_folder + "/moved"); // nothing happens in the folder itself
    ASSERT_TRUE(watch.called(4));
    writeFile(m_folder + "/moved/db/k", "int\n9");
    settle();
    EXPECT_EQ(watch.calls(), 4) << "the old folder no longer counts";
}

TEST_F(AWatch, GivesBackEverythingAtItsEnd)
{
    vconf_set_int("db/k", 1);
    vconf_set_int("memory/k", 1);
    ecore_main_loop_iterate();
    const Words before = namesIn("/proc/self/fd");
    for (int i = 0; i < 3; ++i) {
        Watch db("db/k");
        const Watch memory("memory/k");
        vconf_set_int("db/k", i);
        EXPECT_TRUE(db.called());
        EXPECT_EQ(db.end(), VCONF_OK);
        EXPECT_EQ(vconf_ignore_key_changed("db/k", Watch::on_changed), VCONF_ERROR) << "ended already";
    }
    EXPECT_EQ(namesIn("/proc/self/fd"), before);
}
