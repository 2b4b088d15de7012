// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The message catalogues: each language says everything, and each region finds a language.
#include "Fixtures.h"
#include "Folders.h"
#include "Paths.h"
#include "app/Language.h"
#include "vconf.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <libintl.h>
#include <map>
#include <regex>
#include <set>

extern "C" int _nl_msg_cat_cntr;

namespace {

using Texts = std::map<std::string, std::string>;

class ACatalogue : public ToolkitTest {
protected:
    void SetUp() override
    {
        ToolkitTest::SetUp();
        bindtextdomain(TesselUI::kTextDomain, TesselUI::kLocaleFolder);
    }

    void TearDown() override
    {
        textsFor("en");
        ToolkitTest::TearDown();
    }

    /// @return the texts, by id, of all ids that the English catalogue has
    static Texts currentTexts()
    {
        static const std::regex s_id("msgid \"(.+)\"");
        const std::string catalogue = tv::readFile(ENGLISH_CATALOGUE);
        Texts result;
        for (std::sregex_iterator match(catalogue.begin(), catalogue.end(), s_id), end; match != end; ++match)
            result[(*match)[1]] = dgettext(TesselUI::kTextDomain, (*match)[1].str().c_str());
        return result;
    }
    /// @return what the language's catalogue says; what it lacks is its id
    static Texts textsOf(const std::string& language)
    {
        setenv("LANGUAGE", language.c_str(), 1);
        ++_nl_msg_cat_cntr;
        return currentTexts();
    }
    /// @return what the viewer of a TV with this setting reads
    static Texts textsFor(const std::string& setting)
    {
        EXPECT_EQ(vconf_set_str("db/menu_widget/language", setting.c_str()), VCONF_OK);
        orbis::app::applyLanguage();
        return currentTexts();
    }
    /// @return the placeholders; one that is not between isolates is a failure
    static std::multiset<std::string> placeholders(const std::string& text)
    {
        static const std::regex s_isolated("\u2068%[1-4]\u2069|%%");
        EXPECT_EQ(std::regex_replace(text, s_isolated, "").find('%'), std::string::npos) << text;
        return {std::sregex_token_iterator(text.begin(), text.end(), s_isolated), {}};
    }
    static auto characters(const std::string& text)
    {
        return std::count_if(text.begin(), text.end(), [](char byte) { return (byte & 0xC0) != 0x80; });
    }
};

TEST_F(ACatalogue, HasEveryTextWithItsNamesBetweenIsolates)
{
    std::set<std::string> languages;
    for (const auto& entry : std::filesystem::directory_iterator(TesselUI::kLocaleFolder))
        languages.insert(entry.path().filename());
    std::set<std::string> expected {
        "ar", "de", "en", "es", "fa", "fr", "he", "hi", "ko", "pt", "pt_BR", "ru", "tr", "ur", "zh", "zh_CN"};
    if (PSEUDO_LOCALES)
        expected.insert({"ar_XB", "en_XA"});
    EXPECT_EQ(languages, expected);

    const Texts english = textsOf("en");
    ASSERT_GT(english.size(), 20U);
    for (const std::string& language : languages) {
        for (const auto& [id, text] : textsOf(language)) {
            SCOPED_TRACE(language + " " + id + ": " + text);
            EXPECT_TRUE(text != id && !text.empty() && text.find('<') == std::string::npos);
            EXPECT_EQ(placeholders(text), placeholders(english.at(id)));
            EXPECT_TRUE(language != "en_XA" || characters(text) * 10 >= characters(english.at(id)) * 16);
        }
    }
}

TEST_F(ACatalogue, ServesTheRegionsWithoutOneOfTheirOwn)
{
    const Texts english = textsOf("en");
    const std::pair<const char*, const char*> regions[] = {{"de_AT", "de"}, {"de_DE.UTF-8", "de"},
        {"es_MX", "es"}, {"pt_PT", "pt_BR"}, {"zh_TW", "zh_CN"}, {"zh", "zh_CN"}, {"tlh_XX", "en"}};
    for (const auto& [region, language] : regions) {
        const Texts wanted = textsOf(language);
        EXPECT_EQ(textsFor(region), wanted) << region;
        EXPECT_EQ(wanted == english, language == std::string("en")) << language;
    }
}

} // namespace
