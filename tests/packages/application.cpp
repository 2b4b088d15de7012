// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Somebody else's program on the platform: a window, a popup with a button, and an end.
#include <Elementary.h>
#include <app.h>
#include <dlog.h>
#include <elm_flux.h>
#include <vconf.h>

static Eina_Bool onTimer(void*)
{
    elm_exit();
    return ECORE_CALLBACK_CANCEL;
}

static bool onCreate(void*)
{
    Evas_Object* window = elm_win_add(nullptr, "hello", ELM_WIN_BASIC);
    elm_flux_manager_init(window);
    elm_object_signal_emit(window, "SetDim", "");
    Evas_Object* popup = elm_flux_popup_add(window);
    evas_object_show(popup);
    evas_object_show(window);
    vconf_set_int("memory/hello/shown", 1);
    dlog_print(DLOG_INFO, "hello", "%s", "shown");
    ecore_timer_add(0.2, onTimer, nullptr);
    return true;
}

int main(int argc, char** argv)
{
    ui_app_lifecycle_callback_s callbacks {};
    callbacks.create = onCreate;
    return ui_app_main(argc, argv, &callbacks, nullptr);
}
