/// A failure notice that nobody answers.
#include "TvTest.h"

namespace {

using tv::waitUntil;

class AFailurePopup : public tv::TvTest { };

TEST_F(AFailurePopup, GivesUpOnTheEleventhTickAndTheProgramLivesOn)
{
    ASSERT_TRUE(box.start());
    const size_t mark = box.program->mark();
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(box.request("ShowFailedPopup", {"wifi"}));

    constexpr tv::Milliseconds kLongest {15000};
    ASSERT_TRUE(waitUntil([&] { return box.daemon->calls().size() > 1; }, kLongest));
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(box.daemon->calls().back(), "StopTessel(false, false)");
    EXPECT_GT(seconds.count(), 10.5);
    EXPECT_LT(seconds.count(), 13.0);

    ASSERT_TRUE(box.program->waitForLog("Stopping Tessel", mark));
    EXPECT_EQ(box.program->count("++PBC Timer Entered [*", mark), 11U);
    EXPECT_TRUE(box.program->logsInOrder(
        {
            "Show wifi/normal fail popup",
            "SetPopUpExpirationTimer",
            "SetPopUpExpirationTimer: set 10 seconds timer for WIFI FAILED or SSO Failed popups",
            "showWIFIFailedText popup",
            "++PBC Timer Entered [10]",
            "++PBC Timer Entered [1]",
            "++PBC Timer Entered [0]",
            "PBC Timer expires",
            "Stop Tessel",
            "Stopping Tessel",
        },
        mark));
    EXPECT_EQ(box.settings.getInt(tv::kStartMode), 5);
    EXPECT_EQ(box.settings.getInt(tv::kReady), std::nullopt) << "that key is the PIN popup's";
    EXPECT_TRUE(display().showsAnything()) << "the notice stays until the daemon decides";

    // The next request is served as if nothing had happened, and the notice's timer is over.
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    EXPECT_EQ(box.program->count("PBC Timer expires"), 1U);
    display().key("Return");
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(box.daemon->calls().back(), "StopTessel(true, false)");
    EXPECT_EQ(box.daemon->calls().size(), 3U);
}

} // namespace
