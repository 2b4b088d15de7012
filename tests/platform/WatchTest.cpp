// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"

#include <Ecore.h>
#include <memory>

class AWatch : public StoreFixture { };

TEST_F(AWatch, IsToldOnceOfWhatItSleptThrough)
{
    const Watch watch("db/k"); // a key need not exist yet
    vconf_set_int("db/k", 1);
    const Watch late("db/k", {}, Watch::also);
    EXPECT_EQ(vconf_notify_key_changed("db/k", Watch::on_changed, nullptr), VCONF_ERROR)
        << "registered twice";
    settle();
    EXPECT_EQ(late.calls(), 0) << "what was before it";
    vconf_unset("db/k");
    EXPECT_TRUE(watch.called(2)) << "removed";
    for (int i = 0; i < 100; ++i)
        vconf_set_int("db/k", i);
    vconf_set_int("db/other", 1);
    settle();
    EXPECT_EQ(watch.calls(), 3) << "a burst that the loop did not see is one change, another key's is none";
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

TEST_F(AWatch, TakesNoDescriptorForAKeyAndGivesBackEverythingAtItsEnd)
{
    ecore_main_loop_iterate();
    const Words before = namesIn("/proc/self/fd");
    for (int round = 0; round < 2; ++round) {
        std::vector<std::unique_ptr<Watch>> watches;
        for (int i = 0; i < 3000; ++i)
            watches.push_back(std::make_unique<Watch>("db/many-" + std::to_string(i)));
        const Watch memory("memory/k");
        EXPECT_LE(namesIn("/proc/self/fd").size(), before.size() + 8);
        for (const char* key : {"db/many-0", "db/many-2999"})
            vconf_set_int(key, round);
        EXPECT_TRUE(watches.front()->called() && watches.back()->called());
        EXPECT_EQ(watches.back()->end(), VCONF_OK);
        EXPECT_EQ(vconf_ignore_key_changed("db/many-2999", Watch::on_changed), VCONF_ERROR)
            << "ended already";
    }
    EXPECT_EQ(namesIn("/proc/self/fd"), before);
}
