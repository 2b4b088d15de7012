/// A small application on the platform: tells on standard output what becomes of it. Each argument without
/// "=" is something that it does.
#include "app.h"
#include "elm_flux.h"

#include <Elementary.h>
#include <glib.h>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

std::vector<std::string> s_tasks;
Evas_Object* s_window = nullptr;

bool does(const char* task)
{
    for (const std::string& one : s_tasks) {
        if (one == task)
            return true;
    }
    return false;
}

void tell(const std::string& line)
{
    printf("%s\n", line.c_str());
    fflush(stdout);
}

Eina_Bool on_end(void*)
{
    elm_exit();
    return ECORE_CALLBACK_CANCEL;
}

Eina_Bool on_due(void* begin)
{
    const gint64 elapsed = g_get_monotonic_time() - *static_cast<gint64*>(begin);
    tell(std::to_string(elapsed / 1000));
    return on_end(nullptr);
}

void on_stall(void*)
{
    g_usleep(500000);
}

/// A timer of 0.8 seconds, and a callback that takes 0.5 of them.
void beLate()
{
    static gint64 s_begin;
    s_begin = g_get_monotonic_time();
    ecore_timer_add(0.8, on_due, &s_begin);
    ecore_job_add(on_stall, nullptr);
}

void showWindow()
{
    s_window = elm_win_add(nullptr, "probe", ELM_WIN_BASIC);
    elm_flux_manager_init(s_window);
    evas_object_show(s_window);
}

bool on_create(void*)
{
    tell("create");
    if (does("environment")) {
        // As a child has it.
        fflush(stdout);
        if (system("echo \"HOME=$HOME\"; echo \"XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR-none}\"") != 0)
            return false;
    }
    if (does("window"))
        showWindow();
    if (does("timer"))
        beLate();
    else
        ecore_timer_add(0.05, on_end, nullptr);
    return true;
}

void on_terminate(void*)
{
    tell("terminate");
    if (s_window) {
        elm_flux_manager_fini();
        evas_object_del(s_window);
        s_window = nullptr;
    }
    // A window manager's answer, or whatever else the toolkit still has to say.
    for (int i = 0; i < 10; ++i)
        ecore_main_loop_iterate_may_block(0);
}

} // namespace

int main(int argc, char** argv)
{
    for (int i = 1; i < argc; ++i)
        s_tasks.emplace_back(argv[i]);
    ui_app_lifecycle_callback_s callbacks {};
    callbacks.create = on_create;
    callbacks.terminate = on_terminate;
    callbacks.pause = [](void*) { tell("pause"); };
    callbacks.resume = [](void*) { tell("resume"); };
    for (int run = does("twice") ? 2 : 1; run > 0; --run)
        tell("result " + std::to_string(ui_app_main(argc, argv, &callbacks, nullptr)));
    return 0;
}
