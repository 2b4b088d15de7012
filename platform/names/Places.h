// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Where the platform's files lie.
#pragma once

namespace orbis::names {

// Installed; absolute.
inline constexpr const char* kThemeFile = ORBIS_SYSROOT "/usr/share/orbis/flux.edj";
/// One folder a language, as the C library has them; below each the catalogue kWordsFile.
inline constexpr const char* kWordsFolder = ORBIS_SYSROOT "/usr/share/orbis/locale";
inline constexpr const char* kWordsFile = "orbis-platform.mo";
/// In the place of the toolkit's own data, which are a desktop's.
inline constexpr const char* kToolkitFolder = ORBIS_SYSROOT "/usr/share/orbis/toolkit";
/// Describes the machine's fonts, and the family names that the TV's texts carry.
inline constexpr const char* kFontsFile = ORBIS_SYSROOT "/etc/fonts/fonts.conf";
inline constexpr const char* kWizard = "/usr/apps/org.orbis.wizard/bin/wizard";

// The folders that are written to, unless the environment names others.
inline constexpr const char* kStateFolder = "/var/lib/orbis"; ///< survives a reboot
inline constexpr const char* kRuntimeFolder = "/run/orbis"; ///< does not

// Below these.
inline constexpr const char* kDurableSettings = "/db"; ///< in the state folder
inline constexpr const char* kVolatileSettings = "/memory"; ///< in the runtime folder, as the others
inline constexpr const char* kStatusEntries = "/apps"; ///< one file for each application that runs
inline constexpr const char* kLaunches = "/app-control"; ///< locks, and sockets for later launches

} // namespace orbis::names
