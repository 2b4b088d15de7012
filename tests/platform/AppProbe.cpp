/// A small application on the platform: tells on standard output what becomes of it. Each argument without
/// "=" is something that it does.
#include "app.h"
#include "elm_flux.h"

#include <Elementary.h>
#include <glib.h>

#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

namespace {

std::vector<std::string> s_tasks;
Evas_Object* s_window = nullptr;
gint64 s_begin = 0;

bool does(const char* task)
{
    return std::count(s_tasks.begin(), s_tasks.end(), task) > 0;
}

void tell(const std::string& line)
{
    printf("%s\n", line.c_str());
    fflush(stdout);
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
    if (does("window")) {
        s_window = elm_win_add(nullptr, "probe", ELM_WIN_BASIC);
        elm_flux_manager_init(s_window);
        evas_object_show(s_window);
    }
    const auto end = [](void*) -> Eina_Bool {
        if (does("timer"))
            tell(std::to_string((g_get_monotonic_time() - s_begin) / 1000));
        elm_exit();
        return ECORE_CALLBACK_CANCEL;
    };
    s_begin = g_get_monotonic_time();
    ecore_timer_add(does("timer") ? 0.8 : 0.05, end, nullptr);
    if (does("timer"))
        ecore_job_add([](void*) { g_usleep(500000); }, nullptr);
    return true;
}

void on_terminate(void*)
{
    tell("terminate");
    if (s_window) {
        elm_flux_manager_fini();
        evas_object_del(std::exchange(s_window, nullptr));
    }
    // A window manager's answer, or whatever else the toolkit still has to say.
    for (int i = 0; i < 10; ++i)
        ecore_main_loop_iterate_may_block(0);
}

/// Nobody takes what is written to standard error.
void loseReader()
{
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0)
        return;
    dup2(ends[1], STDERR_FILENO);
    close(ends[0]);
    close(ends[1]);
}

} // namespace

int main(int argc, char** argv)
{
    s_tasks.assign(argv + 1, argv + argc);
    if (does("unheard"))
        loseReader();
    ui_app_lifecycle_callback_s callbacks {};
    callbacks.create = on_create;
    callbacks.terminate = on_terminate;
    callbacks.pause = [](void*) { tell("pause"); };
    callbacks.resume = [](void*) { tell("resume"); };
    for (int run = does("twice") ? 2 : 1; run > 0; --run)
        tell("result " + std::to_string(ui_app_main(argc, argv, &callbacks, nullptr)));
    return 0;
}
