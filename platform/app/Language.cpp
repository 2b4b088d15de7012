#include "app/Language.h"

#include "vconf.h"

#include <Elementary.h>

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

} // namespace

void applyLanguage()
{
    leaveCLocale();
    const std::unique_ptr<char, decltype(&free)> setting {vconf_get_str(kLanguageKey), free};
    if (!setting || !*setting)
        return;
    const std::string_view language = setting.get();
    const std::string name {language.substr(0, language.find('.'))};
    setenv("LANGUAGE", (name + ":en").c_str(), 1);
    ++_nl_msg_cat_cntr;
    elm_config_mirrored_set(isRightToLeft(language));
}

} // namespace orbis::app
