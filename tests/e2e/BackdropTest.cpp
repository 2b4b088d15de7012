// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The picture behind a popup, on a screen whose compositor mixes windows. Most of it is filled by the X
/// server, and the canvas draws the rest: the two must not be told apart.
#include "Cards.h"
#include "TvTest.h"

#include <csignal>
#include <cstdlib>

namespace {

constexpr uint32_t kCardColour = 0x0E1520;

class AFilm : public tv::TvTest {
protected:
    AFilm()
    {
        // In this mode its first process ends when it works, and the file then holds the number of another.
        const auto file = box.folders.root() / "compositor";
        const auto first = display().start({"picom", "--config", "/dev/null", "--backend", "xrender", "-b",
            "--write-pid-path", file.string()});
        EXPECT_TRUE(tv::waitUntil([&] { return !first->running(); }));
        m_compositor = std::atoi(tv::readFile(file).c_str());
        EXPECT_GT(m_compositor, 0);
        const auto paint = display().start({"hsetroot", "-solid", "#808080"});
        EXPECT_TRUE(
            display().waitForPicture([](const tv::Picture& now) { return lightAround(now) == 0x80; }));
    }

    void TearDown() override
    {
        box.program.reset();
        kill(m_compositor, SIGTERM);
        display().kill(); // others are to find a plain screen
        TvTest::TearDown();
    }

    /// @return the one grey of all that lies around the cards and their shadows, -1 when there are several
    static int lightAround(const tv::Picture& picture)
    {
        constexpr size_t kWidth = 1920;
        const auto isAround = [](size_t at) {
            const size_t x = at % kWidth;
            const size_t y = at / kWidth;
            const bool isPointer = x > 1900 && y > 1060;
            return (x < 380 || x > 1540 || y < 130 || y > 950) && !isPointer;
        };
        const auto light = static_cast<int>(picture.pixels[0] & 0xFF);
        for (size_t at = 0; at < picture.pixels.size(); ++at) {
            if (isAround(at) && picture.pixels[at] != picture.pixels[0])
                return -1;
        }
        return light;
    }

    /// @return the same once a popup stands; its card must be there, whole
    static int lightAroundCard()
    {
        const tv::Picture picture = display().settledPicture();
        EXPECT_GT(picture.count(kCardColour), 200000U) << "the card is not drawn";
        EXPECT_GT(picture.count(0xEBEEF2), 500U) << "its texts are not drawn";
        return lightAround(picture);
    }

    int m_compositor = 0;
};

/// The X server draws its steps with what it has beside them.
TEST_F(AFilm, SeesTheLineOfTheTimeLeftGrowShorter)
{
    constexpr uint32_t kLine = 0x2E97C4;
    constexpr uint32_t kBelow = 0x3A4658;
    constexpr int kWhole = 60;
    constexpr int kLeft = 55;
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show(tv::kPinRequest));
    const tv::Picture first = display().picture();
    const size_t all = first.count(kLine) + first.count(kBelow);
    const std::string tick = "++PBC Timer Entered [" + std::to_string(kLeft) + "]";
    ASSERT_TRUE(tv::waitUntil([&] { return box.program->logged(tick); }));
    const tv::Picture later = display().picture();
    const double step = static_cast<double>(all) / kWhole;
    EXPECT_NEAR(static_cast<double>(later.count(kLine)), step * kLeft, 2 * step);
    EXPECT_NEAR(static_cast<double>(later.count(kLine) + later.count(kBelow)), static_cast<double>(all), 1);
}

TEST_F(AFilm, IsDimmedEvenlyBehindEveryPopup)
{
    constexpr int kDimmed = 0x80 * (255 - 158) / 255;
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show(tv::kPinRequest));
    EXPECT_NEAR(lightAroundCard(), kDimmed, 1);
    ASSERT_TRUE(box.show("ShowNetworkTest", {"Anna's phone", "Attic & Garden"}));
    EXPECT_NEAR(lightAroundCard(), kDimmed, 1);
    // A confirmation darkens once more, and takes that back.
    ASSERT_TRUE(box.press({"Return"}));
    const int covered = lightAroundCard();
    EXPECT_GE(covered, 0) << "not even";
    EXPECT_LT(covered, kDimmed - 8);
    ASSERT_TRUE(box.shows({below(tv::kNetworkTestCard), tv::confirmation("Yes")}));
    ASSERT_TRUE(box.press({"Right", "Return"}));
    ASSERT_TRUE(box.shows({tv::kNetworkTestCard}));
    EXPECT_NEAR(lightAroundCard(), kDimmed, 1);
    // The smaller card leaves nothing of the larger one.
    ASSERT_TRUE(box.show("ShowMobileGuide", {"0042"}));
    ASSERT_TRUE(box.show(tv::kPinRequest));
    const tv::Picture after = display().settledPicture();
    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(display().waitForPicture([](const tv::Picture& now) { return lightAround(now) == 0x80; }));
    ASSERT_TRUE(box.show(tv::kPinRequest));
    EXPECT_NEAR(lightAroundCard(), kDimmed, 1);
    EXPECT_LE(display().settledPicture().differences(after), tv::kTimePasses);
    // What was filled by the server is its to fill again when something was in the way.
    {
        const auto other = display().start({"xrefresh"});
        EXPECT_TRUE(tv::waitUntil([&] { return !other->running(); }));
    }
    EXPECT_NEAR(lightAroundCard(), kDimmed, 1);
}

} // namespace
