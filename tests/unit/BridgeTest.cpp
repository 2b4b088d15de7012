// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// GLib's sources run in the toolkit's loop, which sleeps when there is nothing to do.
#include "app/GLibBridge.h"

#include <Ecore.h>
#include <glib-unix.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <thread>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using Action = std::function<void()>;

double now()
{
    return static_cast<double>(g_get_monotonic_time()) / G_USEC_PER_SEC;
}

// Each runs an action once, as Ecore or GLib calls it.
Eina_Bool onceQuietly(void* action)
{
    (*static_cast<Action*>(action))();
    return ECORE_CALLBACK_CANCEL;
}
/// Ecore calls timers before it sleeps; the job makes it come back to the test first.
Eina_Bool once(void* action)
{
    ecore_job_add([](void*) {}, nullptr);
    return onceQuietly(action);
}
void onceForAll(void* action)
{
    once(action);
}
gboolean onceSource(gpointer action)
{
    return onceQuietly(action);
}
gboolean onceReady(gint, GIOCondition, gpointer action)
{
    return onceQuietly(action);
}

class TheBridge : public testing::Test {
protected:
    static void SetUpTestSuite()
    {
        setenv("ECORE_NO_SYSTEM_MODULES", "1", 1);
        ecore_init();
    }
    static void TearDownTestSuite() { ecore_shutdown(); }
    void SetUp() override { ASSERT_EQ(pipe2(m_pipe, O_CLOEXEC | O_NONBLOCK), 0); }
    void TearDown() override
    {
        close(m_pipe[0]);
        close(m_pipe[1]);
    }

    /// Turns the loop, which sleeps in between. @return whether the condition came true in time
    bool turnsUntil(const std::function<bool()>& condition, double limit = 4.0)
    {
        bool isOver = false;
        Action end = [&] { isOver = true; };
        Ecore_Timer* guard = ecore_timer_add(limit, once, &end);
        while (!condition() && !isOver)
            ecore_main_loop_iterate_may_block(1);
        if (!isOver)
            ecore_timer_del(guard);
        return !isOver;
    }

    void ring() const { EXPECT_EQ(write(m_pipe[1], "x", 1), 1); }

    std::optional<orbis::app::GLibBridge> m_bridge {std::in_place};
    int m_pipe[2] = {-1, -1};
};

TEST_F(TheBridge, LetsTheLoopSleep)
{
    // A source that waits for nothing in particular, and one whose time is far away.
    const guint watch = g_unix_fd_add(m_pipe[0], G_IO_IN, onceReady, nullptr);
    const guint later = g_timeout_add_seconds(3600, onceSource, nullptr);
    turnsUntil([] { return false; }, 0.1);
    rusage before {};
    rusage after {};
    getrusage(RUSAGE_THREAD, &before);
    turnsUntil([] { return false; }, 1.0);
    getrusage(RUSAGE_THREAD, &after);
    EXPECT_LE(after.ru_nvcsw - before.ru_nvcsw, 3) << "something wakes the loop while nothing happens";
    g_source_remove(watch);
    g_source_remove(later);
}

TEST_F(TheBridge, NoticesADescriptorThatComesUnderTheNumberOfAnother)
{
    bool seen = false;
    Action second = [&] { seen = true; };
    Action first = [&] {
        // The number stays, what is behind it does not.
        int other[2] = {-1, -1};
        ASSERT_EQ(pipe2(other, O_CLOEXEC | O_NONBLOCK), 0);
        for (const int end : {0, 1}) {
            close(m_pipe[end]);
            ASSERT_EQ(dup2(other[end], m_pipe[end]), m_pipe[end]);
            close(other[end]);
        }
        g_unix_fd_add(m_pipe[0], G_IO_IN, onceReady, &second);
    };
    g_unix_fd_add(m_pipe[0], G_IO_IN, onceReady, &first);
    ring();
    ASSERT_TRUE(
        turnsUntil([&] { return g_main_context_find_source_by_user_data(nullptr, &second) != nullptr; }));
    turnsUntil([] { return false; }, 0.05); // the loop has slept with it
    ring();
    EXPECT_TRUE(turnsUntil([&] { return seen; }));
}

TEST_F(TheBridge, FollowsASourceThatChangesWhatItWaitsFor)
{
    constexpr auto kNothing = static_cast<GIOCondition>(0);
    struct Changing {
        GSource* source = g_timeout_source_new_seconds(3600);
        gpointer tag = nullptr;
        int calls = 0;
    } changing;
    changing.tag = g_source_add_unix_fd(changing.source, m_pipe[0], kNothing);
    const auto onReady = [](gpointer data) -> gboolean {
        auto* self = static_cast<Changing*>(data);
        ++self->calls;
        g_source_modify_unix_fd(self->source, self->tag, kNothing);
        return G_SOURCE_CONTINUE;
    };
    g_source_set_callback(changing.source, onReady, &changing, nullptr);
    g_source_attach(changing.source, nullptr);
    ring();
    for (int calls = 1; calls <= 2; ++calls) {
        g_source_modify_unix_fd(changing.source, changing.tag, G_IO_IN);
        EXPECT_TRUE(turnsUntil([&] { return changing.calls == calls; }));
        EXPECT_FALSE(turnsUntil([&] { return changing.calls > calls; }, 0.05));
    }
    g_source_destroy(changing.source);
    g_source_unref(changing.source);
}

TEST_F(TheBridge, ServesUrgentDataAloneAndFilesThatAreAlwaysReady)
{
    int ends[2] = {-1, -1};
    ASSERT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
    bool urgent = false;
    Action note = [&] { urgent = true; };
    g_unix_fd_add(ends[1], G_IO_PRI, onceReady, &note);
    ASSERT_EQ(send(ends[0], "a", 1, 0), 1);
    EXPECT_FALSE(turnsUntil([&] { return urgent; }, 0.1)) << "ordinary data is not urgent";
    ASSERT_EQ(send(ends[0], "b", 1, MSG_OOB), 1);
    EXPECT_TRUE(turnsUntil([&] { return urgent; }));

    bool readable = false;
    Action read = [&] { readable = true; };
    const int file = open("/proc/self/exe", O_RDONLY | O_CLOEXEC);
    g_unix_fd_add(file, G_IO_IN, onceReady, &read);
    EXPECT_TRUE(turnsUntil([&] { return readable; }));
    for (int descriptor : {ends[0], ends[1], file})
        close(descriptor);
}

TEST_F(TheBridge, RunsWhatOtherThreadsAndEveryKindOfCallbackAdd)
{
    std::atomic<bool> done {false};
    Action finish = [&] { done = true; };
    std::thread other([&] {
        g_usleep(100000); // the loop sleeps by now
        g_main_context_invoke(nullptr, onceSource, &finish);
    });
    EXPECT_TRUE(turnsUntil([&] { return done.load(); })) << "added by a thread";
    other.join();

    Action add = [&] { g_idle_add(onceSource, &finish); };
    const std::pair<const char*, std::function<void()>> kinds[] = {
        {"an idler", [&] { ecore_idler_add(onceQuietly, &add); }},
        {"an idle enterer", [&] { ecore_idle_enterer_add(onceQuietly, &add); }},
        {"a timer", [&] { ecore_timer_add(0.01, onceQuietly, &add); }},
        {"a GLib source", [&] { g_timeout_add(5, onceSource, &add); }},
        {"a job", [&] { ecore_job_add([](void* action) { onceQuietly(action); }, &add); }},
    };
    for (const auto& [kind, start] : kinds) {
        done = false;
        start();
        EXPECT_TRUE(turnsUntil([&] { return done.load(); }, 1.0)) << "added by " << kind;
    }
}

TEST_F(TheBridge, IsOnTimeAfterACallbackThatBlocked)
{
    constexpr double kDue = 0.3;
    constexpr double kBlocked = 0.2;
    Action stall = [=] { g_usleep(static_cast<gulong>(kBlocked * G_USEC_PER_SEC)); };
    const std::pair<const char*, std::function<void()>> kinds[] = {
        {"a job", [&] { ecore_job_add(onceForAll, &stall); }},
        {"a timer", [&] { ecore_timer_add(0.01, once, &stall); }},
        {"an idle enterer", [&] { ecore_idle_enterer_add(once, &stall); }},
        {"a GLib timeout", [&] { g_timeout_add(10, onceSource, &stall); }},
    };
    // A machine that is busy delays now and then; a loop that counts from before the call does so always.
    for (const auto& [kind, start] : kinds) {
        double late = 1e9;
        for (int attempt = 0; attempt < 3 && late > kBlocked / 2; ++attempt) {
            double fromEcore = 0;
            double fromGLib = 0;
            const double begin = now();
            Action ecore = [&] { fromEcore = now() - begin; };
            Action glib = [&] { fromGLib = now() - begin; };
            ecore_timer_add(kDue, once, &ecore);
            g_timeout_add(static_cast<guint>(kDue * 1000), onceSource, &glib);
            start();
            ASSERT_TRUE(turnsUntil([&] { return fromEcore > 0 && fromGLib > 0; }));
            EXPECT_GT(std::min(fromEcore, fromGLib), kDue - 0.02) << kind;
            late = std::max(fromEcore, fromGLib) - kDue;
        }
        EXPECT_LT(late, kBlocked / 2) << kind;
    }
}

TEST_F(TheBridge, TellsACallbackTheTimeAtWhichItRuns)
{
    double behind = -1;
    Action look = [&] { behind = ecore_time_get() - ecore_loop_time_get(); };
    g_timeout_add(150, onceSource, &look); // the loop sleeps that long before
    ASSERT_TRUE(turnsUntil([&] { return behind >= 0; }));
    EXPECT_LT(behind, 0.1) << "what begins to move would have begun before the sleep";
}

TEST_F(TheBridge, GivesEcoreItsTurn)
{
    // GLib always has something; Ecore's jobs are served all the same.
    int turns = 0;
    bool served = false;
    Action job = [&] { served = true; };
    const auto onIdle = [](gpointer count) -> gboolean {
        ++*static_cast<int*>(count);
        return G_SOURCE_CONTINUE;
    };
    const guint flood = g_idle_add_full(G_PRIORITY_HIGH, onIdle, &turns, nullptr);
    ecore_job_add(onceForAll, &job);
    EXPECT_TRUE(turnsUntil([&] { return served; }));
    EXPECT_LE(turns, 3) << "one dispatch a turn";
    g_source_remove(flood);
}

TEST_F(TheBridge, TellsWhenTheLoopIsAboutToSleep)
{
    int sleeps = 0;
    bool queued = false;
    bool wrong = false;
    m_bridge.emplace([&] {
        ++sleeps;
        wrong = wrong || queued;
        return sleeps == 1; // pretends to have done something: the loop comes by again
    });
    Action work = [&] { queued = false; };
    Action queue = [&] {
        queued = true;
        ecore_job_add(onceForAll, &work);
    };
    ecore_timer_add(0.02, once, &queue);
    turnsUntil([] { return false; }, 0.1);
    EXPECT_GE(sleeps, 3);
    EXPECT_FALSE(wrong) << "something was still to be done";
}

} // namespace
