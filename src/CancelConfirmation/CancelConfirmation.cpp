// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "CancelConfirmation.h"

#include "PopupParts.h"
#include "Translated.h"
#include "WidgetNumbers.h"

#include <elm_flux.h>

#include <utility>

namespace TesselUI {

namespace {

constexpr int kTextWidth = 101; ///< layout units, as the height
constexpr int kTextHeight = 14;

/// @return the popup, shown; null when there is no window
Evas_Object* addPopup(Evas_Object* box, Evas_Smart_Cb yes, Evas_Smart_Cb no, const void* data)
{
    Evas_Object* popup = elm_flux_popup_add(box);
    if (!popup)
        return nullptr;
    elm_flux_popup_style_set(popup, kDefaultStyle);
    elm_flux_popup_title_set(popup, translated("SID_CANCEL").c_str());
    const std::string message = translated("TV_SID_NOT_ABLE_USE_INFO_RECEIVED_PHONE");
    Evas_Object* text = elm_flux_textbox_add(popup);
    elm_flux_textbox_text_set(text, message.c_str());
    elm_flux_textbox_multiline_set(text, EINA_TRUE);
    const std::string yesLabel = translated("SID_YES");
    Evas_Object* yesButton = addPopupButton(popup, yesLabel, 0, yes, data);
    const char* title = elm_object_part_text_get(popup, "title,text");
    attachReadOut(yesButton, std::string(title ? title : "") + "," + message, yesLabel);
    addPopupButton(popup, translated("SID_NO"), 1, no, data);
    elm_flux_popup_content_set(
        popup, text, elm_flux_unit_to_pixel(kTextWidth), elm_flux_unit_to_pixel(kTextHeight));
    evas_object_show(popup);
    return popup;
}

} // namespace

CancelQuestion::~CancelQuestion()
{
    deleteOpen();
    for (Evas_Object* popup : m_aside)
        evas_object_del(popup);
}

void CancelQuestion::ask(Evas_Object* box, Evas_Smart_Cb yes, Evas_Smart_Cb no, const void* data)
{
    if (m_isAnswered)
        return;
    if (m_open)
        m_aside.push_back(m_open);
    m_open = addPopup(box, yes, no, data);
}

void CancelQuestion::takeBack()
{
    if (m_isAnswered)
        return;
    Evas_Object* answered = std::exchange(m_open, nullptr);
    if (!m_aside.empty()) {
        m_open = m_aside.back();
        m_aside.pop_back();
    }
    evas_object_del(answered);
}

bool CancelQuestion::answer()
{
    return !std::exchange(m_isAnswered, true);
}

void CancelQuestion::hide() const
{
    for (Evas_Object* popup : m_aside)
        evas_object_hide(popup);
    if (m_open)
        evas_object_hide(m_open);
}

void CancelQuestion::deleteOpen()
{
    evas_object_del(std::exchange(m_open, nullptr));
}

} // namespace TesselUI
