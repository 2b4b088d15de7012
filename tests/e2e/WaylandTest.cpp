/// The program on a Wayland compositor, where its window is never hidden.
#include "TvTest.h"
#include "Weston.h"

#include <algorithm>

namespace {

using tv::waitUntil;

class OnWayland : public tv::TvTest {
protected:
    static constexpr int kWarmUp = 90;
    static constexpr int kMeasured = 150;

    void SetUp() override
    {
#ifdef __SANITIZE_ADDRESS__
        GTEST_SKIP() << "the sanitizer keeps freed memory back, up to 256 MB of it";
#endif
        box.setVariable("WAYLAND_DEBUG", "client"); // tells of each picture
    }

    /// @return memory of one kind that is the program's own, kB
    long memory(const std::string& kind) const
    {
        const auto lines = tv::readLines("/proc/" + std::to_string(box.program->pid()) + "/status");
        const auto line = std::find_if(lines.begin(), lines.end(),
            [&](const std::string& one) { return one.rfind(kind + ":", 0) == 0; });
        return line == lines.end() ? -1 : std::stol(line->substr(kind.size() + 1));
    }

    /// @param drawn  whether each is waited for until it has been handed over
    void showPopups(int count, bool drawn)
    {
        struct {
            const char* method;
            std::vector<std::string> texts;
        } const requests[] = {{"ShowPinPopup", {"Anna's phone", "0042"}}, {"ShowMobileGuide", {"0042"}},
            {"ShowNetworkTest", {"Anna's phone", "Attic"}}, {"ShowSSOLoginPopup", {"Anna's phone", "anna"}},
            {"ShowFailedPopup", {"wifi"}}, {"ShowTnCPopup", {}}};
        for (int i = 0; i < count; ++i) {
            const auto& request = requests[static_cast<size_t>(i) % std::size(requests)];
            const long before = pictures();
            ASSERT_TRUE(box.request(request.method, request.texts));
            ASSERT_TRUE(!drawn || waitUntil([&] { return pictures() > before; }));
        }
    }

    /// Success when many popups leave no memory behind.
    void expectNoGrowth(bool drawn)
    {
        constexpr long kBound = 20L * kMeasured; // kB; a popup that stays is 50 and more
        constexpr long kBuffers = 4 * 1920 * 1080 * 4 / 1024;
        showPopups(kWarmUp, drawn);
        const long before = memory("RssAnon");
        showPopups(kMeasured, drawn);
        EXPECT_LT(memory("RssAnon") - before, kBound) << before << " kB before";
        EXPECT_LE(memory("RssShmem"), kBuffers) << "pictures that the compositor has given back";
        RecordProperty("growth_kB", std::to_string(memory("RssAnon") - before));
    }

    /// @return how many pictures the program has handed over
    long pictures()
    {
        for (const auto& lines = box.program->errors(); m_read < lines.size(); ++m_read) {
            const std::string& line = lines[m_read];
            if (line.find("wl_surface@") != std::string::npos && line.find(".commit(") != std::string::npos)
                ++m_pictures;
        }
        return m_pictures;
    }

private:
    size_t m_read = 0;
    long m_pictures = 0;
};

TEST_F(OnWayland, PopupsLeaveNoMemoryBehind)
{
    const tv::Weston weston(box, 0);
    ASSERT_TRUE(box.start());
    expectNoGrowth(true);
    ASSERT_TRUE(box.setStartMode(100));
    EXPECT_TRUE(box.program->endsWith(0));
}

/// A compositor asks for no pictures then, and it is with a picture that the canvas lets go of what was
/// deleted.
TEST_F(OnWayland, PopupsLeaveNoMemoryBehindWhileTheScreenIsOff)
{
    const tv::Weston weston(box, 4); // one that is idle before its own shell has come up stays on
    ASSERT_TRUE(box.start());
    // Its spinner is drawn again and again, as long as anybody can see it.
    ASSERT_TRUE(box.request("ShowNetworkTest", {"Anna's phone", "Attic"}));
    constexpr tv::Milliseconds kMoment {1200};
    constexpr tv::Milliseconds kOff {30000};
    ASSERT_TRUE(waitUntil(
        [&] {
            const long before = pictures();
            return tv::stays([&] { return pictures() == before; }, kMoment);
        },
        kOff))
        << "the screen does not go off";
    expectNoGrowth(false);
    ASSERT_TRUE(box.setStartMode(100));
    EXPECT_TRUE(box.program->endsWith(0));
}

} // namespace
