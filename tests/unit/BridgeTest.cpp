/// GLib's sources run in the toolkit's loop, which sleeps when there is nothing to do.
#include "Daemon.h"
#include "Fixtures.h"

#include <glib-unix.h>
#include <unistd.h>

namespace {

class TheBridge : public ToolkitTest {
protected:
    static gboolean on_source(gpointer count)
    {
        ++*static_cast<int*>(count);
        return G_SOURCE_REMOVE;
    }
};

TEST_F(TheBridge, RunsIdlesAndTimeouts)
{
    int idles = 0;
    int timeouts = 0;
    g_idle_add(on_source, &idles);
    g_timeout_add(30, on_source, &timeouts);
    EXPECT_TRUE(toolkit::runUntil([&] { return idles == 1; }, 1));
    EXPECT_EQ(timeouts, 0);
    EXPECT_TRUE(toolkit::runUntil([&] { return timeouts == 1; }, 1));
    EXPECT_EQ(idles, 1);

    int ticks = 0;
    const tv::Source repeating {g_timeout_add(
        10, [](gpointer count) -> gboolean { return ++*static_cast<int*>(count) < 100; }, &ticks)};
    EXPECT_TRUE(toolkit::runUntil([&] { return ticks >= 5; }, 2));
}

TEST_F(TheBridge, RunsASourceThatAnotherOneAdds)
{
    const toolkit::RealTime real;
    static int s_inner;
    s_inner = 0;
    g_idle_add(
        [](gpointer) -> gboolean {
            g_timeout_add(
                5,
                [](gpointer) -> gboolean {
                    g_idle_add(on_source, &s_inner);
                    return G_SOURCE_REMOVE;
                },
                nullptr);
            return G_SOURCE_REMOVE;
        },
        nullptr);
    // Without the timer of runUntil(): nothing else may wake the loop.
    Ecore_Timer* guard = ecore_timer_add(
        3.0, [](void*) -> Eina_Bool { return ECORE_CALLBACK_RENEW; }, nullptr);
    const double before = ecore_time_get();
    while (s_inner == 0 && ecore_time_get() - before < 2.0)
        ecore_main_loop_iterate_may_block(1);
    EXPECT_EQ(s_inner, 1);
    EXPECT_LT(ecore_time_get() - before, 1.0);
    ecore_timer_del(guard);
}

TEST_F(TheBridge, WakesForADescriptor)
{
    int ends[2];
    ASSERT_EQ(pipe(ends), 0);
    int calls = 0;
    const auto onReadable = [](gint descriptor, GIOCondition, gpointer count) -> gboolean {
        char byte;
        EXPECT_EQ(read(descriptor, &byte, 1), 1);
        ++*static_cast<int*>(count);
        return G_SOURCE_CONTINUE;
    };
    {
        const tv::Source source {g_unix_fd_add(ends[0], G_IO_IN, onReadable, &calls)};
        toolkit::runUntil([] { return false; }, 0.05);
        EXPECT_EQ(calls, 0);
        EXPECT_EQ(write(ends[1], "ab", 2), 2);
        EXPECT_TRUE(toolkit::runUntil([&] { return calls == 2; }, 1));
    }
    EXPECT_EQ(write(ends[1], "c", 1), 1);
    toolkit::runUntil([] { return false; }, 0.05);
    EXPECT_EQ(calls, 2) << "a removed source was called";
    close(ends[0]);
    close(ends[1]);
}

TEST_F(TheBridge, AnswersACallToAServiceOfItsOwn)
{
    const tv::ConnectionPtr connection {g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, nullptr)};
    const tv::NodeInfoPtr description {g_dbus_node_info_new_for_xml(
        "<node><interface name='test.Bridge'><method name='Ping'/></interface></node>", nullptr)};
    const auto onCall = [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
                            GVariant*, GDBusMethodInvocation* invocation,
                            gpointer) { g_dbus_method_invocation_return_value(invocation, nullptr); };
    const GDBusInterfaceVTable table {onCall, nullptr, nullptr, {}};
    const guint id = g_dbus_connection_register_object(
        connection.get(), "/bridge", description->interfaces[0], &table, nullptr, nullptr, nullptr);
    int answers = 0;
    const GAsyncReadyCallback onAnswer = [](GObject* source, GAsyncResult* result, gpointer count) {
        const tv::VariantPtr value {
            g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, nullptr)};
        *static_cast<int*>(count) += value ? 1 : 1000;
    };
    constexpr int kCalls = 50;
    for (int i = 0; i < kCalls; ++i)
        g_dbus_connection_call(connection.get(), g_dbus_connection_get_unique_name(connection.get()),
            "/bridge", "test.Bridge", "Ping", nullptr, nullptr, G_DBUS_CALL_FLAGS_NONE, 5000, nullptr,
            onAnswer, &answers);
    EXPECT_TRUE(toolkit::runUntil([&] { return answers >= kCalls; }));
    EXPECT_EQ(answers, kCalls);
    g_dbus_connection_unregister_object(connection.get(), id);
}

TEST_F(TheBridge, LetsTheLoopSleep)
{
    toolkit::runUntil([] { return false; }, 0.2);
    toolkit::settle();
    const toolkit::RealTime real;
    int turns = 0;
    int seconds = 0;
    Ecore_Idle_Enterer* counter = ecore_idle_enterer_add(
        [](void* count) -> Eina_Bool {
            ++*static_cast<int*>(count);
            return ECORE_CALLBACK_RENEW;
        },
        &turns);
    Ecore_Timer* second = ecore_timer_add(
        1.0,
        [](void* count) -> Eina_Bool {
            ++*static_cast<int*>(count);
            return ECORE_CALLBACK_RENEW;
        },
        &seconds);
    while (seconds < 2)
        ecore_main_loop_iterate_may_block(1);
    ecore_timer_del(second);
    EXPECT_LE(turns, 4) << "something wakes the loop while nothing happens";
    ecore_idle_enterer_del(counter);
}

} // namespace
