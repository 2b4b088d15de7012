/// Tells what is drawn on the X display DISPLAY: damage-probe SECONDS prints a line "X Y WIDTH HEIGHT" for
/// every rectangle of the screen that somebody draws into meanwhile, after a line "ready".
#include <Ecore.h>
#include <Ecore_X.h>

#include <cstdio>
#include <cstdlib>

namespace {

/// The first report is of the whole screen, as if it had just been drawn.
Eina_Bool on_damage(void*, int, void* event)
{
    static bool isReady = false;
    if (!isReady) {
        isReady = true;
        puts("ready");
        return ECORE_CALLBACK_PASS_ON;
    }
    const auto* damage = static_cast<Ecore_X_Event_Damage*>(event);
    printf("%d %d %d %d\n", damage->area.x, damage->area.y, damage->area.width, damage->area.height);
    return ECORE_CALLBACK_PASS_ON;
}

Eina_Bool on_end(void*)
{
    ecore_main_loop_quit();
    return ECORE_CALLBACK_CANCEL;
}

} // namespace

int main(int argc, char** argv)
{
    const double seconds = argc > 1 ? strtod(argv[1], nullptr) : 0;
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 1);
    if (seconds <= 0 || !ecore_init() || !ecore_x_init(nullptr) || !ecore_x_damage_query())
        return 1;
    ecore_event_handler_add(ECORE_X_EVENT_DAMAGE_NOTIFY, on_damage, nullptr);
    ecore_x_damage_new(ecore_x_window_root_first_get(), ECORE_X_DAMAGE_REPORT_RAW_RECTANGLES);
    ecore_x_sync();
    ecore_timer_add(seconds, on_end, nullptr);
    ecore_main_loop_begin();
    ecore_x_shutdown();
    ecore_shutdown();
    return 0;
}
