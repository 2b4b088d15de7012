// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "NetworkPopup.h"

#include "Log.h"
#include "PopupParts.h"
#include "ToolkitObjects.h"
#include "WidgetNumbers.h"

#include <utility>

namespace TesselUI {

namespace {

constexpr double kTooltipWidth = 41; ///< layout units, as the height
constexpr double kTooltipHeight = 9;

} // namespace

CNetworkPopup::CNetworkPopup(Evas_Object* parent, Elm_Flux_Popup_Style style)
    : m_popup(nullptr)
    , m_parent(parent)
    , m_content(nullptr)
    , m_extra(nullptr)
    , m_tooltip(nullptr)
    , m_buttons {nullptr, nullptr}
    , m_timer(nullptr)
    , m_buttonCount(0)
    , m_dimBase(parent)
    , m_alive(std::make_shared<char>())
{
    m_popup = elm_flux_popup_add(parent);
    elm_flux_popup_style_set(m_popup, style);
}

CNetworkPopup::~CNetworkPopup()
{
    LOGI("~CNetworkPopup");
    deleteWidgets();
    deleteObject(m_extra);
    deleteObject(m_tooltip);
    m_dimBase.Hide();
}

void CNetworkPopup::deleteWidgets()
{
    deleteTimer();
    // Or the toolkit looks for the next focus among widgets that are going, and complains in the log.
    if (m_popup)
        elm_object_tree_focus_allow_set(m_popup, EINA_FALSE);
    deleteObject(m_buttons[0]);
    deleteObject(m_buttons[1]);
    deleteObject(m_popup);
}

void CNetworkPopup::show()
{
    evas_object_show(m_parent);
    for (Evas_Object* button : m_buttons) {
        if (button)
            evas_object_show(button);
    }
    evas_object_show(m_popup);
}

void CNetworkPopup::hide()
{
    evas_object_hide(m_popup);
    m_dimBase.Hide();
}

void CNetworkPopup::destroy()
{
    LOGI("destroy");
    deleteWidgets();
    m_dimBase.Hide();
}

void CNetworkPopup::createContentArea(Evas_Object* content, int w, int h)
{
    LOGI("w=%d,h=%d", w, h);
    if (!m_popup)
        return;
    m_content = content;
    if (m_content)
        elm_flux_popup_content_set(m_popup, m_content, elm_flux_unit_to_pixel(static_cast<double>(w)),
            elm_flux_unit_to_pixel(static_cast<double>(h)));
}

void CNetworkPopup::setTitle(std::string title)
{
    m_title = std::move(title);
    elm_flux_popup_title_set(m_popup, m_title.c_str());
}

void CNetworkPopup::setMessage(std::string label1, std::string label3, std::string pin, bool onContent)
{
    m_tts1 = label1;
    m_tts2 = label3;
    m_tts3 = pin;
    Evas_Object* target = onContent ? m_content : m_popup;
    if (!target)
        return;
    elm_object_part_text_set(target, "elm.swallow.label1", label1.c_str());
    elm_object_part_text_set(target, "elm.swallow.label3", label3.c_str());
    elm_object_part_text_set(target, "elm.swallow.PIN", pin.c_str());
}

void CNetworkPopup::setCustomMessage(std::string text, std::string part, bool onContent)
{
    Evas_Object* target = onContent ? m_content : m_popup;
    if (target && (onContent || !part.empty()))
        elm_object_part_text_set(target, part.c_str(), text.c_str());
}

void CNetworkPopup::setTTS(std::string t1, std::string t2, std::string t3)
{
    LOGD("TTS DATA :  TTS1 = %s, TTS2 = %s,  TTS3 = %s \n", t1.c_str(), t2.c_str(), t3.c_str());
    m_tts1 = std::move(t1);
    m_tts2 = std::move(t2);
    m_tts3 = std::move(t3);
}

Evas_Object* CNetworkPopup::widget_min_set(Evas_Object* parent, Evas_Object* obj, int w, int h)
{
    Evas_Object* table = elm_table_add(parent);
    if (!table)
        return nullptr;
    Evas_Object* floor = evas_object_rectangle_add(evas_object_evas_get(table));
    evas_object_size_hint_min_set(floor, w, h);
    for (Evas_Object* item : {floor, obj}) {
        if (!item)
            continue;
        fillRoom(item);
        elm_table_pack(table, item, 0, 0, 1, 1);
    }
    return table;
}

void CNetworkPopup::m_SetIcon(Evas_Object*, std::string) { }

void CNetworkPopup::addButton(std::string label, std::string, bool, std::string style, std::string)
{
    LOGI("ENTRY");
    const int slot = m_buttonCount == 0 ? 0 : 1;
    Evas_Object* button = elm_flux_button_add(m_popup);
    if (!button)
        return;
    m_buttons[slot] = button;
    (slot == 0 ? m_button1Label : m_button2Label) = label;
    m_SetBtnCommon(button, label, style);
    evas_object_smart_callback_add(
        button, "clicked", slot == 0 ? on_Button1Clicked : on_Button2Clicked, this);
    elm_flux_popup_button_set(m_popup, button, slot);
    ++m_buttonCount;
}

void CNetworkPopup::m_SetBtnCommon(Evas_Object* button, std::string label, std::string)
{
    if (!button)
        return;
    elm_flux_button_text_set(button, label.c_str());
    evas_object_event_callback_add(button, EVAS_CALLBACK_KEY_DOWN, onKeyDown, this);
    evas_object_event_callback_add(button, EVAS_CALLBACK_MOUSE_IN, on_MouseInFocuscb, nullptr);
    evas_object_event_callback_priority_add(
        button, EVAS_CALLBACK_KEY_DOWN, EVAS_CALLBACK_PRIORITY_AFTER, handleReturnExitKey, nullptr);
}

void CNetworkPopup::createCentreButton(std::string label, std::string, bool, std::string)
{
    m_button1Label = label;
    m_buttons[0] = elm_flux_button_add(m_popup);
    elm_flux_button_style_set(m_buttons[0], kDefaultButton);
    elm_flux_button_text_set(m_buttons[0], label.c_str());
    if (m_buttons[0]) {
        evas_object_smart_callback_add(m_buttons[0], "clicked", on_CentreButtonClicked, this);
        evas_object_smart_callback_add(m_buttons[0], "focused", on_CentreButtonFocussed, this);
    }
    elm_flux_popup_button_set(m_popup, m_buttons[0], 0);
}

void CNetworkPopup::createOneBtnpopup(Evas_Object* parent, std::string style)
{
    deleteWidgets();
    m_popup = parent ? elm_popup_add(parent) : nullptr;
    if (!m_popup)
        return;
    elm_object_style_set(m_popup, style.c_str());
    elm_popup_allow_events_set(m_popup, EINA_TRUE);
}

void CNetworkPopup::bindFocusOnButton()
{
    LOGI("START");
    if (m_buttons[0]) {
        elm_object_focus_set(m_buttons[0], EINA_TRUE);
        lockFocus(m_buttons[0]);
    }
    LOGI("END");
}

void CNetworkPopup::setFocusOnButton1(bool readOut)
{
    LOGD("Set focus on bitton 1");
    if (!m_buttons[0] || !readOut)
        return;
    m_SetTTS(m_buttons[0]);
    elm_object_focus_set(m_buttons[0], EINA_TRUE);
}

void CNetworkPopup::setFocusOnButton2(bool readOut)
{
    if (!m_buttons[1])
        return;
    if (readOut)
        m_SetTTS(m_buttons[1]);
    elm_object_focus_set(m_buttons[1], EINA_TRUE);
}

void CNetworkPopup::m_SetTTS(Evas_Object* obj)
{
    LOGI("Set tts");
    attachReadOut(obj, m_title + "," + m_tts1 + "," + m_tts2 + "," + m_tts3,
        m_button1Label + "," + m_button2Label + ",");
}

void CNetworkPopup::AddToolTipBox(
    Evas_Object* target, Elm_Flux_Tooltip_Style style, std::string text, Elm_Flux_Tooltip_Orient orient)
{
    LOGI("AddToolTipBox");
    m_tooltip = elm_flux_object_tooltip_add(target, m_parent);
    elm_flux_object_tooltip_size_set(
        m_tooltip, elm_flux_unit_to_pixel(kTooltipWidth), elm_flux_unit_to_pixel(kTooltipHeight));
    elm_flux_object_tooltip_style_set(m_tooltip, style);
    elm_flux_object_tooltip_text_set(m_tooltip, text.c_str());
    elm_flux_object_tooltip_orient_set(m_tooltip, orient);
}

void CNetworkPopup::ShowToolTip()
{
    LOGI("Showing tooltip");
    elm_flux_object_tooltip_show(m_tooltip);
}

void CNetworkPopup::HideToolTip()
{
    elm_flux_object_tooltip_hide(m_tooltip);
}

void CNetworkPopup::RemoveToolTip()
{
    deleteObject(m_tooltip);
}

void CNetworkPopup::addTimer(int seconds)
{
    if (m_timer)
        m_formerTimers.push_back(m_timer);
    m_timer = ecore_timer_add(static_cast<double>(seconds), m_TimerCB, this);
}

void CNetworkPopup::deleteTimer()
{
    for (Ecore_Timer* timer : m_formerTimers)
        ecore_timer_del(timer);
    m_formerTimers.clear();
    if (m_timer)
        ecore_timer_del(std::exchange(m_timer, nullptr));
}

} // namespace TesselUI
