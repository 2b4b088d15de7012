/// A settings store that cannot be written, goes away or is replaced must not take the viewer's way out, or
/// the daemon's next request, with it.
#include "Cards.h"
#include "TvTest.h"

#include <fstream>
#include <sys/mount.h>

namespace {

namespace fs = std::filesystem;

/// Something mounted over a folder; taken off again with its owner.
class Mount {
public:
    Mount(const char* type, const fs::path& folder, unsigned long flags, const std::string& options)
        : m_folder(folder)
        , m_isThere(
              mount(type, folder.c_str(), type, flags, options.empty() ? nullptr : options.c_str()) == 0)
    {
    }
    ~Mount()
    {
        if (m_isThere)
            umount2(m_folder.c_str(), MNT_DETACH);
    }
    Mount(const Mount&) = delete;
    Mount& operator=(const Mount&) = delete;

    explicit operator bool() const { return m_isThere; }
    bool setReadOnly(bool readOnly) const
    {
        return mount(nullptr, m_folder.c_str(), nullptr, readOnly ? MS_REMOUNT | MS_RDONLY : MS_REMOUNT,
                   nullptr)
            == 0;
    }

private:
    fs::path m_folder;
    bool m_isThere;
};

/// Takes all the room there is in @p folder. @return the file that holds it
fs::path fillUp(const fs::path& folder)
{
    fs::path file = folder / "ballast";
    std::ofstream out(file, std::ios::binary);
    const std::string block(4096, 'x');
    while (out.write(block.data(), static_cast<std::streamsize>(block.size())).flush()) { }
    return file;
}

class ASettingsStore : public tv::TvTest {
protected:
    void askFor(const std::string& json)
    {
        const size_t mark = box.program->mark();
        ASSERT_TRUE(box.settings.setText(tv::kRequest, json));
        ASSERT_TRUE(box.program->waitForLog("parsingSuccessful[true]  root [*", mark));
    }

    static constexpr const char* kPinRequest = R"({"page":"pin","mobilename":"Anna's phone","pin":"0042"})";
};

TEST_F(ASettingsStore, ThatCannotBeWrittenLeavesTheStopToTheDaemon)
{
    const fs::path memory = box.folders.runtime() / "memory";
    fs::create_directory(memory);
    const Mount state("tmpfs", box.folders.state(), 0, "size=64k");
    const Mount volatileKeys("tmpfs", memory, 0, "size=64k");
    if (!state || !volatileKeys)
        GTEST_SKIP() << "mounting is not permitted here";
    for (const bool isFull : {false, true}) {
        SCOPED_TRACE(isFull ? "full" : "read-only");
        box.daemon->forget();
        ASSERT_TRUE(box.settings.setText(tv::kLanguage, "en_US.UTF-8"));
        ASSERT_TRUE(box.settings.setInt(tv::kStartMode, 0) && box.settings.setInt(tv::kReady, 0));
        ASSERT_TRUE(box.start());
        ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
        std::vector<fs::path> ballast;
        if (isFull)
            ballast = {fillUp(box.folders.state()), fillUp(memory)};
        else
            ASSERT_TRUE(state.setReadOnly(true) && volatileKeys.setReadOnly(true));
        const size_t mark = box.program->mark();
        display().key("Return");
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
        for (const fs::path& file : ballast)
            fs::remove(file);
        ASSERT_TRUE(state.setReadOnly(false) && volatileKeys.setReadOnly(false));
    }
}

TEST_F(ASettingsStore, ThatIsRemovedOrReplacedIsFoundAgain)
{
    box.watchScreen();
    ASSERT_TRUE(box.start());
    askFor(kPinRequest);
    ASSERT_TRUE(box.shows({tv::pinCard("Anna's phone", "0042")}));

    fs::remove_all(box.folders.state());
    askFor(R"({"page":"tnc"})");
    ASSERT_TRUE(box.shows({tv::kTermsCard}));

    const fs::path other = box.folders.root() / "other";
    fs::create_directories(other / "db");
    fs::rename(box.folders.state(), box.folders.root() / "former");
    fs::rename(other, box.folders.state());
    askFor(kPinRequest);
    ASSERT_TRUE(box.shows({tv::pinCard("Anna's phone", "0042")}));

    ASSERT_TRUE(box.setStartMode(100)) << "the other watched keys are found again, too";
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
}

} // namespace
