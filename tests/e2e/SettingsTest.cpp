// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A settings store that cannot be written must not take the viewer's way out with it.
#include "Cards.h"
#include "TvTest.h"

namespace {

namespace fs = std::filesystem;

class ASettingsStore : public tv::TvTest { };

TEST_F(ASettingsStore, ThatCannotBeWrittenLeavesTheStopToTheDaemon)
{
    if (!tv::TvBox::mayMount())
        GTEST_SKIP() << "mounting is not permitted here";
    // Only the program cannot write there.
    const fs::path folders[] = {box.folders.state(), box.folders.runtime() / "memory"};
    std::string script;
    for (const fs::path& folder : folders) {
        fs::create_directories(folder);
        script.append("mount --bind ").append(folder).append(" ").append(folder).append(" && ");
        script.append("mount -o remount,bind,ro ").append(folder).append(" && ");
    }
    box.mountFirst(script + "true");
    ASSERT_TRUE(box.settings.setInt(tv::kStartMode, 0));
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show(tv::kPinRequest));
    const size_t mark = box.program->mark();
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_TRUE(box.program->logsInOrder(
        {"Close Button Clicked", "Failed to set memory/menu/network/tessel_ocf_ready",
            "Close Popups, stop Tessel, exit from App", "Stop Tessel", "In CTesselUI::OnTerminate"},
        mark));
    EXPECT_FALSE(box.program->logged("Stopping Tessel", mark)) << "that line is for a key that was written";
    EXPECT_EQ(box.daemon->calls().back(), "StopTessel true false");
    EXPECT_EQ(box.settings.getInt(tv::kStartMode), 0);
    EXPECT_FALSE(exists(box.folders.appStatus(tv::kPackage)));
    EXPECT_TRUE(box.screenIsPlain());
}

} // namespace
