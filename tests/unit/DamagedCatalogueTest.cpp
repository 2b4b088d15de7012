/// Catalogues that are cut, or whose bytes were changed: what is taken for sound serves the C library.
#include "Folders.h"
#include "app/Catalogue.h"

#include <gtest/gtest.h>

#include <cstring>
#include <libintl.h>
#include <random>
#include <unistd.h>

namespace {

using orbis::app::faultOfCatalogue;

std::string german()
{
    return tv::readFile(CATALOGUES "/de/LC_MESSAGES/org.orbis.tessel-UI.mo");
}

TEST(ADamagedCatalogue, IsFoundOutAtEveryLength)
{
    const std::string whole = german();
    ASSERT_EQ(faultOfCatalogue(whole), "");
    for (size_t length = 0; length < whole.size(); ++length)
        ASSERT_NE(faultOfCatalogue(whole.substr(0, length)), "") << length << " bytes of " << whole.size();
}

/// Asks the C library for texts of each catalogue, and ends the process.
[[noreturn]] void readAll(const std::string& folder, const std::vector<std::string>& domains)
{
    constexpr unsigned kLimit = 20; // seconds
    alarm(kLimit);
    setenv("LANGUAGE", "xx", 1);
    for (const std::string& domain : domains) {
        fprintf(stderr, "%s\n", domain.c_str());
        bindtextdomain(domain.c_str(), folder.c_str());
        bind_textdomain_codeset(domain.c_str(), "UTF-8");
        for (const char* id : {"", "SID_PIN", "SID_CANCEL", "COM_SID_OK", "TV_SID_ENTER_PIN_UR_PH",
                 "no such id", "~", "A", "TV_SID_TESSEL_MIX_CONNECTED_DEVICE"})
            EXPECT_GE(strlen(dgettext(domain.c_str(), id)), 0U);
    }
    _exit(0);
}

TEST(ADamagedCatalogue, ThatIsTakenForSoundEndsNoProcess)
{
    const tv::Folders folders;
    const auto place = folders.root() / "xx" / "LC_MESSAGES";
    std::filesystem::create_directories(place);
    const std::string whole = german();
    std::mt19937 random(8);
    const auto any = [&](size_t bound) {
        return std::uniform_int_distribution<size_t>(0, bound - 1)(random);
    };
    constexpr size_t kTries = 1000;
    std::vector<std::string> sound;
    for (size_t i = 0; i < kTries; ++i) {
        std::string bytes = whole;
        // Where the offsets are, and anywhere.
        const size_t at = any(i % 2 == 0 ? 1000 : bytes.size());
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << any(8)));
        if (!faultOfCatalogue(bytes).empty())
            continue;
        sound.push_back("byte-" + std::to_string(at) + "-try-" + std::to_string(i));
        tv::writeFile(place / (sound.back() + ".mo"), bytes);
    }
    EXPECT_GT(sound.size(), 0U) << "nothing was tried: a changed letter is no fault";
    EXPECT_LT(sound.size(), kTries / 2);
    EXPECT_EXIT(readAll(folders.root(), sound), testing::ExitedWithCode(0), "")
        << "the last one that is named above";
}

} // namespace
