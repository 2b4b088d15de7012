// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Names and numbers that the program shares with the rest of the TV, each once: settings keys and what
/// stands in them, names on the bus, the kernel's marker.
#pragma once

namespace TesselUI {

// Settings keys. Who reads and who writes them is told in docs/settings.md.
inline constexpr const char* kStartModeKey = "db/menu/network/tessel_startmode";
inline constexpr const char* kRequestKey = "db/tessel/mobile_oobe";
inline constexpr const char* kDeviceOwnedKey = "memory/menu/network/tessel_ocf_device_owned";
inline constexpr const char* kReadyKey = "memory/menu/network/tessel_ocf_ready";
inline constexpr const char* kOobStatusKey = "db/btapp/oob_status";
inline constexpr const char* kWizardModeKey = "memory/wizard/wizard_mode";
inline constexpr const char* kWizardPageKey = "db/wizard/wizard_currentpage_name";
inline constexpr const char* kTvNameKey = "memory/tessel/ble_tvname";
inline constexpr const char* kAudioPinKey = "db/bleapp/audio_pin";
inline constexpr const char* kSecurityKeyKey = "db/bleapp/security_key";
inline constexpr const char* kLanguageKey = "db/menu_widget/language";
inline constexpr const char* kContrastKey = "db/menu/system/accessibility/highcontrast";
inline constexpr const char* kOrientationKey =
    "db/menu/onscreendisplay/display_orientation/onscreen_menu_orientation";

inline constexpr int kStartModeExit = 100; ///< written by the daemon: the program ends
inline constexpr int kStartModeStopped = 5; ///< written here: the set-up was stopped
inline constexpr int kOobStatusStopped = 6; ///< written here, together with it
inline constexpr int kOwned = 1; ///< the phone has taken ownership of the TV

// On the system bus. The object that the program shows is described in a file (see Paths.h).
inline constexpr const char* kServiceName = "com.norvale.orbis.tessel.ui";
inline constexpr const char* kDaemonName = "com.norvale.orbis.tessel.daemon";
inline constexpr const char* kDaemonPath = "/com/norvale/orbis/tessel/daemon";
inline constexpr const char* kDaemonInterface = kDaemonName;

/// The platform's process control call that marks the moment a popup appears; other kernels refuse it.
inline constexpr int kLaunchMarker = 666;

} // namespace TesselUI
