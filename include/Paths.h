// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Every absolute path of the program, once. TESSEL_SYSROOT is empty in a packaged build; a developer's build
/// puts the folder there that it fills with the same tree.
#pragma once

#ifndef TESSEL_SYSROOT
#define TESSEL_SYSROOT ""
#endif

namespace TesselUI {

/// Text domain of all user-visible texts, and the application's id.
inline constexpr const char* kTextDomain = "org.orbis.tessel-UI";

/// Compiled message catalogues, one folder a language.
inline constexpr const char* kLocaleFolder = TESSEL_SYSROOT "/usr/apps/org.orbis.tessel-UI/shared/tslocale";

/// The program's own theme groups ("dim").
inline constexpr const char* kThemeFile = TESSEL_SYSROOT "/org.orbis.tessel-UI.edj";

/// Description of the program's bus interface: object path, interface name, methods.
inline constexpr const char* kIntrospectionFile =
    TESSEL_SYSROOT "/usr/apps/org.orbis.tessel-UI/bin/org.orbis.tessel-UI.interface.xml";

/// The program's own pictures.
inline constexpr const char* kImageFolder = TESSEL_SYSROOT "/usr/apps/org.orbis.tessel-UI/res/images/";

/// Pictures that belong to the TV's theme.
inline constexpr const char* kThemeImageFolder =
    TESSEL_SYSROOT "/usr/apps/com.norvale.tv.theme-resource/shared/res/org.orbis.tessel-UI/res/tessel";

/// What the set-up wizard is told to run. It is a message to another program, which resolves it on its own
/// side, so the prefix does not apply.
inline constexpr const char* kWizardFlowUri = "/usr/apps/org.orbis.tessel-UI/config/Tessel_connect.json";

} // namespace TesselUI
