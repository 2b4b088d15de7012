// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Theme.h"

#include "dlog.h"
#include "files/WholeFile.h"
#include "flux/ForgottenMemory.h"
#include "flux/Look.h"
#include "flux/PlainTheme.h"
#include "flux/Widget.h"
#include "names/LogTag.h"
#include "names/Places.h"
#include "theme-digest.h"

#include <string>
#include <string_view>

namespace orbis::flux {

namespace {

/// A group that the theme has and nothing else.
constexpr const char* kOwnGroup = "elm/flux/dim/window";

/// The toolkit reads what it finds: a theme that is cut or has a hole shows half a popup, or ends the
/// process.
std::string faultOfTheme()
{
    return files::faultOfInstalledFile(names::kThemeFile, ORBIS_THEME_SIZE, ORBIS_THEME_DIGEST);
}

void addPlainTheme()
{
    const std::string_view bytes = plainTheme();
    Eina_File* file = eina_file_virtualize("plain look", bytes.data(), bytes.size(), EINA_FALSE);
    if (!file)
        return;
    elm_theme_extension_mmap_add(nullptr, file);
    eina_file_close(file); // the toolkit has its own reference
}

} // namespace

void ensureTheme()
{
    // Adding an extension twice is harmless, but each time makes every later look-up longer.
    if (elm_theme_group_path_find(nullptr, kOwnGroup))
        return;
    if (const std::string fault = faultOfTheme(); !fault.empty()) {
        dlog_print(DLOG_ERROR, names::kLogTag, "The widgets' theme cannot be used, popups are plain: %s: %s",
            names::kThemeFile, fault.c_str());
        addPlainTheme();
    } else {
        elm_theme_extension_add(nullptr, names::kThemeFile);
    }
}

bool hasThemeGroup(const char* group, const char* style)
{
    const std::string name = std::string {"elm/flux/"} + group + "/" + style;
    return elm_theme_group_path_find(nullptr, name.c_str()) != nullptr;
}

Evas_Object* addThemedLayout(Evas_Object* parent, const char* group, const char* style)
{
    if (!isUsable(parent))
        return nullptr;
    ensureTheme();
    Evas_Object* layout = elm_layout_add(parent);
    freeWithGroup(elm_layout_edje_get(layout));
    if (layout && elm_layout_theme_set(layout, "flux", group, style)) {
        keepDirectionOf(parent, layout);
        applyLook(layout);
        return layout;
    }
    evas_object_del(layout);
    return nullptr;
}

} // namespace orbis::flux
