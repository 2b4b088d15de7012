// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The popup of the set-up's steps that need nothing but a text: PIN, terms, hints, failures, and the guide.
#pragma once

#include "NetworkPopup.h"
#include "base/EflHandles.h"

#include <string>

namespace TesselUI {

class UIManager;

/// What a PinPopup shows. The values travel from the manager.
enum TSPOPUP_TYPE {
    TS_POPUP_PIN = 0, ///< PIN and name of the connected phone
    TS_POPUP_WIFI_FAILED = 1, ///< the network set-up through the phone failed
    TS_POPUP_TNC = 2, ///< terms and conditions are handled on the phone
    TS_POPUP_AP_LIST = 3, ///< the network set-up goes on on the phone
    TS_POPUP_SSO_FAILED = 4, ///< the sign-in through the phone failed
    TS_POPUP_GUIDE = 5, ///< set up with the phone, or go on with the remote
};

/// One popup, six contents. Every content but the guide gives up after a countdown of one-second ticks and
/// asks for a stop; a button closes the popup, ends the main loop and asks for a stop, in this order. It is
/// answered once: further clicks do nothing. The
/// manager makes it, calls setMesg() and show(), and deletes it. Main loop only.
class PinPopup : public CNetworkPopup {
public:
    /// @param parent   the application's window, borrowed
    /// @param manager  borrowed, nullable
    PinPopup(Evas_Object* parent, TSPOPUP_TYPE type, UIManager* manager, Elm_Flux_Popup_Style style);
    ~PinPopup() override;

    void show() override;
    Eina_Bool t_OnTimeout(void* data) override;
    void t_Button1Clicked() override;
    void t_Button2Clicked() override;
    void t_CenterButtonClicked() override;
    void t_OnKeyDown(void* event_info) override;

    /// @param message  the PIN, shown as it stands
    void setMesg(std::string& message, std::string& mobileName);

    /// Starts the countdown, from 10 for the failures.
    void setPopUpExpirationTimer();

    void m_setContentArea(Evas_Object* content, int w, int h);
    void m_addContentArea();
    void m_addContentTopLabel(int w, int h, Elm_Flux_Textbox_Size size);
    void m_addContentBottomLabel1(int w, int h, Elm_Flux_Textbox_Size size);
    void m_addContentBottomLabel2(int w, int h, Elm_Flux_Textbox_Size size);
    void m_createBLETVNameLabel(int w, int h, Elm_Flux_Textbox_Size size);
    void m_addContentImage(std::string name, int w, int h);

private:
    struct TextRow;

    static const TextRow* rowOf(TSPOPUP_TYPE type);
    static void m_OnIdleTimeout(void* data);
    static Eina_Bool ToolTimerCB(void* data);

    Evas_Object* addLabel(int w, int h, Elm_Flux_Textbox_Size size);
    void prepareGuide();
    void showText(const TextRow& row);
    void showPinText();
    void showGuideText();
    void alignWrappedText();
    void signalHighContrast();
    void addCentreButton(const char* labelId, const char* icon);
    void markReady(const char* function);
    void tellCountdown();

    base::JobPtr m_pendingJob; ///< the deferred close of button 1
    Evas_Object* m_window; ///< borrowed
    int m_countdown = 0; ///< ticks left
    int m_wholeCountdown = 0; ///< ticks when it was shown
    std::string m_composedText;
    std::string m_spareTexts[2];
    Evas_Object* m_contentLayout = nullptr; ///< all widgets: children of the popup
    Evas_Object* m_topLabel = nullptr;
    Evas_Object* m_imageLayout = nullptr;
    Evas_Object* m_image = nullptr;
    Evas_Object* m_bottomLabel1 = nullptr;
    Evas_Object* m_bottomLabel2 = nullptr;
    Evas_Object* m_tvNameLabel = nullptr;
    TSPOPUP_TYPE m_type;
    std::string m_message;
    std::string m_mobileName;
    UIManager* m_manager; ///< borrowed
    bool m_keepFocus = false;
    bool m_isAnswered = false; ///< by a button; clicks that were queued behind it do nothing
    Ecore_Timer* m_tooltipTimer = nullptr; ///< owned; ends by itself after one tick
};

} // namespace TesselUI
