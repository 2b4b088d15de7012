// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What comes out of a real speech service's loudspeaker.
#include "Cards.h"
#include "Loudspeaker.h"
#include "TvTest.h"

namespace {

using tv::waitUntil;

class TheSound : public tv::TvTest { };

TEST_F(TheSound, IsAsLongAsTheTextAndStopsWithThePopup)
{
    const std::string socket = box.folders.root() / "speech";
    const tv::Loudspeaker speaker(box.folders, socket);
    box.setVariable("ORBIS_SPEECH_LOG", "");
    box.setVariable("SPEECHD_ADDRESS", "unix_socket:" + socket);
    ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 1));
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(speaker.isReady());
    EXPECT_EQ(speaker.loudTenths(), 0U);

    // Some eighty characters, of which nobody says more than thirty a second or less than six.
    const size_t begin = speaker.tenths();
    ASSERT_TRUE(box.show(tv::kAccessPointsRequest));
    ASSERT_TRUE(waitUntil([&] { return speaker.loudTenths(begin) > 0; })) << "silence";
    constexpr size_t kPause = 12; // longer than any between two sentences
    ASSERT_TRUE(speaker.fallsSilent(begin, kPause));
    const size_t loud = speaker.loudTenths(begin);
    EXPECT_TRUE(loud > 27 && loud < 130) << loud << " tenths of a second";

    const size_t second = speaker.tenths();
    ASSERT_TRUE(box.show(tv::kTermsRequest)); // the longest text
    ASSERT_TRUE(waitUntil([&] { return speaker.loudTenths(second) > 5; }));
    ASSERT_TRUE(box.request("HidePopup"));
    const size_t hidden = speaker.tenths();
    ASSERT_TRUE(speaker.fallsSilent(hidden, kPause));
    EXPECT_LT(speaker.loudTenths(hidden), 6U) << "it is read on, tenths of a second";
}

} // namespace
