// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The settings that the platform itself reads, by the names that the rest of the TV gave them.
#pragma once

namespace orbis::names {

/// A text, the viewer's language as a locale's name: "de_DE".
inline constexpr const char* kLanguageKey = "db/menu_widget/language";

/// Numbers, 1 for on.
inline constexpr const char* kHighContrastKey = "db/menu/system/accessibility/highcontrast";
inline constexpr const char* kReducedMotionKey = "db/menu/system/accessibility/reducedmotion";
inline constexpr const char* kScreenReaderKey = "db/menu/system/accessibility/screenreader";
inline constexpr int kOn = 1;

/// A number, percent of the usual size; see kTextSizes.
inline constexpr const char* kTextSizeKey = "db/menu/system/accessibility/textsize";
inline constexpr int kTextSizes[] = {100, 130, 160}; ///< what counts; the nearest one of any other number

} // namespace orbis::names
