/// The message catalogues: each language says everything, and each region finds a language.
#include "Fixtures.h"
#include "Paths.h"
#include "app/Language.h"
#include "vconf.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <libintl.h>
#include <map>
#include <set>

extern "C" int _nl_msg_cat_cntr;

namespace {

using Texts = std::map<std::string, std::string>;

const std::string kOpen = "\u2068"; ///< begins an isolate
const std::string kClose = "\u2069";

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
        Texts result;
        const std::string start = "msgid \"";
        std::ifstream catalogue(ENGLISH_CATALOGUE);
        for (std::string line; std::getline(catalogue, line);) {
            const std::string id = line.substr(std::min(start.size(), line.size()));
            if (line.rfind(start, 0) == 0 && id.size() > 1)
                result[id.substr(0, id.size() - 1)];
        }
        for (auto& [id, text] : result)
            text = dgettext(TesselUI::kTextDomain, id.c_str());
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
    /// @return the signs behind the percent signs; a placeholder that is not between isolates is a failure
    static std::multiset<char> placeholders(const std::string& text)
    {
        std::multiset<char> result;
        for (size_t at = text.find('%'); at != std::string::npos; at = text.find('%', at + 2)) {
            const char sign = text.c_str()[at + 1];
            result.insert(sign);
            const std::string isolated = kOpen + "%" + sign + kClose;
            const bool stands =
                at >= kOpen.size() && text.compare(at - kOpen.size(), isolated.size(), isolated) == 0;
            EXPECT_TRUE(sign == '%' || (sign >= '1' && sign <= '4' && stands)) << text;
        }
        return result;
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
