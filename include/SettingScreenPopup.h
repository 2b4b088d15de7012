// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Popup over the TV's own settings screen.
#pragma once

#include "NetworkPopup.h"

#include <string>

namespace TesselUI {

/// Says that the phone is setting the TV up, with Cancel; Cancel turns the same popup into a question with
/// Yes and No. No turns it back, Yes ends the application and asks for a stop. Built by show(); made and
/// deleted by UIManager. Main loop only.
class SettingScreenPopup : public CNetworkPopup {
public:
    /// @param parent  the application's window, borrowed
    SettingScreenPopup(Evas_Object* parent, Elm_Flux_Popup_Style style);
    ~SettingScreenPopup() override;

    void show() override;

    void m_addContentArea(std::string text);
    void m_AddCancelButton();
    void m_RemoveCancelButton();
    void m_AddYesNoButton();
    void m_RemoveYesNoButton();

    // Toolkit callbacks; data is the popup, and null is survived.
    static void m_OnCancelButtonClicked(void* data, Evas_Object* obj, void* event_info);
    static void m_OnYesButtonClicked(void* data, Evas_Object* obj, void* event_info);
    static void m_OnNoButtonClicked(void* data, Evas_Object* obj, void* event_info);

private:
    void removeButton(Evas_Object*& button, Evas_Smart_Cb clicked);
    void focusButton(Evas_Object* button, int slot);
    void setText(const char* id);

    Evas_Object* m_window; ///< borrowed; all other objects are children of the popup
    std::string m_contentText;
    Evas_Object* m_cancelButton = nullptr;
    Evas_Object* m_yesButton = nullptr;
    Evas_Object* m_noButton = nullptr;
    Evas_Object* m_contentLayout = nullptr;
    Evas_Object* m_textBox = nullptr;
    bool m_isAnswered = false; ///< with Yes; clicks that were queued behind it do nothing
};

} // namespace TesselUI
