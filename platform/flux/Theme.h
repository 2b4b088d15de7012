// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The widgets' theme.
#pragma once

#include <Elementary.h>

namespace orbis::flux {

/// Makes the widgets' theme known to the toolkit; the first call since the toolkit's start does the work.
/// When the installed theme is missing or damaged, that is said in the log, and the plain look of the library
/// is used.
void ensureTheme();

/// @return whether the theme has the group "elm/flux/<group>/<style>"
bool hasThemeGroup(const char* group, const char* style);

/// Makes an Elementary layout of the theme group "elm/flux/<group>/<style>".
/// @return null when the parent is null or the theme has no such group
Evas_Object* addThemedLayout(Evas_Object* parent, const char* group, const char* style);

} // namespace orbis::flux
