// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Progress popup of the sign-in.
#pragma once

#include "CancelConfirmation.h"

#include <Elementary.h>

#include <string>

namespace TesselUI {

/// Shows that the TV signs in to the account that came from the phone, with one Cancel button and its
/// confirmation, behind which it is half-dimmed. While it exists the shared popup type is 3. Built hidden by
/// the constructor; made, shown and deleted by UIManager. Main loop only.
class CSSOPopup {
public:
    /// @param window  borrowed; null builds nothing
    CSSOPopup(Evas_Object* window, const std::string& mobileName, const std::string& loginId);
    ~CSSOPopup();
    CSSOPopup(const CSSOPopup&) = delete;
    CSSOPopup& operator=(const CSSOPopup&) = delete;

    void show();
    void create();
    /// Adds an empty layer: the window's own dimming is what dims. @return false when the layer is there
    bool createDimBase();
    bool createPopup();
    void createProgressBar();
    void destroyProgressBar();
    void setTextMobileName();
    void setTextNorvaleAccount();
    void createCancelButton();
    void destroy();
    /// Keeps the arrow keys from moving the focus off @p obj (nullable).
    void bindFocusToOneObject(Evas_Object* obj);
    /// @return a copy of at most 254 bytes behind a left-to-right override, which the caller frees; null for
    ///         null
    static char* addLTRMarker(char* text);

    // Toolkit callbacks; data is the popup.
    static void cancelBtnCB(void* data, Evas_Object* obj, void* event_info);
    static void yesBtnCB(void* data, Evas_Object* obj, void* event_info);
    static void noBtnCb(void* data, Evas_Object* obj, void* event_info);

private:
    void leaveScreen();
    Evas_Object* m_window; ///< borrowed; all other objects are owned
    std::string m_mobileName;
    std::string m_loginId;
    Evas_Object* m_contentLayout = nullptr;
    Evas_Object* m_mainLayout = nullptr;
    Evas_Object* m_popup = nullptr;
    Evas_Object* m_box = nullptr;
    Evas_Object* m_progressBar = nullptr;
    Evas_Object* m_dimBase = nullptr;
    std::string m_speechText;
    CancelQuestion m_question;
};

} // namespace TesselUI
