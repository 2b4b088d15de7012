// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Canvas.h"

#include <Ecore_Evas.h>
#include <Ecore_Input.h>

namespace toolkit {

namespace {

unsigned int s_timestamp = 1; ///< of the last key, milliseconds

Ecore_Evas* canvasOf(const Evas_Object* window)
{
    return ecore_evas_ecore_evas_get(evas_object_evas_get(window));
}

} // namespace

void settle()
{
    constexpr int kRounds = 6; // a job may add a job, and a layout an event
    for (int round = 0; round < kRounds; ++round) {
        ecore_main_loop_iterate_may_block(0);
        for (Evas_Object* window : windows())
            ecore_evas_manual_render(canvasOf(window));
    }
}

void focusWindow(Evas_Object* window)
{
    settle();
    ecore_evas_focus_set(canvasOf(window), EINA_FALSE);
    ecore_evas_focus_set(canvasOf(window), EINA_TRUE);
    settle();
}

void keyDown(Evas_Object* window, const char* key, unsigned int afterMs)
{
    evas_event_feed_key_down(
        evas_object_evas_get(window), key, key, nullptr, nullptr, s_timestamp += afterMs, nullptr);
}

void keyUp(Evas_Object* window, const char* key, unsigned int afterMs)
{
    evas_event_feed_key_up(
        evas_object_evas_get(window), key, key, nullptr, nullptr, s_timestamp += afterMs, nullptr);
}

void press(Evas_Object* window, const char* key)
{
    keyDown(window, key);
    keyUp(window, key);
    settle();
}

std::vector<Evas_Object*> windows()
{
    std::vector<Evas_Object*> result;
    Eina_List* canvases = ecore_evas_ecore_evas_list_get();
    void* entry = nullptr;
    EINA_LIST_FREE(canvases, entry)
    {
        Evas* canvas = ecore_evas_get(static_cast<Ecore_Evas*>(entry));
        for (Evas_Object* o = evas_object_bottom_get(canvas); o; o = evas_object_above_get(o)) {
            if (eina_streq(evas_object_type_get(o), "elm_win"))
                result.push_back(o);
        }
    }
    return result;
}

Box boxOf(const Evas_Object* object)
{
    Box box {};
    evas_object_geometry_get(object, &box.x, &box.y, &box.width, &box.height);
    return box;
}

} // namespace toolkit
