// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Toolkit.h"

#include "Journal.h"

#include <Ecore_Evas.h>
#include <Ecore_Input.h>

#include <cstdarg>
#include <dlfcn.h>
#include <glib.h>

namespace toolkit {

namespace {

double s_clock = 1000.0; ///< what the loop takes for the time, seconds
double s_started = 0.0; ///< the machine's time when s_clock began to follow it; 0 while it stands still

double machineTime()
{
    return static_cast<double>(g_get_monotonic_time()) / G_USEC_PER_SEC;
}

double loopTime()
{
    return s_started > 0 ? s_clock + machineTime() - s_started : s_clock;
}

/// @return the toolkit's own function that one of this file stands before
template <typename Function>
Function* original(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

bool isOfType(const Evas_Object* object, const char* type)
{
    return eina_streq(evas_object_type_get(object), type);
}

void collect(Evas_Object* object, std::vector<Evas_Object*>& result)
{
    result.push_back(object);
    Eina_List* members = evas_object_smart_members_get(object);
    void* member = nullptr;
    EINA_LIST_FREE(members, member)
    collect(static_cast<Evas_Object*>(member), result);
}

} // namespace

std::function<void()> s_onExit;
std::vector<std::string> s_markers;

} // namespace toolkit

// The program and its libraries find these before the toolkit's own.
#define BEFORE_TOOLKIT extern "C" __attribute__((visibility("default")))

BEFORE_TOOLKIT double ecore_time_get(void)
{
    return toolkit::loopTime();
}

BEFORE_TOOLKIT void elm_exit(void)
{
    journal::note("exit");
    if (toolkit::s_onExit)
        toolkit::s_onExit();
    toolkit::original<void()>("elm_exit")();
}

/// The kernel refuses the platform's own option, so that nobody else sees it.
BEFORE_TOOLKIT int prctl(int option, ...)
{
    constexpr int kMarker = 666;
    va_list list;
    va_start(list, option);
    unsigned long values[4];
    for (unsigned long& value : values)
        value = va_arg(list, unsigned long);
    va_end(list);
    if (option == kMarker)
        toolkit::s_markers.emplace_back(reinterpret_cast<const char*>(values[0]), values[1]);
    return toolkit::original<int(int, ...)>("prctl")(option, values[0], values[1], values[2], values[3]);
}

BEFORE_TOOLKIT void elm_win_lower(Evas_Object* window)
{
    journal::note("lower");
    toolkit::original<void(Evas_Object*)>("elm_win_lower")(window);
}

namespace toolkit {

void advance(double seconds, double step)
{
    while (seconds > 1e-6) {
        const double now = std::min(seconds, step);
        s_clock += now;
        seconds -= now;
        ecore_main_loop_iterate_may_block(0);
        ecore_main_loop_iterate_may_block(0);
    }
}

bool runUntil(const std::function<bool()>& condition, double seconds)
{
    s_started = machineTime();
    const double end = s_started + seconds;
    // Some conditions come without an event that would end the loop's sleep.
    Ecore_Timer* look = ecore_timer_add(
        0.01, [](void*) -> Eina_Bool { return ECORE_CALLBACK_RENEW; }, nullptr);
    bool holds = condition();
    while (!holds && machineTime() < end) {
        ecore_main_loop_iterate_may_block(1);
        holds = condition();
    }
    ecore_timer_del(look);
    s_clock = loopTime();
    s_started = 0;
    return holds;
}

void click(Evas_Object* button)
{
    evas_object_smart_callback_call(button, "clicked", nullptr);
}

std::vector<Evas_Object*> objects(const Evas_Object* window)
{
    std::vector<Evas_Object*> result;
    Evas* canvas = evas_object_evas_get(window);
    for (Evas_Object* o = evas_object_bottom_get(canvas); o; o = evas_object_above_get(o))
        collect(o, result);
    return result;
}

PopupRecord* topPopup(const Evas_Object* window)
{
    const auto popups = shown<PopupRecord>(window);
    return popups.empty() ? nullptr : popups.back();
}

std::vector<std::string> textsOf(const Evas_Object* window)
{
    std::vector<std::string> texts;
    for (const TextboxRecord* box : shown<TextboxRecord>(window)) {
        const char* text = elm_object_part_text_get(box->object, "elm.text");
        if (text && *text)
            texts.emplace_back(text);
    }
    return texts;
}

Evas_Object* shownGroup(const Evas_Object* window, const std::string& group)
{
    for (Evas_Object* object : objects(window)) {
        const char* name = nullptr;
        if (isOfType(object, "edje"))
            edje_object_file_get(object, nullptr, &name);
        if (name && group == name && evas_object_visible_get(object))
            return object;
    }
    return nullptr;
}

int strength(const Evas_Object* layout, const char* part)
{
    const Evas_Object* drawn = edje_object_part_object_get(elm_layout_edje_get(layout), part);
    int alpha = 0;
    evas_object_color_get(drawn, nullptr, nullptr, nullptr, &alpha);
    return drawn && evas_object_visible_get(drawn) ? alpha : 0;
}

} // namespace toolkit
