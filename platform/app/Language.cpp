// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/Language.h"

#include "app/ApplicationId.h"
#include "app/Catalogue.h"
#include "base/Handles.h"
#include "dlog.h"
#include "files/WholeFile.h"
#include "names/LogTag.h"
#include "names/SettingsKeys.h"
#include "vconf.h"

#include <Elementary.h>

#include <libintl.h>

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <clocale>
#include <cstdlib>
#include <cstring>
#include <set>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// The C library's count of catalogue changes: it forgets cached translations when this moves.
extern "C" int _nl_msg_cat_cntr;

namespace orbis::app {

namespace {

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
    const base::MallocStr setting {vconf_get_str(names::kLanguageKey)};
    const std::string choice = setting && *setting ? setting.get() : s_environment;
    return choice.substr(0, choice.find('.'));
}

/// No catalogue is larger, bytes.
constexpr size_t kCatalogueLimit = size_t {4} << 20;

/// A name of a language is no longer.
constexpr size_t kLongestName = 64;

/// The language of the texts that no other has, and the one that has none.
constexpr const char* kFallback = "en";
constexpr const char* kNoLanguage = "C";

/// @return where the application's catalogues are, "" before it has said so
std::string catalogueFolder()
{
    // A domain that nobody has bound has the C library's own folder.
    const char* folder = orbis_app_id ? bindtextdomain(orbis_app_id, nullptr) : nullptr;
    const char* unbound = bindtextdomain("orbis-no-domain", nullptr);
    return folder && (!unbound || strcmp(folder, unbound) != 0) ? folder : "";
}

void sayOnce(const std::string& path, const std::string& fault)
{
    static std::set<std::string> s_said;
    if (s_said.insert(path).second)
        dlog_print(DLOG_ERROR, names::kLogTag, "A message catalogue cannot be used, its texts are %s: %s: %s",
            path.find("/" + std::string(kFallback) + "/") == std::string::npos ? "in English" : "their ids",
            path.c_str(), fault.c_str());
}

std::string pathOf(const std::string& folder, const std::string& language, const std::string& name)
{
    return folder + "/" + language + "/LC_MESSAGES/" + name;
}

/// The file of the application's own catalogues.
std::string applicationsFile()
{
    return std::string(orbis_app_id) + ".mo";
}

/// @return the first name of @p language that leads to no damaged catalogue, "" for none
std::string soundName(const std::string& folder, const std::string& language, bool& isThere)
{
    for (const std::string& name : namesOfLanguage(language)) {
        bool isSafe = true;
        for (const std::string& tried : namesOfLanguage(name)) {
            const Found found = lookAtCatalogue(folder, tried, applicationsFile());
            isSafe = isSafe && found != Found::Damaged;
            isThere = isThere || found != Found::Missing;
        }
        if (isSafe)
            return name;
    }
    return {};
}

/// @return @p languages, a list with colons between, without what leads to a damaged catalogue
std::string withoutDamaged(const std::string& folder, const std::string& languages)
{
    std::string result;
    std::istringstream list(languages);
    for (std::string language; std::getline(list, language, ':');) {
        // What is no name leads nowhere, or out of the folder.
        if (language.empty() || language.size() > kLongestName || language.find('/') != std::string::npos)
            continue;
        bool isThere = false;
        const std::string name = soundName(folder, language, isThere);
        if (!isThere && language == kFallback)
            sayOnce(pathOf(folder, language, applicationsFile()), "it is missing");
        if (!name.empty())
            result.append(result.empty() ? "" : ":").append(name);
    }
    // An empty list would mean the locale's language, whatever that is.
    return result.empty() ? kNoLanguage : result;
}

void setLanguages(const std::string& languages)
{
    setenv("LANGUAGE", languages.c_str(), 1);
    ++_nl_msg_cat_cntr;
}
int s_holds = 0;
bool s_isWaiting = false;

} // namespace

Found lookAtCatalogue(
    const std::string& folder, const std::string& language, const std::string& name, std::string* bytes)
{
    const std::string path = pathOf(folder, language, name);
    errno = 0;
    auto read = files::readInstalledFile(path, kCatalogueLimit);
    if (!read && (errno == ENOENT || errno == ENOTDIR))
        return Found::Missing;
    const std::string fault = read ? faultOfCatalogue(*read) : strerror(errno);
    if (!fault.empty()) {
        sayOnce(path, fault);
        return Found::Damaged;
    }
    if (bytes)
        *bytes = std::move(*read);
    return Found::Sound;
}

std::vector<std::string> namesOfLanguage(const std::string& language)
{
    const std::string::size_type modifier = language.find('@');
    const std::string variant = modifier == std::string::npos ? "" : language.substr(modifier);
    const std::string region = language.substr(0, modifier);
    const std::string plain = region.substr(0, region.find('_'));
    std::vector<std::string> names {language};
    for (const std::string& name : {region, plain + variant, plain}) {
        if (std::find(names.begin(), names.end(), name) == names.end())
            names.push_back(name);
    }
    return names;
}

void checkCatalogues()
{
    const std::string folder = catalogueFolder();
    const char* chosen = getenv("LANGUAGE");
    if (!folder.empty() && chosen)
        setLanguages(withoutDamaged(folder, chosen));
}

void applyLanguage()
{
    s_isWaiting = false;
    leaveCLocale();
    const std::string language = chosenLanguage();
    // Without a fallback of its own, gettext would show the id of a text that the language lacks.
    setLanguages(language.empty() ? kFallback : language + ":" + kFallback);
    checkCatalogues();
    elm_config_mirrored_set(isRightToLeft(language));
}

void changeLanguage()
{
    s_isWaiting = true;
    applyWaitingLanguage();
}

void applyWaitingLanguage()
{
    if (s_isWaiting && s_holds == 0)
        applyLanguage();
}

LanguageHold::LanguageHold()
{
    ++s_holds;
}

LanguageHold::~LanguageHold()
{
    // Not at once: the toolkit would turn round the widget that is just going.
    if (--s_holds == 0 && s_isWaiting)
        ecore_job_add([](void*) { applyWaitingLanguage(); }, nullptr);
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
    return language.empty() || language == "c" ? kFallback : language;
}

std::string catalogueOfTexts()
{
    const std::string folder = catalogueFolder();
    const char* chosen = getenv("LANGUAGE");
    std::istringstream list(chosen ? chosen : "");
    for (std::string language; std::getline(list, language, ':');) {
        if (folder.empty())
            return language;
        for (const std::string& name : namesOfLanguage(language)) {
            if (lookAtCatalogue(folder, name, applicationsFile()) == Found::Sound)
                return name;
        }
    }
    return kFallback;
}

} // namespace orbis::app
