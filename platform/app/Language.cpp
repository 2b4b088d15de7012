#include "app/Language.h"

#include "app/ApplicationId.h"
#include "vconf.h"

#include <Elementary.h>

#include <libintl.h>

#include <algorithm>
#include <cctype>
#include <clocale>
#include <cstdlib>
#include <memory>
#include <string>
#include <string_view>

/// The C library's count of catalogue changes: it forgets cached translations when this moves.
extern "C" int _nl_msg_cat_cntr;

namespace orbis::app {

namespace {

constexpr const char* kLanguageKey = "db/menu_widget/language";

/// Languages written from right to left.
constexpr std::string_view kRightToLeft[] = {"ur", "fa", "ar", "he"};

bool isRightToLeft(std::string_view language)
{
    const std::string_view name = language.substr(0, language.find_first_of("_.@"));
    for (std::string_view candidate : kRightToLeft) {
        if (name == candidate)
            return true;
    }
    return false;
}

/// Catalogues are found through LANGUAGE alone, but only outside the "C" locale; the language's own locale
/// need not be generated on the machine.
void leaveCLocale()
{
    const char* current = setlocale(LC_ALL, "");
    const std::string_view name = current ? current : "C";
    if (name == "C" || name == "POSIX")
        setlocale(LC_ALL, "C.UTF-8");
}

/// What the environment said before the first change made here.
std::string languageOfEnvironment()
{
    if (const char* languages = getenv("LANGUAGE"); languages && *languages)
        return languages;
    const char* locale = setlocale(LC_MESSAGES, nullptr);
    const std::string_view name = locale ? locale : "";
    const bool neutral = name.substr(0, name.find('.')) == "C" || name == "POSIX";
    return neutral ? "" : std::string {name};
}

/// @return the viewer's choice, else the environment's, for instance "de_DE"; "" for none
std::string chosenLanguage()
{
    static const std::string s_environment = languageOfEnvironment();
    const std::unique_ptr<char, decltype(&free)> setting {vconf_get_str(kLanguageKey), free};
    const std::string choice = setting && *setting ? setting.get() : s_environment;
    return choice.substr(0, choice.find('.'));
}

} // namespace

void applyLanguage()
{
    leaveCLocale();
    const std::string language = chosenLanguage();
    // Without a fallback of its own, gettext would show the id of a text that the language lacks.
    setenv("LANGUAGE", language.empty() ? "en" : (language + ":en").c_str(), 1);
    ++_nl_msg_cat_cntr;
    elm_config_mirrored_set(isRightToLeft(language));
}

std::string languageOfTexts()
{
    constexpr std::string_view kField = "\nLanguage: ";
    // The id is also the domain of the texts.
    const std::string header = orbis_app_id ? dgettext(orbis_app_id, "") : "";
    const char* chosen = getenv("LANGUAGE");
    std::string language = chosen ? chosen : "";
    if (const size_t at = header.find(kField); at != std::string::npos)
        language = header.substr(at + kField.size());
    language.resize(std::min(language.find_first_of(":.@\n"), language.size()));
    for (char& c : language)
        c = c == '_' ? '-' : static_cast<char>(tolower(static_cast<unsigned char>(c)));
    return language.empty() ? "en" : language;
}

} // namespace orbis::app
