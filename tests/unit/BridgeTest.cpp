/// GLib's sources run in the toolkit's loop, which sleeps when there is nothing to do.
#include "app/GLibBridge.h"

#include <Ecore.h>
#include <glib-unix.h>

#include <atomic>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <thread>

#include <fcntl.h>
#include <netinet/in.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

using orbis::app::GLibBridge;
using Action = std::function<void()>;

constexpr auto kIn = static_cast<GIOCondition>(G_IO_IN);

double now()
{
    return static_cast<double>(g_get_monotonic_time()) / G_USEC_PER_SEC;
}

void block(double seconds)
{
    g_usleep(static_cast<gulong>(seconds * G_USEC_PER_SEC));
}

// Each runs an action once.
Eina_Bool ecoreCall(void* action)
{
    (*std::unique_ptr<Action>(static_cast<Action*>(action)))();
    return ECORE_CALLBACK_CANCEL;
}
/// Ecore calls timers and idle enterers before it sleeps; with a job it comes back to the test first.
Action* comingBack(const Action& action)
{
    return new Action([action] {
        ecore_job_add([](void*) {}, nullptr);
        action();
    });
}
void after(double seconds, const Action& action)
{
    ecore_timer_add(seconds, ecoreCall, comingBack(action));
}
void job(const Action& action)
{
    ecore_job_add([](void* call) { ecoreCall(call); }, comingBack(action));
}
guint attach(GSource* source, GSourceFunc call, const Action& action)
{
    const auto forget = [](gpointer own) { delete static_cast<Action*>(own); };
    g_source_set_callback(source, call, new Action(action), forget);
    const guint id = g_source_attach(source, nullptr);
    g_source_unref(source);
    return id;
}
gboolean glibCall(gpointer action)
{
    (*static_cast<Action*>(action))();
    return G_SOURCE_REMOVE;
}
guint glibAfter(guint milliseconds, const Action& action)
{
    return attach(g_timeout_source_new(milliseconds), glibCall, action);
}
void glibIdle(const Action& action)
{
    attach(g_idle_source_new(), glibCall, action);
}
guint onReady(int descriptor, GIOCondition condition, const Action& action)
{
    const GUnixFDSourceFunc call = [](gint, GIOCondition, gpointer own) { return glibCall(own); };
    return attach(g_unix_fd_source_new(descriptor, condition), G_SOURCE_FUNC(call), action);
}

class TheBridge : public testing::Test {
protected:
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
        const auto end = [](void* over) -> Eina_Bool {
            *static_cast<bool*>(over) = true;
            return ECORE_CALLBACK_RENEW;
        };
        Ecore_Timer* guard = ecore_timer_add(limit, end, &isOver);
        while (!condition() && !isOver)
            ecore_main_loop_iterate_may_block(1);
        ecore_timer_del(guard);
        return !isOver;
    }

    void passes(double seconds)
    {
        turnsUntil([] { return false; }, seconds);
    }
    void ring() const { EXPECT_EQ(write(m_pipe[1], "x", 1), 1); }

    std::optional<GLibBridge> m_bridge {std::in_place};
    int m_pipe[2] = {-1, -1};
};

TEST_F(TheBridge, LetsTheLoopSleep)
{
    // A source that waits for nothing in particular, and one whose time is far away.
    const guint watch = onReady(m_pipe[0], kIn, [] {});
    const guint later = glibAfter(3600 * 1000, [] {});
    passes(0.1);
    rusage before {};
    rusage after {};
    getrusage(RUSAGE_THREAD, &before);
    passes(1.0);
    getrusage(RUSAGE_THREAD, &after);
    EXPECT_LE(after.ru_nvcsw - before.ru_nvcsw, 3) << "something wakes the loop while nothing happens";
    g_source_remove(watch);
    g_source_remove(later);
}

TEST_F(TheBridge, NoticesADescriptorThatComesUnderTheNumberOfAnother)
{
    bool added = false;
    bool seen = false;
    onReady(m_pipe[0], kIn, [&] {
        // The number stays, what is behind it does not.
        int other[2];
        ASSERT_EQ(pipe2(other, O_CLOEXEC | O_NONBLOCK), 0);
        for (int end : {0, 1}) {
            ASSERT_EQ(dup3(other[end], m_pipe[end], O_CLOEXEC), m_pipe[end]);
            close(other[end]);
        }
        onReady(m_pipe[0], kIn, [&] { seen = true; });
        added = true;
    });
    ring();
    ASSERT_TRUE(turnsUntil([&] { return added; }));
    passes(0.05); // the loop has slept with it
    ASSERT_FALSE(seen);
    ring();
    EXPECT_TRUE(turnsUntil([&] { return seen; }));
}

TEST_F(TheBridge, LeavesEcoreItsDescriptors)
{
    // Ecore watches the same file as GLib, and goes on when GLib's source goes.
    int read = 0;
    const auto onBytes = [](void* count, Ecore_Fd_Handler* handler) -> Eina_Bool {
        char byte = 0;
        while (::read(ecore_main_fd_handler_fd_get(handler), &byte, 1) == 1)
            ++*static_cast<int*>(count);
        return ECORE_CALLBACK_RENEW;
    };
    Ecore_Fd_Handler* handler =
        ecore_main_fd_handler_add(m_pipe[0], ECORE_FD_READ, onBytes, &read, nullptr, nullptr);
    const int copy = dup(m_pipe[0]);
    const guint source = onReady(copy, kIn, [] {});
    passes(0.05);
    g_source_remove(source);
    close(copy);
    ring();
    EXPECT_TRUE(turnsUntil([&] { return read == 1; }));
    ecore_main_fd_handler_del(handler);
}

TEST_F(TheBridge, FollowsASourceThatChangesWhatItWaitsFor)
{
    GSourceFuncs functions {};
    functions.dispatch = [](GSource*, GSourceFunc call, gpointer data) -> gboolean {
        return call(data) || true;
    };
    GSource* source = g_source_ref(g_source_new(&functions, sizeof(GSource)));
    const gpointer tag = g_source_add_unix_fd(source, m_pipe[0], static_cast<GIOCondition>(0));
    int calls = 0;
    attach(source, glibCall, [&] {
        ++calls;
        g_source_modify_unix_fd(source, tag, static_cast<GIOCondition>(0));
    });
    ring();
    for (int round = 0; round < 3; ++round) {
        EXPECT_FALSE(turnsUntil([&] { return calls > round; }, 0.05)) << "it waits for nothing";
        g_source_modify_unix_fd(source, tag, kIn);
        EXPECT_TRUE(turnsUntil([&] { return calls > round; }));
    }
    g_source_destroy(source);
    g_source_unref(source);
}

TEST_F(TheBridge, ServesUrgentDataAloneAndFilesThatAreAlwaysReady)
{
    // Listening binds it to a port of its own.
    const int door = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    const int sender = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address {};
    socklen_t size = sizeof address;
    ASSERT_EQ(listen(door, 1), 0);
    ASSERT_EQ(getsockname(door, reinterpret_cast<sockaddr*>(&address), &size), 0);
    ASSERT_EQ(connect(sender, reinterpret_cast<sockaddr*>(&address), size), 0);
    const int receiver = accept(door, nullptr, nullptr);
    bool urgent = false;
    onReady(receiver, G_IO_PRI, [&] { urgent = true; });
    ASSERT_EQ(send(sender, "a", 1, 0), 1);
    EXPECT_FALSE(turnsUntil([&] { return urgent; }, 0.1)) << "ordinary data is not urgent";
    ASSERT_EQ(send(sender, "b", 1, MSG_OOB), 1);
    EXPECT_TRUE(turnsUntil([&] { return urgent; }));

    bool readable = false;
    const int file = open("/proc/self/exe", O_RDONLY | O_CLOEXEC);
    onReady(file, kIn, [&] { readable = true; });
    EXPECT_TRUE(turnsUntil([&] { return readable; }));
    for (int descriptor : {door, sender, receiver, file})
        close(descriptor);
}

TEST_F(TheBridge, RunsWhatOtherThreadsAndEveryKindOfCallbackAdd)
{
    std::atomic<bool> done {false};
    const Action finish = [&] { done = true; };
    const Action add = [&] { glibIdle(finish); };
    const std::pair<const char*, Action> kinds[] = {
        {"an idler", [&] { ecore_idler_add(ecoreCall, new Action(add)); }},
        {"an idle enterer", [&] { ecore_idle_enterer_add(ecoreCall, new Action(add)); }},
        {"a timer", [&] { ecore_timer_add(0.01, ecoreCall, new Action(add)); }},
        {"a job", [&] { ecore_job_add([](void* call) { ecoreCall(call); }, new Action(add)); }},
        {"a source", [&] { glibIdle([&] { glibAfter(5, add); }); }},
    };
    for (const auto& [kind, start] : kinds) {
        done = false;
        start();
        EXPECT_TRUE(turnsUntil([&] { return done.load(); }, 1.0)) << "added by " << kind;
    }
    done = false;
    std::thread other([&] {
        block(0.1); // the loop sleeps by now
        glibIdle(finish);
    });
    EXPECT_TRUE(turnsUntil([&] { return done.load(); })) << "added by a thread";
    other.join();
}

TEST_F(TheBridge, IsOnTimeAfterACallbackThatBlockedAndAfterASleep)
{
    constexpr double kDue = 0.3;
    constexpr double kBlocked = 0.2;
    const Action stall = [] { block(kBlocked); };
    const std::pair<const char*, Action> kinds[] = {
        {"job", [&] { job(stall); }},
        {"timer", [&] { after(0.01, stall); }},
        {"idle enterer", [&] { ecore_idle_enterer_add(ecoreCall, comingBack(stall)); }},
        {"GLib timeout", [&] { glibAfter(10, stall); }},
    };
    // A machine that is busy delays now and then; a loop that counts from before the call does so always.
    for (const auto& [kind, start] : kinds) {
        double late = 1e9;
        for (int attempt = 0; attempt < 3 && late > kBlocked / 2; ++attempt) {
            double fromEcore = 0;
            double fromGLib = 0;
            const double begin = now();
            after(kDue, [&] { fromEcore = now() - begin; });
            glibAfter(static_cast<guint>(kDue * 1000), [&] { fromGLib = now() - begin; });
            start();
            ASSERT_TRUE(turnsUntil([&] { return fromEcore > 0 && fromGLib > 0; }));
            EXPECT_GT(std::min(fromEcore, fromGLib), kDue - 0.02) << kind;
            late = std::max(fromEcore, fromGLib) - kDue;
        }
        EXPECT_LT(late, kBlocked / 2) << kind;
    }

    double fired = 0;
    glibAfter(150, [&] { // the loop sleeps that long before
        after(0.1, [&fired, begin = now()] { fired = now() - begin; });
    });
    ASSERT_TRUE(turnsUntil([&] { return fired > 0; }));
    EXPECT_GT(fired, 0.09) << "a timer counted from before the sleep";
}

TEST_F(TheBridge, RunsEitherLoopInsideTheOther)
{
    // Ecore's loop runs a job that runs GLib's loop, which calls back one that runs Ecore's.
    bool innermost = false;
    bool inner = false;
    bool outer = false;
    const auto nestEcore = [&] {
        after(0.02, [&] { innermost = true; });
        while (!innermost)
            ecore_main_loop_iterate_may_block(1);
        glibAfter(20, [&] { inner = true; });
    };
    job([&] {
        glibIdle(nestEcore);
        while (!inner)
            g_main_context_iteration(nullptr, TRUE);
        outer = true;
    });
    EXPECT_TRUE(turnsUntil([&] { return outer; }));
}

TEST_F(TheBridge, GivesEcoreItsTurnWhileGLibAlwaysHasSomething)
{
    int turns = 0;
    bool isServed = false;
    const auto count = [](gpointer turn) -> gboolean {
        ++*static_cast<int*>(turn);
        return G_SOURCE_CONTINUE;
    };
    const guint flood = g_idle_add_full(G_PRIORITY_HIGH, count, &turns, nullptr);
    passes(0.05);
    const int before = turns;
    job([&] { isServed = true; });
    EXPECT_TRUE(turnsUntil([&] { return isServed; }));
    EXPECT_LE(turns - before, 3) << "one dispatch a turn";
    g_source_remove(flood);
}

TEST_F(TheBridge, TellsWhenTheLoopIsAboutToSleep)
{
    int sleeps = 0;
    bool queued = false;
    m_bridge.reset();
    m_bridge.emplace([&] {
        EXPECT_FALSE(queued) << "something was still to be done";
        return ++sleeps == 1; // pretends to have done something: the loop comes by again
    });
    after(0.02, [&] {
        queued = true;
        job([&] { queued = false; });
    });
    passes(0.1);
    EXPECT_GE(sleeps, 3);

    // A loop that was asked to end does not sleep any more.
    int atTheEnd = 0;
    after(0.02, [&] {
        ecore_main_loop_quit();
        atTheEnd = sleeps;
    });
    ecore_main_loop_begin();
    EXPECT_EQ(sleeps, atTheEnd);
}

} // namespace

int main(int argc, char** argv)
{
    testing::InitGoogleTest(&argc, argv);
    setenv("ECORE_NO_SYSTEM_MODULES", "1", 1);
    setenv("EINA_LOG_LEVEL", "0", 1);
    ecore_init();
    const int result = RUN_ALL_TESTS();
    ecore_shutdown();
    return result;
}
