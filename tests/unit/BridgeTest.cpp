/// GLib's sources run in the toolkit's loop, which sleeps when there is nothing to do.
#include "Fixtures.h"

#include <glib.h>

namespace {

class TheBridge : public ToolkitTest { };

/// An idle that adds a timeout, which comes three times and then adds another idle.
struct Chain {
    int ticks = 0;
    bool done = false;

    static gboolean on_start(gpointer chain)
    {
        g_timeout_add(5, on_tick, chain);
        return G_SOURCE_REMOVE;
    }
    static gboolean on_tick(gpointer chain)
    {
        if (++static_cast<Chain*>(chain)->ticks < 3)
            return G_SOURCE_CONTINUE;
        g_idle_add(on_end, chain);
        return G_SOURCE_REMOVE;
    }
    static gboolean on_end(gpointer chain)
    {
        static_cast<Chain*>(chain)->done = true;
        return G_SOURCE_REMOVE;
    }
};

Eina_Bool on_counted(void* count)
{
    ++*static_cast<int*>(count);
    return ECORE_CALLBACK_RENEW;
}

TEST_F(TheBridge, RunsASourceThatAnotherOneAdds)
{
    const toolkit::RealTime real;
    Chain chain;
    g_idle_add(Chain::on_start, &chain);
    // Without the timer of runUntil(): nothing else may wake the loop.
    int guards = 0;
    Ecore_Timer* guard = ecore_timer_add(1.0, on_counted, &guards);
    while (!chain.done && guards == 0)
        ecore_main_loop_iterate_may_block(1);
    EXPECT_EQ(guards, 0) << "the loop slept through it";
    EXPECT_EQ(chain.ticks, 3);
    ecore_timer_del(guard);
}

TEST_F(TheBridge, LetsTheLoopSleep)
{
    toolkit::runUntil([] { return false; }, 0.2);
    toolkit::settle();
    const toolkit::RealTime real;
    int turns = 0;
    int seconds = 0;
    Ecore_Idle_Enterer* counter = ecore_idle_enterer_add(on_counted, &turns);
    Ecore_Timer* second = ecore_timer_add(1.0, on_counted, &seconds);
    while (seconds < 2)
        ecore_main_loop_iterate_may_block(1);
    EXPECT_LE(turns, 4) << "something wakes the loop while nothing happens";
    ecore_timer_del(second);
    ecore_idle_enterer_del(counter);
}

} // namespace
