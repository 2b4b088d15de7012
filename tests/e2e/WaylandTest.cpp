// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The program on a Wayland compositor, where its window is never hidden.
#include "Cards.h"
#include "Sway.h"
#include "TvTest.h"
#include "Weston.h"

#include <algorithm>
#include <csignal>
#include <unistd.h>

namespace {

using tv::waitUntil;

class OnWayland : public tv::TvTest, public testing::WithParamInterface<bool> {
protected:
    /// @return memory of one kind that is the program's own, kB
    long memory(const std::string& kind) const
    {
        const std::string status = tv::readFile("/proc/" + std::to_string(box.program->pid()) + "/status");
        return std::stol(status.substr(status.find(kind + ":") + kind.size() + 1));
    }

    /// @param drawn  whether each is waited for until it has been handed over
    void showPopups(size_t count, bool drawn)
    {
        for (size_t i = 0; i < count; ++i) {
            const auto& request = tv::kRequests[i % std::size(tv::kRequests)];
            const auto before = pictures();
            ASSERT_TRUE(box.request(request.method, request.texts));
            ASSERT_TRUE(!drawn || waitUntil([&] { return pictures() > before; }));
        }
    }

    /// @return how many pictures the program has handed over
    size_t pictures()
    {
        const auto& lines = box.program->errors();
        for (; m_read < lines.size(); ++m_read)
            m_pictures += lines[m_read].find(".commit(") != std::string::npos ? 1 : 0;
        return m_pictures;
    }

    size_t m_read = 0;
    size_t m_pictures = 0;
};

/// A compositor asks for no pictures while its screen is off, and it is with a picture that the canvas lets
/// go of what was deleted.
TEST_P(OnWayland, PopupsLeaveNoMemoryBehindAlsoWhileTheScreenIsOff)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer keeps freed memory back, up to 256 MB of it";
#endif
    constexpr size_t kWarmUp = 90;
    constexpr size_t kMeasured = 150;
    constexpr long kBound = 20L * kMeasured; // kB; a popup that stays is 50 and more
    constexpr long kBuffers = 4 * 1920 * 1080 * 4 / 1024;
    const bool isOff = GetParam();
    box.setVariable("WAYLAND_DEBUG", "client"); // tells of each picture
    const tv::Weston weston(box, isOff ? 4 : 0); // one that is idle before its own shell has come up stays on
    ASSERT_TRUE(box.start());
    // Its spinner is drawn again and again, as long as anybody can see it.
    ASSERT_TRUE(box.request("ShowNetworkTest", {"Anna's phone", "Attic"}));
    const auto rests = [&] {
        const auto before = pictures();
        return tv::stays([&] { return pictures() == before; }, tv::Milliseconds(1200));
    };
    ASSERT_TRUE(!isOff || waitUntil(rests, tv::Milliseconds(30000))) << "the screen does not go off";
    showPopups(kWarmUp, !isOff);
    const long before = memory("RssAnon");
    showPopups(kMeasured, !isOff);
    EXPECT_LT(memory("RssAnon") - before, kBound) << before << " kB before";
    EXPECT_LE(memory("RssShmem"), kBuffers) << "pictures that the compositor has given back";
    EXPECT_TRUE(box.ends());
}

INSTANTIATE_TEST_SUITE_P(
    ItsScreen, OnWayland, testing::Bool(), [](const auto& isOff) { return isOff.param ? "off" : "on"; });

/// The compositor in a window of the X display, from where the keys come.
class OnWaylandTheViewer : public tv::TvTest { };

TEST_F(OnWaylandTheViewer, AnswersOnlyWhatHeHasSeen)
{
    const tv::Weston weston(box, 0, true);
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.request(tv::kGuideRequest.method, tv::kGuideRequest.texts));
    ASSERT_TRUE(box.shows({tv::kGuideCard}));
    ASSERT_TRUE(waitUntil([] { return display().givesKeysTo("Weston"); }));
    display().settledPicture();
    box.program->signal(SIGSTOP);
    for (int i = 0; i < 3; ++i)
        display().key("Return");
    tv::pass(tv::Milliseconds(500)); // the compositor passes them on
    box.program->signal(SIGCONT);
    ASSERT_TRUE(box.shows({tv::kAccessPointsCard})) << "the first press was for the guide";
    EXPECT_TRUE(waitUntil(
        [&] { return box.program->lines("I/orbis-platform: Ignored a press of Return").size() == 2; }));

    ASSERT_TRUE(box.request(tv::kPinRequest.method, tv::kPinRequest.texts));
    ASSERT_TRUE(box.shows({tv::kPinRequest.card}));
    display().settledPicture();
    display().key("Return");
    EXPECT_TRUE(endedByViewer(true));
}

/// On a compositor whose screen can change its size, and which has no keyboard.
class OnWaylandTheScreen : public tv::TvTest { };

TEST_F(OnWaylandTheScreen, MayGetAnotherSizeWithAPopupUp)
{
    if (geteuid() == 0 && !tv::TvBox::mayMount())
        GTEST_SKIP() << "the compositor refuses to run as root, which nobody may be another than here";
    const tv::Sway sway(box);
    ASSERT_TRUE(box.start());
    tv::Card card = tv::kPinRequest.card;
    card.focus.clear();
    const auto showPin = [&] {
        ASSERT_TRUE(box.request(tv::kPinRequest.method, tv::kPinRequest.texts));
        ASSERT_TRUE(box.shows({card}));
    };
    const auto digitsOf = [](const tv::Picture& picture) {
        return static_cast<double>(picture.count(tv::kPinColour));
    };
    const auto comesTo = [&](double digits) {
        return waitUntil([&] { return std::abs(digitsOf(sway.picture()) - digits) < digits / 2; });
    };
    showPin();
    const double digits = digitsOf(sway.settledPicture());
    EXPECT_GT(digits, 200);
    sway.resize(800, 600);
    constexpr double kSmaller = 800.0 / 1920 * 800 / 1920;
    EXPECT_TRUE(comesTo(digits * kSmaller)) << "not scaled, or over the edge";
    const tv::Picture small = sway.settledPicture();
    showPin();
    EXPECT_LE(sway.settledPicture().differences(small), tv::kTimePasses) << "a later one is another";
    sway.resize(1920, 1080);
    EXPECT_TRUE(comesTo(digits));
    EXPECT_TRUE(box.ends());
}

} // namespace
