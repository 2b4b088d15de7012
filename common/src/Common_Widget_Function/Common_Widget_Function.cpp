// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Common_Widget_Function.h"

#include "Guard.h"
#include "Log.h"
#include "Paths.h"
#include "Tessel_Conn_Comm_Func.h"
#include "ToolkitObjects.h"
#include "base/Handles.h"

#include <cstdio>
#include <cstdlib>
#include <string>

namespace TesselUI {

bool time_flag = false;

void Reset_Time()
{
    LOGI("START");
    time_flag = true;
    LOGI("END");
}

void Reset_Time_Flag(void*, Evas*, Evas_Object*, void*)
{
    LOGI("START");
    time_flag = true;
    LOGI("END");
}

} // namespace TesselUI

namespace {

using TesselUI::kImageFolder;
using TesselUI::kThemeFile;
using TesselUI::Reset_Time_Flag;

constexpr int kNotGiven = -1;

constexpr std::size_t kImagePathSize = 255;

/// Background of the high-contrast look: red, green, blue, alpha.
constexpr int kContrastBackground[] = {15, 24, 39, 255};
constexpr int kContrastMessage = 1;

/// @param function  whose line it is
bool isMissing(const char* function, const Evas_Object* parent)
{
    if (!parent)
        LOGE_AS(function, "User passed data is null");
    return !parent;
}

void noteActivity(Evas_Object* object)
{
    evas_object_event_callback_add(object, EVAS_CALLBACK_KEY_DOWN, Reset_Time_Flag, nullptr);
    evas_object_event_callback_add(object, EVAS_CALLBACK_MOUSE_MOVE, Reset_Time_Flag, nullptr);
}

std::string imagePath(const char* fileName)
{
    char path[kImagePathSize] = {};
    snprintf(path, sizeof path, "%s%s", kImageFolder, fileName);
    return path;
}

int scaled(int pixels)
{
    return static_cast<int>(pixels / elm_app_base_scale_get() * elm_config_scale_get());
}

void MouseIn_Focus_cb(void*, Evas*, Evas_Object* object, void*)
{
    LOGI("START");
    if (isMissing(__func__, object))
        return;
    elm_object_focus_set(object, EINA_TRUE);
    LOGI("END");
}

void HandleReturnExitKey(void*, Evas*, Evas_Object*, void* eventInfo)
try {
    const auto* event = static_cast<Evas_Event_Key_Down*>(eventInfo);
    const std::string key = event && event->keyname ? event->keyname : "";
    if (key == "XF86Back") {
        ExitFromTS();
        LOGD("Exit Key is Pressed,Exiting...");
    } else if (key == "XF86Close") {
        ExitFromTS();
        LOGD("Return Key is Pressed,Exiting...");
    }
} catch (...) {
    TesselUI::logCaught(__func__);
}

/// Points @p object at @p target; null leaves that direction to the toolkit's own search.
void setNext(Evas_Object* object, Evas_Object* target, Elm_Focus_Direction direction)
{
    elm_object_focus_next_object_set(object, target, direction);
}

void chain(Evas_Object** objects, int count, Elm_Focus_Direction forward, Elm_Focus_Direction backward)
{
    for (int i = 0; objects && i < count; ++i) {
        if (!objects[i])
            continue;
        setNext(objects[i], objects[i == count - 1 ? 0 : i + 1], forward);
        setNext(objects[i], objects[i == 0 ? count - 1 : i - 1], backward);
    }
}

void lock(Evas_Object** objects, int count, Elm_Focus_Direction one, Elm_Focus_Direction other)
{
    for (int i = 0; objects && i < count; ++i) {
        if (!objects[i])
            continue;
        setNext(objects[i], objects[i], one);
        setNext(objects[i], objects[i], other);
    }
}

} // namespace

Evas_Object* createLayout(Evas_Object* parent, const char* group, int x, int y, int width, int height)
{
    LOGI("START");
    if (isMissing(__func__, parent))
        return nullptr;
    Evas_Object* layout = elm_layout_add(parent);
    if (layout) {
        TesselUI::fillRoom(layout);
        elm_layout_file_set(layout, kThemeFile, group);
        if (x != kNotGiven && y != kNotGiven)
            evas_object_move(layout, x, y);
        if (width != kNotGiven && height != kNotGiven)
            evas_object_resize(layout, scaled(width), scaled(height));
        noteActivity(layout);
        elm_object_focus_allow_set(layout, EINA_TRUE);
    }
    LOGI("END");
    return layout;
}

Evas_Object* createPopup(Evas_Object* parent, const char* style)
{
    LOGI("START");
    if (isMissing(__func__, parent))
        return nullptr;
    Evas_Object* popup = elm_popup_add(parent);
    if (popup) {
        elm_object_style_set(popup, style);
        noteActivity(popup);
    }
    LOGI("END");
    return popup;
}

Evas_Object* createImage(Evas_Object* parent, const char* fileName, const char* part)
{
    LOGI("START");
    if (isMissing(__func__, parent))
        return nullptr;
    Evas_Object* image = elm_image_add(parent);
    if (image && fileName) {
        if (!elm_image_file_set(image, imagePath(fileName).c_str(), nullptr))
            LOGE("Failed to Set image Path\n");
        else if (part)
            elm_object_part_content_set(parent, part, image);
        evas_object_show(image);
    }
    LOGI("END");
    return image;
}

Evas_Object* createBox(Evas_Object* parent)
{
    LOGI("START");
    if (isMissing(__func__, parent))
        return nullptr;
    Evas_Object* box = elm_box_add(parent);
    if (box)
        TesselUI::fillRoom(box);
    LOGI("END");
    return box;
}

Evas_Object* createIcon(Evas_Object* parent, const char* fileName)
{
    LOGI("START");
    if (isMissing(__func__, parent))
        return nullptr;
    Evas_Object* icon = elm_icon_add(parent);
    if (icon && !elm_image_file_set(icon, imagePath(fileName ? fileName : "").c_str(), nullptr))
        LOGE("Failed to Set File in Create Icon");
    LOGI("END");
    return icon;
}

Evas_Object* createLabel(Evas_Object* parent, const char* style, const char* text)
{
    LOGI("START");
    if (isMissing(__func__, parent))
        return nullptr;
    Evas_Object* label = elm_label_add(parent);
    if (label) {
        if (style)
            elm_object_style_set(label, style);
        if (text)
            elm_object_text_set(label, text);
        evas_object_show(label);
    }
    LOGI("END");
    return label;
}

Evas_Object* createButton(
    Evas_Object* parent, const char* style, Evas_Smart_Cb clicked, const char* text, void* data)
{
    LOGI("START");
    if (isMissing(__func__, parent))
        return nullptr;
    Evas_Object* button = elm_button_add(parent);
    if (button) {
        elm_object_style_set(button, style);
        elm_object_text_set(button, text);
        TesselUI::fillRoom(button);
        if (clicked)
            evas_object_smart_callback_add(button, "clicked", clicked, data);
        elm_object_focus_allow_set(button, EINA_TRUE);
        evas_object_event_callback_add(button, EVAS_CALLBACK_MOUSE_IN, MouseIn_Focus_cb, nullptr);
        evas_object_event_callback_priority_add(
            button, EVAS_CALLBACK_KEY_DOWN, EVAS_CALLBACK_PRIORITY_AFTER, HandleReturnExitKey, nullptr);
        evas_object_show(button);
    }
    LOGI("END");
    return button;
}

Ecore_Timer* createTimer(double interval, Ecore_Task_Cb callback, void* data)
{
    LOGI("START");
    Ecore_Timer* timer = callback ? ecore_timer_add(interval, callback, data) : nullptr;
    LOGI("END");
    return timer;
}

void SetHigh_ContrastBg(Evas_Object* layout)
{
    LOGI("START");
    constexpr int kCount = static_cast<int>(std::size(kContrastBackground));
    // The record declares room for one integer; it is followed by the others.
    const std::size_t size = sizeof(Edje_Message_Int_Set) + (kCount - 1) * sizeof(int);
    const base::CHandle<Edje_Message_Int_Set, std::free> message {
        static_cast<Edje_Message_Int_Set*>(calloc(1, size))};
    Evas_Object* theme = layout ? elm_layout_edje_get(layout) : nullptr;
    if (message && theme) {
        message->count = kCount;
        for (int i = 0; i < kCount; ++i)
            message->val[i] = kContrastBackground[i];
        edje_object_message_send(theme, EDJE_MESSAGE_INT_SET, kContrastMessage, message.get());
    }
    LOGI("END");
}

void set_focus_chain_up_down(Evas_Object** objects, int count)
{
    LOGI("START");
    chain(objects, count, ELM_FOCUS_DOWN, ELM_FOCUS_UP);
    LOGI("END");
}

void set_focus_chain_left_right(Evas_Object** objects, int count)
{
    LOGI("START");
    chain(objects, count, ELM_FOCUS_RIGHT, ELM_FOCUS_LEFT);
    LOGI("END");
}

void single_chain_set_focus_LEFTRIGHT(Evas_Object** objects, int count)
{
    LOGI("START");
    lock(objects, count, ELM_FOCUS_RIGHT, ELM_FOCUS_LEFT);
    LOGI("END");
}

void single_chain_set_focus_DOWNUP(Evas_Object** objects, int count)
{
    LOGI("START");
    lock(objects, count, ELM_FOCUS_DOWN, ELM_FOCUS_UP);
    LOGI("END");
}
