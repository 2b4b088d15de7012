// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The names by which the setup daemon and the UI know each other, and the settings keys between them.
#pragma once

namespace DaemonSim {

inline constexpr char kDaemonName[] = "com.norvale.orbis.tessel.daemon"; ///< bus name and interface
inline constexpr char kDaemonPath[] = "/com/norvale/orbis/tessel/daemon";
inline constexpr char kDaemonInterfaceXml[] = R"(<node>
  <interface name="com.norvale.orbis.tessel.daemon">
    <method name="ServerStarted">
      <arg name="started" type="b" direction="in"/>
      <arg name="result" type="i" direction="out"/>
    </method>
    <method name="StopTessel">
      <arg name="first" type="b" direction="in"/>
      <arg name="second" type="b" direction="in"/>
      <arg name="result" type="i" direction="out"/>
    </method>
  </interface>
</node>)";

inline constexpr char kUiName[] = "com.norvale.orbis.tessel.ui"; ///< bus name and interface
inline constexpr char kUiPath[] = "/com/norvale/orbis/tessel/ui";

inline constexpr char kStartModeKey[] = "db/menu/network/tessel_startmode";
inline constexpr int kStartModeEnd = 100; ///< tells the UI to leave
inline constexpr char kDeviceOwnedKey[] = "memory/menu/network/tessel_ocf_device_owned";
inline constexpr int kDeviceOwned = 1; ///< the phone has taken ownership of the TV
inline constexpr char kRequestKey[] = "db/tessel/mobile_oobe"; ///< takes a popup request as JSON

// What a log tells of the TV around the program.
inline constexpr char kLanguageKey[] = "db/menu_widget/language";
inline constexpr char kContrastKey[] = "db/menu/system/accessibility/highcontrast";
inline constexpr char kTvNameKey[] = "memory/tessel/ble_tvname";
inline constexpr char kWizardModeKey[] = "memory/wizard/wizard_mode";

} // namespace DaemonSim
