// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Surroundings.h"

#include "OutsideNames.h"
#include "vconf.h"

#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <system_error>
#include <utility>

namespace gallery {

namespace {

/// Region of a catalogue that names none; the program tells the direction of writing by "ar_" and the like.
constexpr const char* kUnknownRegion = "_ZZ";

/// A setting of the platform, in percent.
constexpr const char* kTextSizeKey = "db/menu/system/accessibility/textsize";

} // namespace

TemporaryFolder::TemporaryFolder()
{
    std::error_code error;
    std::string path = std::filesystem::temp_directory_path(error) / "tessel-gallery-XXXXXX";
    if (!error && mkdtemp(path.data()))
        m_path = path;
    else
        perror("tessel-gallery: no temporary folder");
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    if (!m_path.empty())
        std::filesystem::remove_all(m_path, ignored);
}

std::string fontsFile()
{
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return program.parent_path().parent_path() / "share/tessel/fonts/pinned.conf";
}

void setUp(const Combination& combination, const std::string& folder)
{
    const std::pair<const char*, std::string> variables[] = {
        {"ORBIS_STATE_DIR", folder + "/state"},
        {"ORBIS_RUNTIME_DIR", folder + "/runtime"},
        {"HOME", folder},
        {"XDG_RUNTIME_DIR", folder},
        {"XDG_CACHE_HOME", folder},
        {"FONTCONFIG_FILE", fontsFile()},
        {"ELM_DISPLAY", "buffer"},
        {"ELM_ENGINE", "buffer"},
        {"ELM_SCALE", std::to_string(combination.realScale())},
        {"EINA_FREEQ_BYPASS", "1"},
        // Nothing may speak while pictures are made.
        {"ORBIS_SPEECH_LOG", folder + "/speech"},
        {"LC_ALL", "C.UTF-8"},
    };
    for (const auto& [name, value] : variables)
        setenv(name, value.c_str(), 1);
    std::string language = combination.language;
    if (language.find('_') == std::string::npos)
        language += kUnknownRegion;
    vconf_set_str(TesselUI::kLanguageKey, language.c_str());
    vconf_set_int(TesselUI::kContrastKey, combination.contrast ? 1 : 0);
    vconf_set_str(TesselUI::kWizardModeKey, "FIRST_RUN");
    vconf_set_int(kTextSizeKey, combination.textSize);
}

} // namespace gallery
