// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Progress popup of the network test.
#pragma once

#include "CancelConfirmation.h"

#include <Elementary.h>

#include <cstdint>
#include <string>

namespace TesselUI {

/// Shows that the TV connects to the network whose name came from the phone, with one Cancel button and its
/// confirmation. Built hidden by the constructor; made, shown and deleted by UIManager. Main loop only.
class CNetwokTestPopup {
public:
    /// @param window  borrowed; null builds nothing
    CNetwokTestPopup(Evas_Object* window, const std::string& mobileName, const std::string& apName);
    ~CNetwokTestPopup();
    CNetwokTestPopup(const CNetwokTestPopup&) = delete;
    CNetwokTestPopup& operator=(const CNetwokTestPopup&) = delete;

    void show();
    void create();
    bool createPopup();
    void createDimBase();
    void createProgressBar();
    void destroyProgressBar();
    void destroy();
    /// Gives @p obj (nullable) the focus and keeps the arrow keys from moving it.
    void bindFocusToOneObject(Evas_Object* obj);

    // Toolkit callbacks; data is the popup.
    static void cancelBtnCB(void* data, Evas_Object* obj, void* event_info);
    static void yesBtnCB(void* data, Evas_Object* obj, void* event_info);
    static void noBtnCb(void* data, Evas_Object* obj, void* event_info);
    static Eina_Bool focusTimerExpired(void* data);

    /// @return a copy of @p text with every ampersand escaped, which the caller frees; null for null
    static char* func(char* text);
    /// @return a copy of at most 254 bytes with direction marks around it, which the caller frees; null for
    ///         null
    static char* addLTRMarker(char* text);
    /// @return @p base to the power of @p exponent
    static int power(int base, int exponent);

private:
    void leaveScreen();
    bool addTexts(std::string& speech);
    void buildLayouts();
    void discardPopup();

    std::string m_mobileName;
    std::string m_apName;
    Evas_Object* m_window; ///< borrowed; all other objects are owned
    Evas_Object* m_dimBase = nullptr;
    Evas_Object* m_progressBar = nullptr;
    Evas_Object* m_contentLayout = nullptr;
    Evas_Object* m_mainLayout = nullptr;
    Evas_Object* m_popup = nullptr;
    Evas_Object* m_box = nullptr;
    Ecore_Timer* m_focusTimer = nullptr;
    Evas_Object* m_focusTarget = nullptr; ///< never set: the button has the focus as the popup's own
    std::int32_t m_focusTicks = 0;
    CancelQuestion m_question;
};

} // namespace TesselUI
