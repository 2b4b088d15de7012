// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/Fonts.h"

#include "base/FontHandles.h"
#include "base/GlibHandles.h"
#include "dlog.h"
#include "files/WholeFile.h"
#include "names/LogTag.h"
#include "names/Places.h"

#include <fontconfig/fontconfig.h>
#include <glib.h>
#include <malloc.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace orbis::app {

namespace {

constexpr size_t kFontsFileLimit = size_t {1} << 20;

/// The family of the widgets' texts.
constexpr const char* kFamily = "NorvaleSans-500";

/// How long after the start the fonts are looked at, seconds.
constexpr double kCheckDelay = 1.0;

/// @return what is wrong with a description of fonts, or ""
std::string faultOfDescription()
{
    errno = 0;
    const auto text = files::readInstalledFile(names::kFontsFile, kFontsFileLimit);
    if (!text)
        return strerror(errno);
    constexpr GMarkupParser kNothing {};
    const base::MarkupParserPtr parser {
        g_markup_parse_context_new(&kNothing, static_cast<GMarkupParseFlags>(0), nullptr, nullptr)};
    const auto size = static_cast<gssize>(text->size());
    if (!g_markup_parse_context_parse(parser.get(), text->data(), size, nullptr)
        || !g_markup_parse_context_end_parse(parser.get(), nullptr))
        return "it is damaged";
    return {};
}

/// @return the names that @p family stands for: those that a description puts in its place, not those that
/// any family falls back to
std::vector<std::string> namesOf(FcConfig* config, const char* family, const base::FontPatternPtr& pattern)
{
    FcPatternAddString(pattern.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
    FcConfigSubstitute(config, pattern.get(), FcMatchPattern);
    FcDefaultSubstitute(pattern.get());
    std::vector<std::string> names;
    FcValue value {};
    FcValueBinding binding {};
    for (int i = 0; FcPatternGetWithBinding(pattern.get(), FC_FAMILY, i, &value, &binding) == FcResultMatch;
         ++i) {
        if (value.type == FcTypeString && binding != FcValueBindingWeak)
            names.emplace_back(reinterpret_cast<const char*>(value.u.s));
    }
    return names;
}

/// @return what keeps texts from their own font, or ""
std::string faultOfFonts()
{
    const base::FontConfigPtr config {FcInitLoadConfigAndFonts()};
    const base::FontPatternPtr asked {FcPatternCreate()};
    if (!config || !asked)
        return "fonts cannot be looked for";
    const std::vector<std::string> names = namesOf(config.get(), kFamily, asked);
    FcResult result = FcResultNoMatch;
    const base::FontPatternPtr found {FcFontMatch(config.get(), asked.get(), &result)};
    FcChar8* raw = nullptr;
    if (!found || FcPatternGetString(found.get(), FC_FAMILY, 0, &raw) != FcResultMatch)
        return "no font is installed, texts cannot be drawn";
    const std::string family = reinterpret_cast<const char*>(raw);
    if (std::find(names.begin(), names.end(), family) != names.end())
        return {};
    return (names.size() > 1 ? "none of its fonts is installed, texts are in "
                             : "no description of fonts names it, texts are in ")
        + family;
}

} // namespace

void chooseFonts()
{
    if (getenv("FONTCONFIG_FILE"))
        return;
    if (const std::string fault = faultOfDescription(); !fault.empty())
        dlog_print(DLOG_ERROR, names::kLogTag,
            "The description of fonts cannot be used, texts are in the machine's own: %s: %s",
            names::kFontsFile, fault.c_str());
    else
        setenv("FONTCONFIG_FILE", names::kFontsFile, 1);
}

FontCheck::FontCheck()
    : m_timer(nullptr)
{
    // What is known to be missing has been said.
    if (getenv("FONTCONFIG_FILE"))
        m_timer = ecore_timer_add(kCheckDelay, on_time, this);
}

FontCheck::~FontCheck()
{
    if (m_timer)
        ecore_timer_del(m_timer);
}

Eina_Bool FontCheck::on_time(void* data)
{
    static_cast<FontCheck*>(data)->m_timer = nullptr;
    if (const std::string fault = faultOfFonts(); !fault.empty())
        dlog_print(
            DLOG_ERROR, names::kLogTag, "The font of the texts is missing: %s: %s", kFamily, fault.c_str());
    malloc_trim(0); // the descriptions were a megabyte for a moment, as much as was needed for the start
    return ECORE_CALLBACK_CANCEL;
}

} // namespace orbis::app
