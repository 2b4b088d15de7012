// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the platform itself says, in the languages of the program's texts.
#include "Fixtures.h"
#include "Folders.h"
#include "app/Catalogue.h"
#include "app/Language.h"
#include "app/Words.h"
#include "vconf.h"

#include <libintl.h>
#include <random>
#include <set>

namespace {

namespace fs = std::filesystem;
using orbis::app::wordsOf;

const std::vector<std::pair<const char*, std::vector<int>>> kWords {
    {"Button.", {}}, {"Button, %1 of %2.", {1, 2}}, {"Still working.", {}}, {"Closes in %1 seconds.", {10}}};

std::set<std::string> languagesIn(const fs::path& folder)
{
    std::set<std::string> languages;
    for (const auto& entry : fs::directory_iterator(folder))
        languages.insert(entry.path().filename());
    return languages;
}

class ThePlatformsWords : public ToolkitTest {
protected:
    void TearDown() override
    {
        use("en");
        ToolkitTest::TearDown();
    }
    static void use(const std::string& language)
    {
        vconf_set_str("db/menu_widget/language", language.c_str());
        orbis::app::applyLanguage();
    }
};

TEST_F(ThePlatformsWords, AreThereInEachLanguageOfTheTextsWithTheirNumbers)
{
    const std::set<std::string> languages = languagesIn(WORDS);
    EXPECT_EQ(languages, languagesIn(CATALOGUES));
    EXPECT_GE(languages.size(), 16U);
    for (const std::string& language : languages) {
        use(language);
        SCOPED_TRACE(language);
        for (const auto& [id, numbers] : kWords) {
            const std::string words = wordsOf(id, numbers);
            EXPECT_EQ(words.find('%'), std::string::npos) << words;
            for (const int number : numbers)
                EXPECT_NE(words.find(std::to_string(number)), std::string::npos) << words;
            const bool isTranslated = language != "en" && language != "ar_XB"; // which is English backwards
            EXPECT_EQ(words.find(std::string(id).substr(0, 5)) == std::string::npos, isTranslated) << words;
        }
    }
    const std::pair<const char*, const char*> regions[] = {{"pt_PT", "Botão."}, {"zh_TW", "按钮。"},
        {"de_AT", "Schaltfläche."}, {"tlh_XX", "Button."}, {"ur_PK", "بٹن۔"}};
    for (const auto& [region, words] : regions) {
        use(region);
        EXPECT_EQ(wordsOf("Button."), words);
    }
    EXPECT_EQ(wordsOf("no such words"), "no such words");
}

TEST(ACatalogueOfThePlatforms, ThatIsDamagedIsNotReadOutsideOfItself)
{
    const std::string sound = tv::readFile(fs::path(WORDS) / "fr" / "LC_MESSAGES" / "orbis-platform.mo");
    EXPECT_EQ(orbis::app::textOfCatalogue(sound, "Button."), "Bouton.");
    std::mt19937 random(11);
    size_t read = 0;
    for (size_t i = 0; i < 4 * sound.size(); ++i) {
        std::string bytes = sound.substr(0, i < sound.size() ? i : std::string::npos);
        if (i >= sound.size())
            bytes[random() % bytes.size()] ^= static_cast<char>(1U << random() % 8);
        read += orbis::app::textOfCatalogue(bytes, "Button.") == "Bouton." ? 1 : 0;
    }
    EXPECT_GT(read, sound.size()) << "a changed letter elsewhere is no matter";
    EXPECT_LT(read, 4 * sound.size());
}

} // namespace
