#include "CancelConfirmation.h"

#include "ProgressParts.h"
#include "Translated.h"
#include "WidgetNumbers.h"

#include <elm_flux.h>

namespace TesselUI {

namespace {

constexpr int kTextWidth = 101; ///< layout units, as the height
constexpr int kTextHeight = 14;

} // namespace

Evas_Object* addCancelConfirmation(Evas_Object* box, Evas_Smart_Cb yes, Evas_Smart_Cb no, const void* data)
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

SupersededConfirmations::~SupersededConfirmations()
{
    for (Evas_Object* popup : m_popups)
        evas_object_del(popup);
}

void SupersededConfirmations::push(Evas_Object* popup)
{
    if (popup)
        m_popups.push_back(popup);
}

Evas_Object* SupersededConfirmations::pop()
{
    if (m_popups.empty())
        return nullptr;
    Evas_Object* newest = m_popups.back();
    m_popups.pop_back();
    return newest;
}

void SupersededConfirmations::hide() const
{
    for (Evas_Object* popup : m_popups)
        evas_object_hide(popup);
}

} // namespace TesselUI
