// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Catalogues that are cut, or whose bytes were changed: what is taken for sound serves the C library.
#include "Folders.h"
#include "app/Catalogue.h"

#include <gtest/gtest.h>

#include <cstring>
#include <libintl.h>
#include <random>

namespace {

using orbis::app::faultOfCatalogue;

const std::string kGerman = tv::readFile(CATALOGUES "/de/LC_MESSAGES/org.orbis.tessel-UI.mo");

TEST(ADamagedCatalogue, IsFoundOutAtEveryLength)
{
    ASSERT_EQ(faultOfCatalogue(kGerman), "");
    for (size_t length = 0; length < kGerman.size(); ++length)
        ASSERT_NE(faultOfCatalogue(kGerman.substr(0, length)), "")
            << length << " bytes of " << kGerman.size();
}

/// What is wrong with the check ends or holds this process.
TEST(ADamagedCatalogue, ThatIsTakenForSoundServesTheLibrary)
{
    const tv::Folders folders;
    const auto place = folders.root() / "xx" / "LC_MESSAGES";
    std::filesystem::create_directories(place);
    std::mt19937 random(8);
    constexpr size_t kTries = 1000;
    size_t sound = 0;
    setenv("LANGUAGE", "xx", 1);
    for (size_t i = 0; i < kTries; ++i) {
        std::string bytes = kGerman;
        const size_t at =
            random() % (i % 2 == 0 ? 1000 : bytes.size()); // where the offsets are, and anywhere
        bytes[at] = static_cast<char>(bytes[at] ^ (1U << random() % 8));
        if (!faultOfCatalogue(bytes).empty())
            continue;
        ++sound;
        const std::string domain = "try-" + std::to_string(i);
        tv::writeFile(place / (domain + ".mo"), bytes);
        bindtextdomain(domain.c_str(), folders.root().c_str());
        bind_textdomain_codeset(domain.c_str(), "UTF-8");
        for (const char* id : {"", "SID_PIN", "TV_SID_ENTER_PIN_UR_PH", "no such id", "~"})
            EXPECT_GE(strlen(dgettext(domain.c_str(), id)), 0U);
    }
    setenv("LANGUAGE", "en", 1);
    EXPECT_GT(sound, 0U) << "nothing was tried: a changed letter is no fault";
    EXPECT_LT(sound, kTries / 2);
}

} // namespace
