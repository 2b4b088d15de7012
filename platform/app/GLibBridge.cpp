// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/GLibBridge.h"

#include <poll.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <ctime>
#include <utility>

namespace orbis::app {

namespace {

using Sets = GLibBridge::Sets;

/// The one that lives; Ecore's hook carries no data.
GLibBridge* s_bridge = nullptr;

constexpr double kForever = -1.0;

bool isIn(int descriptor, const fd_set* set)
{
    return set && FD_ISSET(descriptor, set);
}

/// Adds Ecore's descriptors: mostly one, the epoll descriptor behind which it keeps the others.
void addSets(int count, const Sets& sets, std::vector<GPollFD>& all)
{
    for (int i = 0; i < count; ++i) {
        int events = isIn(i, sets.read) ? G_IO_IN : 0;
        events |= isIn(i, sets.write) ? G_IO_OUT : 0;
        events |= isIn(i, sets.except) ? G_IO_PRI : 0;
        if (events)
            all.push_back({i, static_cast<gushort>(events), 0});
    }
}

/// Leaves the descriptor in the set only if it is ready. @return how many are left of it
int keepIf(bool ready, int descriptor, fd_set* set)
{
    if (!isIn(descriptor, set))
        return 0;
    if (!ready)
        FD_CLR(descriptor, set);
    return ready ? 1 : 0;
}

/// @return what select() would: how much is ready, or -1 when a descriptor is none
int fillSets(const GPollFD* begin, const GPollFD* end, Sets& sets)
{
    int ready = 0;
    bool bad = false;
    for (const GPollFD* one = begin; one != end; ++one) {
        ready += keepIf(one->revents & (G_IO_IN | G_IO_HUP | G_IO_ERR), one->fd, sets.read);
        ready += keepIf(one->revents & (G_IO_OUT | G_IO_ERR), one->fd, sets.write);
        ready += keepIf(one->revents & G_IO_PRI, one->fd, sets.except);
        bad = bad || (one->revents & G_IO_NVAL);
    }
    return bad ? -1 : ready;
}

/// What is left of Ecore's time-out, seconds. Ecore counts it from the time it woke last; what its callbacks
/// took since then has passed already, and a timer would come late by that much.
double remaining(const timeval* timeout)
{
    if (!timeout)
        return kForever;
    const double seconds = static_cast<double>(timeout->tv_sec) + static_cast<double>(timeout->tv_usec) / 1e6;
    return std::max(0.0, seconds - std::max(0.0, ecore_time_get() - ecore_loop_time_get()));
}

/// @return poll()'s result, its errno included
int pollFor(std::vector<GPollFD>& descriptors, double seconds)
{
    static_assert(sizeof(GPollFD) == sizeof(pollfd), "GLib promises that they are the same");
    timespec limit {};
    limit.tv_sec = static_cast<time_t>(std::max(0.0, seconds));
    limit.tv_nsec = static_cast<long>((std::max(0.0, seconds) - std::floor(std::max(0.0, seconds))) * 1e9);
    return ppoll(reinterpret_cast<pollfd*>(descriptors.data()), descriptors.size(),
        seconds < 0 ? nullptr : &limit, nullptr);
}

} // namespace

GLibBridge::GLibBridge(BeforeSleep beforeSleep)
    : m_context(g_main_context_default())
    , m_acquired(g_main_context_acquire(m_context))
    , m_beforeSleep(std::move(beforeSleep))
    , m_formerSelect(ecore_main_loop_select_func_get())
{
    s_bridge = this;
    ecore_main_loop_select_func_set(on_select);
}

GLibBridge::~GLibBridge()
{
    ecore_main_loop_select_func_set(m_formerSelect);
    s_bridge = nullptr;
    if (m_acquired)
        g_main_context_release(m_context);
}

int GLibBridge::on_select(int count, fd_set* read, fd_set* write, fd_set* except, timeval* timeout)
{
    Sets sets {read, write, except};
    return s_bridge->sleep(count, sets, timeout);
}

/// Fills in the context's descriptors and the priority that they are for.
/// @return the context's time-out, milliseconds; negative for none
int GLibBridge::query(std::vector<GPollFD>& descriptors, int& priority)
{
    constexpr std::size_t kUsual = 8;
    g_main_context_prepare(m_context, &priority);
    int timeoutMs = -1;
    descriptors.resize(std::max(descriptors.capacity(), kUsual));
    for (;;) {
        const int count = g_main_context_query(
            m_context, priority, &timeoutMs, descriptors.data(), static_cast<int>(descriptors.size()));
        const bool complete = count <= static_cast<int>(descriptors.size());
        descriptors.resize(static_cast<std::size_t>(count));
        if (complete)
            return timeoutMs;
    }
}

/// In the place of select(). A callback may run the loop again, so a sleep shares nothing with another.
int GLibBridge::sleep(int count, Sets& sets, const timeval* timeout)
{
    const bool mayWait = !timeout || timeout->tv_sec > 0 || timeout->tv_usec > 0;
    const bool busy = mayWait && m_beforeSleep && m_beforeSleep();
    int priority = 0;
    std::vector<GPollFD> all = std::move(m_spare);
    const int timeoutMs = query(all, priority);
    const auto own = static_cast<std::ptrdiff_t>(all.size());
    addSets(count, sets, all);
    const double limit = busy ? 0.0 : remaining(timeout);
    const bool isFirst = timeoutMs >= 0 && (limit < 0 || timeoutMs / 1000.0 < limit);

    int result = pollFor(all, isFirst ? timeoutMs / 1000.0 : limit);
    if (result < 0) {
        for (GPollFD& one : all)
            one.revents = 0;
    }
    int error = errno;
    const bool due = g_main_context_check(m_context, priority, all.data(), static_cast<int>(own));
    const int ready = fillSets(all.data() + own, all.data() + all.size(), sets);
    if (result >= 0) {
        result = ready;
        error = EBADF;
    }
    m_spare = std::move(all);
    if (due) {
        // What the callbacks time is timed from now, not from before the sleep.
        ecore_loop_time_set(ecore_time_get());
        g_main_context_dispatch(m_context);
        // Ecore takes it for news, or it could go to sleep again without drawing what has changed.
        result = std::max(result, 1);
    }
    errno = error;
    return result;
}

} // namespace orbis::app
