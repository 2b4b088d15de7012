// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the screen reader says when a popup's button gets the focus: the popup's context and the button's
/// name at first, the name alone from then on.
#pragma once

#include "Export.h"

#include <Elementary.h>

#include <cstddef>

namespace TesselUI {

/// Size of each text of the record, bytes, the terminator included.
inline constexpr std::size_t kAccessibilityTextSize = 1000;

/// The one record of the process, shared by all buttons: each reads what was written last.
struct AccessibilityInfo {
    char text1[kAccessibilityTextSize]; ///< context, read before the button's name; may hold markup
    char text2[kAccessibilityTextSize]; ///< the button's name; may hold markup
    bool flag; ///< true: read both texts; false: the name only
};
static_assert(sizeof(AccessibilityInfo) == 2 * kAccessibilityTextSize + 1);

} // namespace TesselUI

extern "C" {

/// @return the record, made and zeroed at the first call; owned by this module. Null when memory is short
TESSEL_API TesselUI::AccessibilityInfo* getAccessibiltyObject();

/// Frees the record, if there is one.
TESSEL_API void delaccessObject();

/// Read-out callback of a widget (ELM_ACCESS_INFO).
/// @param data  the record; it becomes the process's record
/// @return a text that the caller frees, or null
TESSEL_API char* access_info_cb_widget(void* data, Evas_Object* object);

/// @param text1,text2  markup, borrowed, nullable
/// @param flag         whether text1 is read too
/// @return the plain text "text1,text2" or "text2", which the caller frees, or null
TESSEL_API char* access_cb_func(const char* text1, const char* text2, bool flag);
}
