/// A settings store that cannot be written, goes away or is replaced must not take the viewer's way out, or
/// the daemon's next request, with it.
#include "Cards.h"
#include "TvTest.h"

#include <fstream>

namespace {

namespace fs = std::filesystem;

class ASettingsStore : public tv::TvTest {
protected:
    void TearDown() override
    {
        for (const fs::path& folder : m_mounted)
            tv::outputOf({"umount", "--lazy", folder}, box.environment());
        TvTest::TearDown();
    }

    /// Mounts a small file system over the folder. @return false where that is not permitted
    bool mountOver(const fs::path& folder)
    {
        fs::create_directory(folder);
        const bool isThere = run({"mount", "-t", "tmpfs", "-o", "size=64k", "tmpfs", folder});
        if (isThere)
            m_mounted.push_back(folder);
        return isThere;
    }
    bool run(const std::vector<std::string>& command) const
    {
        return tv::outputOf(command, box.environment()).has_value();
    }

    std::vector<fs::path> m_mounted;
};

TEST_F(ASettingsStore, ThatCannotBeWrittenLeavesTheStopToTheDaemon)
{
    if (!mountOver(box.folders.state()) || !mountOver(box.folders.runtime() / "memory"))
        GTEST_SKIP() << "mounting is not permitted here";
    for (const bool isFull : {false, true}) {
        SCOPED_TRACE(isFull ? "full" : "read-only");
        ASSERT_TRUE(box.settings.setText(tv::kLanguage, "en_US.UTF-8"));
        ASSERT_TRUE(box.startAgain());
        ASSERT_TRUE(box.settings.setInt(tv::kStartMode, 0));
        ASSERT_TRUE(box.show(tv::kPinRequest));
        for (const fs::path& folder : m_mounted) {
            ASSERT_TRUE(isFull || run({"mount", "-o", "remount,ro", folder}));
            std::ofstream ballast(isFull ? folder / "ballast" : "/dev/null");
            while (isFull && ballast << std::string(4096, 'x') << std::flush) { }
        }
        const size_t mark = box.program->mark();
        EXPECT_TRUE(box.press({"Return"}));
        EXPECT_TRUE(box.program->endsWith(0));
        EXPECT_TRUE(box.program->logsInOrder(
            {"Close Button Clicked", "Failed to set memory/menu/network/tessel_ocf_ready",
                "Close Popups, stop Tessel, exit from App", "Stop Tessel", "In CTesselUI::OnTerminate",
                "In CTesselUI::Main after loop"},
            mark));
        EXPECT_FALSE(box.program->logged("Stopping Tessel", mark))
            << "that line is for a key that was written";
        EXPECT_EQ(box.daemon->calls().back(), "StopTessel(true, false)");
        EXPECT_EQ(box.settings.getInt(tv::kStartMode), 0)
            << "half a value, or none, took the old one's place";
        EXPECT_FALSE(box.folders.appStatus(tv::kPackage));
        EXPECT_TRUE(box.screenIsPlain());
        for (const fs::path& folder : m_mounted)
            ASSERT_TRUE(run({"mount", "-o", "remount,rw", folder}));
    }
}

TEST_F(ASettingsStore, ThatIsRemovedOrReplacedIsFoundAgain)
{
    const auto shows = [&](const char* json, const tv::Card& card) {
        return box.settings.setText(tv::kRequest, json) && box.shows({card});
    };
    constexpr const char* kPin = R"({"page":"pin","mobilename":"Anna's phone","pin":"0042"})";
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(shows(kPin, tv::kPinRequest.card));
    fs::remove_all(box.folders.state());
    ASSERT_TRUE(shows(R"({"page":"tnc"})", tv::kTermsCard));

    const fs::path other = box.folders.root() / "other";
    fs::create_directories(other / "db");
    fs::rename(box.folders.state(), box.folders.root() / "former");
    fs::rename(other, box.folders.state());
    ASSERT_TRUE(shows(kPin, tv::kPinRequest.card));

    ASSERT_TRUE(box.setStartMode(100)) << "the other watched keys are found again, too";
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
}

} // namespace
