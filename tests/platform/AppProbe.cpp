/// A small application on the platform: tells on standard output what becomes of it. Each argument without
/// "=" is something that it does.
#include "app.h"
#include "elm_flux.h"

#include <Elementary.h>

#include <unistd.h>

#include <algorithm>
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

bool on_create(void*)
{
    tell("create");
    // As a child has it.
    if (does("environment") && system("echo HOME=$HOME; echo XDG_RUNTIME_DIR=${XDG_RUNTIME_DIR-none}") != 0)
        return false;
    s_window = elm_win_add(nullptr, "probe", ELM_WIN_BASIC);
    elm_flux_manager_init(s_window);
    evas_object_show(s_window);
    const auto end = [](void*) -> Eina_Bool {
        elm_exit();
        return ECORE_CALLBACK_CANCEL;
    };
    ecore_timer_add(0.05, end, nullptr);
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

int main(int argc, char** argv)
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
    for (int run = does("twice") ? 2 : 1; run > 0; --run)
        tell("result " + std::to_string(ui_app_main(argc, argv, &callbacks, nullptr)));
    return 0;
}
