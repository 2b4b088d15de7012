// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the popup shows: labels, picture and texts of its six contents.

#include "PinPopup.h"

#include "LaunchMarker.h"
#include "Log.h"
#include "Paths.h"
#include "Tessel_Conn_Comm_Func.h"
#include "ToolkitObjects.h"
#include "Translated.h"
#include "Util.h"
#include "WidgetNumbers.h"
#include "base/Handles.h"
#include "combinate.h"

#include <cstdio>

namespace TesselUI {

namespace {

constexpr int kGuideWidth = 151; ///< layout units

/// How a body text is measured: its own style, at the width of the card's content.
constexpr const char* kMeasureStyle =
    "DEFAULT='font=NorvaleSans-500 font_size=28 align=left color=#ffffff wrap=word'";
constexpr int kMeasureWidthPx = 808;

constexpr int kPinCountdown = 60; ///< ticks of one second

constexpr double kTooltipDelay = 0.5; ///< seconds

constexpr const char* kButtonStyle = "C_ButtonBasic_WhiteText";

void append(Evas_Object* layout, Evas_Object* item, int w, int h)
{
    elm_flux_layout_append(layout, item, elm_flux_unit_to_pixel(static_cast<double>(w)),
        elm_flux_unit_to_pixel(static_cast<double>(h)));
}

} // namespace

/// A content that is one text and one button. Sizes are layout units; a countdown of 0 leaves the one that
/// runs since construction.
struct PinPopup::TextRow {
    TSPOPUP_TYPE type;
    const char* log;
    bool logsTitle;
    const char* titleId;
    const char* textId;
    int labelHeight;
    int contentHeight;
    int countdown;
    const char* buttonId;
    const char* icon;
};

namespace {

constexpr int kTextWidth = 101; ///< layout units

} // namespace

const PinPopup::TextRow* PinPopup::rowOf(TSPOPUP_TYPE type)
{
    static constexpr TextRow kRows[] = {
        {TS_POPUP_WIFI_FAILED, "showWIFIFailedText popup", false, "COM_SID_INFORMATION",
            "TV_SID_SETUP_PH_FAIL_SETUP_MANUALLY", 12, 12, 0, "COM_SID_OK", "i_ok_done_allow.png"},
        {TS_POPUP_TNC, "showTncText popup", false, "COM_TV_SID_TESSEL",
            "TV_SID_TESSEL_CADEC_SETTING_UP_TV_MOBILE_TERMS_AND_CONDITIONS", 18, 18, 600, "SID_CANCEL",
            "i_close_cancel.png"},
        // The content is taller than its label, and the log has the words of the terms.
        {TS_POPUP_AP_LIST, "showTncText popup", false, "COM_TV_SID_TESSEL",
            "TV_SID_TESSEL_CADEC_SETUP_VIA_MOBILE", 12, 14, 600, "SID_CANCEL", "i_close_cancel.png"},
        {TS_POPUP_SSO_FAILED, "showSSOFailedText popup", true, "COM_SID_INFORMATION",
            "TV_SID_SETUP_PH_FAIL_SETUP_MANUALLY", 12, 12, 0, "COM_SID_OK", "i_ok_done_allow.png"},
    };
    for (const TextRow& row : kRows) {
        if (row.type == type)
            return &row;
    }
    return nullptr;
}

void PinPopup::m_setContentArea(Evas_Object* content, int w, int h)
{
    createContentArea(content, w, h);
}

void PinPopup::m_addContentArea()
{
    m_contentLayout = elm_flux_layout_add(m_popup);
    elm_flux_layout_type_set(m_contentLayout, kStacked);
    fillRoom(m_contentLayout);
}

Evas_Object* PinPopup::addLabel(int w, int h, Elm_Flux_Textbox_Size size)
{
    Evas_Object* label = elm_flux_textbox_add(m_contentLayout);
    elm_flux_textbox_text_set(label, "");
    elm_flux_textbox_multiline_set(label, EINA_TRUE);
    append(m_contentLayout, label, w, h);
    elm_flux_textbox_size_set(label, size);
    TSUtil::m_IsReveseOSD(); // for its log lines only: the text is centred in either writing direction
    elm_flux_textbox_align_set(label, kAlignCentre);
    elm_flux_textbox_responsive_rule_set(label, kWrap);
    return label;
}

void PinPopup::m_addContentTopLabel(int w, int h, Elm_Flux_Textbox_Size size)
{
    m_topLabel = addLabel(w, h, size);
}

void PinPopup::m_addContentBottomLabel1(int w, int h, Elm_Flux_Textbox_Size size)
{
    m_bottomLabel1 = addLabel(w, h, size);
}

void PinPopup::m_addContentBottomLabel2(int w, int h, Elm_Flux_Textbox_Size size)
{
    m_bottomLabel2 = addLabel(w, h, size);
}

void PinPopup::m_createBLETVNameLabel(int w, int h, Elm_Flux_Textbox_Size size)
{
    m_tvNameLabel = elm_flux_textbox_add(m_contentLayout);
    elm_flux_textbox_text_set(m_tvNameLabel, "");
    elm_flux_textbox_multiline_set(m_tvNameLabel, EINA_TRUE);
    append(m_contentLayout, m_tvNameLabel, w, h);
    elm_flux_textbox_multiline_set(m_tvNameLabel, EINA_FALSE);
    elm_flux_textbox_size_set(m_tvNameLabel, size);
    elm_flux_textbox_align_set(m_tvNameLabel, kAlignOneLine);
    elm_flux_textbox_color_preset_set(m_tvNameLabel, "CP_Info150");
    elm_flux_textbox_responsive_rule_set(m_tvNameLabel, kShrinkLine);
}

void PinPopup::m_addContentImage(std::string name, int w, int h)
{
    m_imageLayout = elm_flux_layout_add(m_contentLayout);
    elm_flux_layout_type_set(m_imageLayout, kStacked);
    fillRoom(m_imageLayout);
    elm_flux_layout_padding_set(m_imageLayout, 0, 0, 3, 0);
    append(m_contentLayout, m_imageLayout, kGuideWidth, h);
    const std::string path = std::string(kThemeImageFolder) + "/" + name;
    LOGI("imgPath=%s", path.c_str());
    m_image = elm_flux_imagebox_add(m_imageLayout);
    elm_flux_imagebox_file_set(m_image, path.c_str());
    fillRoom(m_image);
    elm_flux_imagebox_responsive_rule_set(m_image, kKeepSize);
    append(m_imageLayout, m_image, w, h);
}

void PinPopup::prepareGuide()
{
    m_addContentArea();
    m_addContentTopLabel(kGuideWidth, 12, kBody);
    m_addContentImage("tessel_img_m_popup.png", 32, 38);
    AddToolTipBox(m_image, kTooltipHint, translated("TV_SID_OOBE_CHECK_YOUR_PHONE"), kTooltipBelow);
    m_addContentBottomLabel1(kGuideWidth, 4, kSecondary);
    m_addContentBottomLabel2(kGuideWidth, 4, kSecondary);
    m_createBLETVNameLabel(kGuideWidth, 4, kSecondary);
    createContentArea(m_contentLayout, kGuideWidth, 63);
}

void PinPopup::addCentreButton(const char* labelId, const char* icon)
{
    createCentreButton(translated(labelId), icon, true, kButtonStyle);
}

void PinPopup::signalHighContrast()
{
    if (IsHighContrastMode() && m_content)
        elm_object_signal_emit(m_content, "HC", "");
}

/// A text of one line stays centred; more lines start where the language's lines start.
void PinPopup::alignWrappedText()
{
    if (TSUtil::m_GetTextNumLines(m_topLabel, kMeasureStyle, m_composedText.c_str(), kMeasureWidthPx) > 1)
        elm_flux_textbox_align_set(m_topLabel, TSUtil::m_IsReveseOSD() ? kAlignRight : kAlignLeft);
}

void PinPopup::showText(const TextRow& row)
{
    LOGI("%s", row.log);
    const std::string title = translated(row.titleId);
    if (row.logsTitle)
        LOGI("COM_SID_INFORMATION [%s]", title.c_str());
    setTitle(title);
    if (!m_contentLayout)
        m_addContentArea();
    if (!m_topLabel)
        m_addContentTopLabel(kTextWidth, row.labelHeight, kBody);
    m_composedText = translated(row.textId);
    elm_flux_textbox_text_set(m_topLabel, m_composedText.c_str());
    alignWrappedText();
    m_setContentArea(m_contentLayout, kTextWidth, row.contentHeight);
    if (row.countdown > 0)
        m_countdown = row.countdown;
    addCentreButton(row.buttonId, row.icon);
    setTTS(m_composedText, "", "");
}

void PinPopup::showPinText()
{
    LOGI("showPinText popup");
    signalHighContrast();
    setTitle(translated("SID_PIN"));
    const base::MallocStr phone {TSUtil::AddLTRMarker(m_mobileName.data())};
    char sentence[kCombinedTextSize] = {};
    combinate_string(
        dgettext(kTextDomain, "TV_SID_TESSEL_MIX_CONNECTED_DEVICE"), phone.get(), nullptr, sentence);
    m_composedText = translated("TV_SID_ENTER_PIN_UR_PH") + "<br>" + sentence;
    LOGI("Text in Pin Popup is -> [%s]", m_composedText.c_str());
    if (!m_contentLayout)
        m_addContentArea();
    if (!m_topLabel)
        m_addContentTopLabel(kTextWidth, 12, kBody);
    elm_flux_textbox_text_set(m_topLabel, m_composedText.c_str());
    elm_flux_textbox_responsive_rule_set(m_topLabel, kWrap);
    char line[kCombinedTextSize] = {};
    snprintf(line, sizeof line, "<color=#29C5FF><align=center>%s</align></color>", m_message.c_str());
    if (!m_bottomLabel1)
        m_addContentBottomLabel1(kTextWidth, 14, kDigits);
    elm_flux_textbox_text_set(m_bottomLabel1, line);
    m_setContentArea(m_contentLayout, kTextWidth, 28);
    m_countdown = kPinCountdown;
    addCentreButton("SID_CANCEL", "i_close_cancel.png");
    setTTS(m_composedText, line, "");
}

void PinPopup::showGuideText()
{
    LOGI("showGuideText popup");
    markAppearance("TesselUI :[UI] Popup Appeared");
    signalHighContrast();
    const std::string title = translated("TV_SID_TESSEL_CADEC_SETTING_UP_UR_TV_VIA_UR_PH");
    setTitle(title);
    int key = 0;
    if (!Get_Security_Key(&key)) // for the log lines only: nothing shows the key
        LOGE("Failed to get security key");
    const std::string body = translated("TV_SID_TESSEL_CAN_SET_NETWORK_NORVALE_ACCOUNT_PHONE");
    const std::string note = translated("TV_SID_TESSEL_ONLY_SUPPORT_ZEPHRA");
    m_composedText = title + ", " + body + ", " + note;
    elm_flux_textbox_text_set(m_topLabel, body.c_str());
    elm_flux_textbox_text_set(m_bottomLabel2, note.c_str());
    elm_flux_textbox_text_set(m_tvNameLabel, TSUtil::GetBLETVName().c_str());
    if (!m_tooltipTimer)
        m_tooltipTimer = ecore_timer_add(kTooltipDelay, ToolTimerCB, this);
    addButton(translated("TV_SID_TESSEL_SETUP_IVA_PHONE"), "", true, kButtonStyle, "");
    addButton(translated("TV_SID_TESSEL_CADEC_CONTINNE_WITH_TV_REMOTE"), "", true, kButtonStyle, "");
    LOGI("Set for TTS");
    setTTS(m_composedText, "", "");
}

} // namespace TesselUI
