// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Base of the popups that are built on the platform's styled popup.
#pragma once

#include "DimBase.h"

#include <Elementary.h>
#include <elm_flux.h>

#include <memory>
#include <string>
#include <vector>

namespace TesselUI {

/// Owns the styled popup, up to two buttons, a timer, a tooltip and a backdrop, and turns their events into
/// its virtual t_ operations. Constructed hidden; filled by the derived class; shown with show(). hide(),
/// destroy() and the destructor may follow one another in any order, also from inside the popup's own
/// click, timer or job. Sizes are layout units. Main loop only.
class CNetworkPopup {
public:
    /// @param parent  borrowed: the window or a layout in it
    CNetworkPopup(Evas_Object* parent, Elm_Flux_Popup_Style style);
    virtual ~CNetworkPopup();
    virtual void show();

    /// One tick of addTimer(). @return non-zero to go on ticking
    virtual Eina_Bool t_OnTimeout(void* data);
    virtual void t_Button1Clicked();
    virtual void t_Button2Clicked();
    virtual void t_CenterButtonClicked();
    virtual void t_CentreButtonFocussed();
    /// @param event_info  the Evas_Event_Key_Down of a key on a button
    virtual void t_OnKeyDown(void* event_info);
    /// Gives button 1 the focus and keeps the arrow keys from moving it.
    virtual void bindFocusOnButton();

    CNetworkPopup(const CNetworkPopup&) = delete;
    CNetworkPopup& operator=(const CNetworkPopup&) = delete;

    void hide();
    /// Deletes the widgets; the object lives on. The tooltip stays.
    void destroy();

    /// @param content  borrowed from the popup's tree; null is stored and otherwise ignored
    void createContentArea(Evas_Object* content, int w, int h);
    void setTitle(std::string title);
    /// Texts of a content (or the popup) with the parts elm.swallow.label1, .label3 and .PIN; they are also
    /// the read-out texts.
    void setMessage(std::string label1, std::string label3, std::string pin, bool onContent);
    void setCustomMessage(std::string text, std::string part, bool onContent);
    /// Read-out texts; they take effect at the next m_SetTTS().
    void setTTS(std::string t1, std::string t2, std::string t3);
    /// @return a table that gives @p obj a minimum size in pixels; belongs to @p parent; null when it cannot
    ///         be made
    Evas_Object* widget_min_set(Evas_Object* parent, Evas_Object* obj, int w, int h);
    void m_SetIcon(Evas_Object* obj, std::string icon);

    /// The first call makes button 1, each later one button 2.
    void addButton(std::string label, std::string icon, bool flag, std::string style, std::string extra);
    void m_SetBtnCommon(Evas_Object* button, std::string label, std::string style);
    /// The single button of an information popup. Keys on it reach the widget's defaults only.
    void createCentreButton(std::string label, std::string icon, bool flag, std::string style);
    /// Rebuilds the popup as the toolkit's plain one-button popup.
    void createOneBtnpopup(Evas_Object* parent, std::string style);

    void setFocusOnButton1(bool readOut);
    void setFocusOnButton2(bool readOut);
    /// Attaches title, read-out texts and button labels to @p obj for the screen reader.
    void m_SetTTS(Evas_Object* obj);

    void AddToolTipBox(
        Evas_Object* target, Elm_Flux_Tooltip_Style style, std::string text, Elm_Flux_Tooltip_Orient orient);
    void ShowToolTip();
    void HideToolTip();
    void RemoveToolTip();

    /// Starts the popup's timer. An earlier one goes on beside it until a tick ends them.
    void addTimer(int seconds);
    void deleteTimer();

    // Toolkit callbacks; data is the popup, and null is survived.
    static void on_Button1Clicked(void* data, Evas_Object* obj, void* event_info);
    static void on_Button2Clicked(void* data, Evas_Object* obj, void* event_info);
    static void on_CentreButtonClicked(void* data, Evas_Object* obj, void* event_info);
    static void on_CentreButtonFocussed(void* data, Evas_Object* obj, void* event_info);
    static void onKeyDown(void* data, Evas* e, Evas_Object* obj, void* event_info);
    static void on_MouseInFocuscb(void* data, Evas* e, Evas_Object* obj, void* event_info);
    static void handleReturnExitKey(void* data, Evas* e, Evas_Object* obj, void* event_info);
    static Eina_Bool m_TimerCB(void* data);

protected:
    Evas_Object* m_popup; ///< owned
    Evas_Object* m_parent; ///< borrowed
    Evas_Object* m_content; ///< child of the popup
    Evas_Object* m_extra; ///< owned
    Evas_Object* m_tooltip; ///< owned
    std::string m_spareText;
    Evas_Object* m_buttons[2]; ///< owned
    Ecore_Timer* m_timer; ///< owned
    std::string m_tts1;
    std::string m_tts2;
    std::string m_tts3;
    std::string m_title;
    std::string m_button1Label;
    std::string m_button2Label;
    int m_buttonCount;
    CDimBase m_dimBase;

private:
    void deleteWidgets();

    std::vector<Ecore_Timer*> m_formerTimers; ///< owned; timers that another one was started over
    std::shared_ptr<char> m_alive; ///< expires with the popup: a tick may delete it
};

} // namespace TesselUI
