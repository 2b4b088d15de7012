// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "SettingScreenPopup.h"

#include "Guard.h"
#include "Log.h"
#include "PopupParts.h"
#include "TesselUI.h"
#include "ToolkitObjects.h"
#include "Translated.h"
#include "Util.h"
#include "WidgetNumbers.h"

#include <elm_flux.h>

#include <utility>

namespace TesselUI {

namespace {

// Layout units.
constexpr int kWidth = 101;
constexpr int kTextHeight = 12;
constexpr int kHeight = 28;

constexpr const char* kInforming = "TV_SID_TESSEL_CADEC_SETTING_UP_UR_TV_VIA_UR_PH";
constexpr const char* kConfirming = "TV_SID_NOT_ABLE_USE_INFO_RECEIVED_PHONE";

} // namespace

SettingScreenPopup::SettingScreenPopup(Evas_Object* parent, Elm_Flux_Popup_Style style)
    : CNetworkPopup(parent, style)
    , m_window(nullptr)
{
    LOGI("START");
    m_window = parent;
    LOGI("END");
}

SettingScreenPopup::~SettingScreenPopup()
{
    LOGI("START");
    if (m_window)
        elm_win_lower(m_window);
    hide();
    LOGI("END");
}

void SettingScreenPopup::show()
{
    LOGI("START");
    m_isAnswered = false;
    setTitle(translated("COM_TV_SID_TESSEL"));
    m_contentText = translated(kInforming);
    m_addContentArea(m_contentText);
    createContentArea(m_contentLayout, kWidth, kHeight);
    // Shown again while its question is open, the popup begins anew: Cancel takes the place of Yes only.
    removeButton(m_yesButton, m_OnYesButtonClicked);
    removeButton(m_noButton, m_OnNoButtonClicked);
    m_AddCancelButton();
    setTTS(m_contentText, "", "");
    if (m_window) {
        evas_object_show(m_window);
        elm_win_raise(m_window);
    }
    CNetworkPopup::show();
    LOGI("END");
}

void SettingScreenPopup::m_addContentArea(std::string text)
{
    LOGI("START");
    m_contentLayout = elm_flux_layout_add(m_popup);
    elm_flux_layout_type_set(m_contentLayout, kStacked);
    fillRoom(m_contentLayout);
    m_textBox = elm_flux_textbox_add(m_contentLayout);
    elm_flux_textbox_text_set(m_textBox, text.c_str());
    elm_flux_textbox_multiline_set(m_textBox, EINA_TRUE);
    elm_flux_layout_append(
        m_contentLayout, m_textBox, elm_flux_unit_to_pixel(kWidth), elm_flux_unit_to_pixel(kTextHeight));
    elm_flux_textbox_size_set(m_textBox, kBody);
    TSUtil::m_IsReveseOSD(); // for its log lines only: the text is centred in either writing direction
    elm_flux_textbox_align_set(m_textBox, kAlignCentre);
    elm_flux_textbox_responsive_rule_set(m_textBox, kWrap);
    LOGI("END");
}

void SettingScreenPopup::focusButton(Evas_Object* button, int slot)
{
    elm_flux_popup_focused_button_set(m_popup, slot);
    if (button)
        elm_object_focus_set(button, EINA_TRUE);
}

void SettingScreenPopup::m_AddCancelButton()
{
    LOGI("START");
    m_cancelButton = addPopupButton(m_popup, translated("SID_CANCEL"), 0, m_OnCancelButtonClicked, this);
    focusButton(m_cancelButton, 0);
    LOGI("END");
}

/// No is the default answer.
void SettingScreenPopup::m_AddYesNoButton()
{
    LOGI("START");
    m_yesButton = addPopupButton(m_popup, translated("SID_YES"), 0, m_OnYesButtonClicked, this);
    m_noButton = addPopupButton(m_popup, translated("SID_NO"), 1, m_OnNoButtonClicked, this);
    focusButton(m_noButton, 1);
    LOGI("END");
}

void SettingScreenPopup::removeButton(Evas_Object*& button, Evas_Smart_Cb clicked)
{
    if (!button)
        return;
    evas_object_smart_callback_del(button, "clicked", clicked);
    elm_flux_popup_item_remove(m_popup, button);
    deleteObject(button);
}

void SettingScreenPopup::m_RemoveCancelButton()
{
    LOGI("START");
    removeButton(m_cancelButton, m_OnCancelButtonClicked);
    LOGI("END");
}

void SettingScreenPopup::m_RemoveYesNoButton()
{
    LOGI("START");
    removeButton(m_yesButton, m_OnYesButtonClicked);
    removeButton(m_noButton, m_OnNoButtonClicked);
    LOGI("END");
}

void SettingScreenPopup::setText(const char* id)
{
    m_contentText = translated(id);
    elm_flux_textbox_text_set(m_textBox, m_contentText.c_str());
}

void SettingScreenPopup::m_OnCancelButtonClicked(void* data, Evas_Object*, void*)
try {
    auto* popup = static_cast<SettingScreenPopup*>(data);
    if (!popup || popup->m_isAnswered)
        return;
    LOGI("START");
    popup->m_RemoveCancelButton();
    popup->setText(kConfirming);
    popup->m_AddYesNoButton();
    LOGI("END");
} catch (...) {
    logCaught(__func__);
}

void SettingScreenPopup::m_OnNoButtonClicked(void* data, Evas_Object*, void*)
try {
    auto* popup = static_cast<SettingScreenPopup*>(data);
    if (!popup || popup->m_isAnswered)
        return;
    LOGI("START");
    popup->m_RemoveYesNoButton();
    popup->setText(kInforming);
    popup->m_AddCancelButton();
    LOGI("END");
} catch (...) {
    logCaught(__func__);
}

/// The stop blocks until the daemon answers, so the screen is given back before it; the window takes the
/// picture along when no popup is up any more.
void SettingScreenPopup::m_OnYesButtonClicked(void* data, Evas_Object*, void*)
try {
    auto* popup = static_cast<SettingScreenPopup*>(data);
    if (popup && std::exchange(popup->m_isAnswered, true))
        return;
    LOGI("START");
    if (popup) {
        evas_object_hide(popup->m_popup);
        if (popup->m_window)
            elm_win_lower(popup->m_window);
    }
    elm_exit();
    CTesselUI::stopTesselRequest(true, false);
    LOGI("END");
} catch (...) {
    logCaught(__func__);
}

} // namespace TesselUI
