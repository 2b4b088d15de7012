/// Catalogues that are cut, or whose bytes were changed: what is taken for sound serves the C library.
#include "Folders.h"
#include "app/Catalogue.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <libintl.h>
#include <random>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

extern "C" int _nl_msg_cat_cntr;

namespace {

using orbis::app::faultOfCatalogue;

std::string german()
{
    return tv::readFile(CATALOGUES "/de/LC_MESSAGES/org.orbis.tessel-UI.mo");
}

/// Asks the C library, in another process, for texts of a catalogue that has these bytes.
/// @return whether that process came to its end
bool servesTheLibrary(const tv::Folders& folders, const std::string& bytes)
{
    const auto folder = folders.root() / "xx" / "LC_MESSAGES";
    std::filesystem::create_directories(folder);
    tv::writeFile(folder / "damaged.mo", bytes);
    const pid_t child = fork();
    if (child == 0) {
        constexpr unsigned kLimit = 10; // seconds
        alarm(kLimit);
        for (int number : {SIGSEGV, SIGBUS})
            signal(number, SIG_DFL);
        setenv("LANGUAGE", "xx", 1);
        ++_nl_msg_cat_cntr;
        bindtextdomain("damaged", folders.root().c_str());
        bind_textdomain_codeset("damaged", "UTF-8");
        for (const char* id : {"", "SID_PIN", "SID_CANCEL", "COM_SID_OK", "TV_SID_ENTER_PIN_UR_PH",
                 "no such id", "~", "A", "TV_SID_TESSEL_MIX_CONNECTED_DEVICE"})
            std::string(dgettext("damaged", id)).size();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status);
}

TEST(ADamagedCatalogue, IsFoundOutAtEveryLength)
{
    const std::string whole = german();
    ASSERT_EQ(faultOfCatalogue(whole), "");
    for (size_t length = 0; length < whole.size(); ++length)
        ASSERT_NE(faultOfCatalogue(whole.substr(0, length)), "") << length << " bytes of " << whole.size();
}

TEST(ADamagedCatalogue, ThatIsTakenForSoundEndsNoProcess)
{
    const tv::Folders folders;
    const std::string whole = german();
    std::mt19937 random(8);
    const auto any = [&](size_t bound) {
        return std::uniform_int_distribution<size_t>(0, bound - 1)(random);
    };
    constexpr int kTries = 1000;
    int sound = 0;
    for (int i = 0; i < kTries; ++i) {
        std::string bytes = whole;
        // Where the offsets are, and anywhere.
        const size_t bound = i % 2 == 0 ? 1000 : bytes.size();
        const size_t at = any(bound);
        bytes[at] = static_cast<char>(bytes[at] ^ (1 << any(8)));
        if (faultOfCatalogue(bytes).empty()) {
            ++sound;
            ASSERT_TRUE(servesTheLibrary(folders, bytes)) << "byte " << at << ", try " << i;
        }
    }
    EXPECT_GT(sound, 0) << "nothing was tried: a changed letter is no fault";
    EXPECT_LT(sound, kTries / 2);
}

} // namespace
