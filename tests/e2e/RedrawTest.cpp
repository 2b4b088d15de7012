/// What is drawn again while nothing happens: a television's processor is slow, and the film behind has to
/// run.
#include "TvTest.h"

#include <sstream>

namespace {

using tv::Geometry;

constexpr const char* kContrast = "db/menu/system/accessibility/highcontrast";

class APopupThatIsLeftAlone : public tv::TvTest {
protected:
    /// @return what is drawn on the screen within these seconds, once the popup stands
    std::vector<Geometry> drawnIn(const std::string& seconds)
    {
        constexpr tv::Milliseconds kLongerThanItsMotion {600};
        tv::stays([] { return true; }, kLongerThanItsMotion);
        const auto probe = display().start({tv::TvBox::binary("damage-probe"), seconds});
        EXPECT_EQ(probe->waitForExit(), 0);
        std::vector<Geometry> drawn;
        for (const std::string& line : probe->output()) {
            Geometry area;
            if (std::istringstream {line} >> area.x >> area.y >> area.width >> area.height)
                drawn.push_back(area);
        }
        EXPECT_FALSE(probe->output().empty()) << "the probe did not look";
        return drawn;
    }
};

TEST_F(APopupThatIsLeftAlone, IsNotDrawnAgainWhileItsSecondsPass)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    EXPECT_EQ(drawnIn("2.5"), std::vector<Geometry> {});
}

TEST_F(APopupThatIsLeftAlone, DrawsNothingButItsTurningSpinner)
{
    constexpr int kTile = 8; // what the canvas rounds to, pixels
    constexpr int kSpinner = 12 * 8 + kTile; // layout units, each 8 pixels
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowNetworkTest", {"Anna's phone", "Lakeside"}));
    const auto drawn = drawnIn("1.5");
    ASSERT_GT(drawn.size(), 10U) << "the spinner stands still";
    Geometry all = drawn.front();
    for (const Geometry& area : drawn) {
        const int right = std::max(all.x + all.width, area.x + area.width);
        const int bottom = std::max(all.y + all.height, area.y + area.height);
        all = {std::min(all.x, area.x), std::min(all.y, area.y), 0, 0};
        all.width = right - all.x;
        all.height = bottom - all.y;
    }
    EXPECT_LE(all.width, kSpinner) << all;
    EXPECT_LE(all.height, kSpinner) << all;
}

TEST_F(APopupThatIsLeftAlone, HasNoMotionInHighContrast)
{
    ASSERT_TRUE(box.settings.setInt(kContrast, 1));
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowNetworkTest", {"Anna's phone", "Lakeside"}));
    EXPECT_EQ(drawnIn("1.5"), std::vector<Geometry> {});
}

} // namespace
