// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The one window and the popup on it.
#pragma once

#include <Elementary.h>

#include <string>

namespace TesselUI {

class CNetwokTestPopup;
class CSSOPopup;
class PinPopup;
class SettingScreenPopup;

/// Owns the window and at most one popup of each class; each show operation first removes every popup that is
/// up. Shared by the application and its bus service; the last of them to go takes window and popups along.
/// Show operations return 0 when the popup is shown and -2 when it is not. Main loop only.
class UIManager {
public:
    UIManager();
    ~UIManager();
    UIManager(const UIManager&) = delete;
    UIManager& operator=(const UIManager&) = delete;

    /// Makes the window, binds the message catalogue and adds the theme; once.
    void createWindow();

    /// @return the window, not shown yet, owned by this object; null when there is no display
    Evas_Object* createWin();

    /// Deletes every popup. @param lowerWindow  takes the window off the screen first
    void hideAllPopup(bool lowerWindow);
    int hidePopup();

    int showPinPopup(std::string& mobileName, std::string& pin);
    int showTncPopup();
    int showApListPopup();
    int showAfterPairingPopup();
    int showNetworkTestPopup(const std::string& mobileName, const std::string& apName);
    int showSSOLoginPopup(const std::string& mobileName, const std::string& loginId);
    /// @param failedStep  "sso" for a failed sign-in; any other text for a failed network set-up
    int showFailedPopup(std::string& failedStep);
    /// Shown only while an application that drives the set-up is in front. @param pin  logged only
    int showGuidePopup(std::string& pin);

    /// @return whether the application that drives the set-up on the TV is in front
    bool IsWizardRunning();

private:
    struct Placing;

    template <typename Popup, typename Make>
    int place(const Placing& placing, Popup*& slot, Make make);
    template <typename Popup, typename Make, typename Fill>
    int place(const Placing& placing, Popup*& slot, Make make, Fill fill);

    bool m_bInitialized;
    Evas_Object* m_pWin; ///< owned
    Evas_Object* m_pBg; ///< child of the window
    CNetwokTestPopup* m_pNetworkTestPopup; ///< owned, as the other popups
    CSSOPopup* m_pSSOPopup;
    PinPopup* m_pPinPopup;
    SettingScreenPopup* m_pSettingScreenPopup;
};

} // namespace TesselUI
