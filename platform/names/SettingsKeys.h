/// The settings that the platform itself reads, by the names that the rest of the TV gave them.
#pragma once

namespace orbis::names {

/// A text, the viewer's language as a locale's name: "de_DE".
inline constexpr const char* kLanguageKey = "db/menu_widget/language";

/// Numbers, 1 for on.
inline constexpr const char* kHighContrastKey = "db/menu/system/accessibility/highcontrast";
inline constexpr const char* kScreenReaderKey = "db/menu/system/accessibility/screenreader";
inline constexpr int kOn = 1;

} // namespace orbis::names
