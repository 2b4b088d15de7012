// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Application.h"

#include "app.h"
#include "elm_flux.h"

#include <Elementary.h>

#include <glib-unix.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <iostream>
#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<std::string> s_tasks;
Evas_Object* s_window = nullptr;

bool does(const char* task)
{
    return std::count(s_tasks.begin(), s_tasks.end(), task) > 0;
}

void tell(const std::string& line)
{
    std::cout << line << std::endl;
}

/// Each kind of event of the library's that the bus comes by.
void tellOfGLib()
{
    static int s_ends[2] = {-1, -1};
    if (pipe(s_ends) != 0)
        return;
    const auto onDescriptor = [](int, GIOCondition, void*) -> gboolean {
        tell("descriptor");
        elm_exit();
        return G_SOURCE_REMOVE;
    };
    const auto onTime = [](void*) -> gboolean {
        tell("timeout");
        close(s_ends[1]);
        return G_SOURCE_REMOVE;
    };
    const auto onIdle = [](void*) -> gboolean {
        tell("idle");
        return G_SOURCE_REMOVE;
    };
    g_unix_fd_add(s_ends[0], G_IO_HUP, onDescriptor, nullptr);
    g_timeout_add(20, onTime, nullptr);
    g_idle_add(onIdle, nullptr);
}

Eina_Bool on_time(void*)
{
    if (does("signal"))
        raise(SIGTERM);
    else
        elm_exit();
    return ECORE_CALLBACK_CANCEL;
}

bool on_create(void*)
{
    tell("create");
    // As a child has it.
    if (does("environment") && system("echo HOME=$HOME; echo XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR-none}") != 0)
        return false;
    s_window = elm_win_add(nullptr, "probe", ELM_WIN_BASIC);
    elm_flux_manager_init(s_window);
    evas_object_show(s_window);
    if (does("glib"))
        tellOfGLib();
    else
        ecore_timer_add(0.05, on_time, nullptr);
    return true;
}

void on_terminate(void*)
{
    tell("terminate");
    elm_flux_manager_fini();
    evas_object_del(std::exchange(s_window, nullptr));
    // A window manager's answer, or whatever else the toolkit still has to say.
    for (int i = 0; i < 10; ++i)
        ecore_main_loop_iterate_may_block(0);
}

} // namespace

int runApplication(int argc, char** argv)
{
    s_tasks.assign(argv + 1, argv + argc);
    int ends[2] = {-1, -1};
    if (does("unheard") && pipe(ends) == 0 && dup2(ends[1], STDERR_FILENO) >= 0)
        close(ends[0]); // nobody takes what is written to standard error
    ui_app_lifecycle_callback_s callbacks {};
    callbacks.create = on_create;
    callbacks.terminate = on_terminate;
    callbacks.pause = [](void*) { tell("pause"); };
    callbacks.resume = [](void*) { tell("resume"); };
    callbacks.app_control = [](app_control_h, void*) { tell("app_control"); };
    for (int run = does("twice") ? 2 : 1; run > 0; --run)
        tell("result " + std::to_string(ui_app_main(argc, argv, &callbacks, nullptr)));
    return 0;
}
