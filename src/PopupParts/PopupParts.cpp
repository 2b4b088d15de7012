// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "PopupParts.h"

#include "NetUtilAccessibility.h"
#include "ToolkitObjects.h"
#include "WidgetNumbers.h"

#include <elm_flux.h>

namespace TesselUI {

namespace {

// Layout units.
constexpr int kWidth = 109;
constexpr int kHeight = 33;
constexpr int kRowHeight = 18;
constexpr int kFirstLineWidth = 96;
constexpr int kSecondLineHeight = 14;
constexpr int kIndicator = 12;
constexpr double kGap = 1.0;

Evas_Object* addLayout(Evas_Object* parent, Elm_Flux_Layout_Type type)
{
    Evas_Object* layout = elm_flux_layout_add(parent);
    elm_flux_layout_type_set(layout, type);
    fillRoom(layout);
    elm_flux_layout_gap_set(layout, kGap);
    return layout;
}

void append(Evas_Object* layout, Evas_Object* item, int w, int h)
{
    elm_flux_layout_append(layout, item, elm_flux_unit_to_pixel(w), elm_flux_unit_to_pixel(h));
}

void appendText(Evas_Object* layout, const char* text, int w, int h)
{
    Evas_Object* textbox = elm_flux_textbox_add(layout);
    elm_flux_textbox_text_set(textbox, text);
    elm_flux_textbox_multiline_set(textbox, EINA_TRUE);
    append(layout, textbox, w, h);
}

} // namespace

Evas_Object* addProgressBox(Evas_Object* window)
{
    Evas_Object* box = elm_box_add(window);
    if (!box)
        return nullptr;
    coverWindow(window, box);
    evas_object_show(box);
    return box;
}

ProgressLayouts addProgressLayouts(Evas_Object* popup)
{
    ProgressLayouts layouts {};
    layouts.main = addLayout(popup, kStacked);
    layouts.content = addLayout(layouts.main, kRow);
    append(layouts.main, layouts.content, kWidth, kRowHeight);
    return layouts;
}

void setProgressContent(Evas_Object* popup, Evas_Object* main)
{
    elm_flux_popup_content_set(popup, main, elm_flux_unit_to_pixel(kWidth), elm_flux_unit_to_pixel(kHeight));
}

Evas_Object* addProgressIndicator(Evas_Object* content)
{
    Evas_Object* indicator = elm_flux_progressbar_add(content);
    elm_flux_progressbar_style_set(indicator, kSmallSpinner);
    append(content, indicator, kIndicator, kIndicator);
    return indicator;
}

void addFirstLine(Evas_Object* content, const char* text)
{
    appendText(content, text, kFirstLineWidth, kRowHeight);
}

void addSecondLine(Evas_Object* main, const char* text)
{
    appendText(main, text, kWidth, kSecondLineHeight);
}

Evas_Object* addPopupButton(
    Evas_Object* popup, const std::string& label, int slot, Evas_Smart_Cb clicked, const void* data)
{
    Evas_Object* button = elm_flux_button_add(popup);
    if (!button)
        return nullptr;
    elm_flux_button_style_set(button, kDefaultButton);
    elm_flux_button_text_set(button, label.c_str());
    elm_flux_popup_button_set(popup, button, slot);
    evas_object_smart_callback_add(button, "clicked", clicked, data);
    return button;
}

void leaveScreen(Evas_Object* window, std::initializer_list<Evas_Object*> objects)
{
    for (Evas_Object* object : objects) {
        if (object)
            evas_object_hide(object);
    }
    if (window)
        elm_win_lower(window);
}

void attachReadOut(Evas_Object* button, const std::string& context, const std::string& name)
{
    AccessibilityInfo* info = getAccessibiltyObject();
    if (!info || !button)
        return;
    *info = {};
    info->flag = true;
    context.copy(info->text1, sizeof info->text1 - 1);
    name.copy(info->text2, sizeof info->text2 - 1);
    elm_access_info_cb_set(button, ELM_ACCESS_INFO, access_info_cb_widget, info);
}

} // namespace TesselUI
