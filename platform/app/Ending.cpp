// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/Ending.h"

#include "app/Traces.h"

#include <fcntl.h>
#include <poll.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <iterator>

namespace orbis::app {

namespace {

constexpr int kSignals[] = {SIGTERM, SIGINT, SIGHUP, SIGQUIT};
constexpr int kCount = std::size(kSignals);

/// The clock ticks this often, milliseconds, and each tick counts for no more than itself: a process that was
/// stopped for a while has not been given the time.
constexpr long kTickMs = 100;
constexpr long kMsAfterSignal = 650;
constexpr long kMsAfterLoop = 950;
constexpr int kMostTicks = 30; ///< whatever the machine is busy with

enum Mode : int { Off, NotBegun, Loop };

// What the handlers use: nothing that could be half changed.
volatile sig_atomic_t s_mode = Off;
volatile sig_atomic_t s_asked = 0;
volatile sig_atomic_t s_limitMs = 0; ///< what is allowed; 0: the clock stands
volatile sig_atomic_t s_spentMs = 0;
volatile sig_atomic_t s_ticks = 0;
volatile sig_atomic_t s_status = 0; ///< for an end by the clock
volatile pid_t s_process = 0; ///< a child that was forked and has not become a program yet has another
long s_delayMs = 0; ///< delayMs() at the last tick
timer_t s_timer {};
bool s_hasTimer = false;
char s_application[128] = "";
struct sigaction s_original[kCount] = {};
struct sigaction s_former[kCount] = {}; ///< whom a signal is passed on to
struct sigaction s_formerTick = {};

int tickSignal()
{
    return SIGRTMAX - 3;
}

/// @return for how long the main thread was ready to run and did not get a processor, milliseconds; 0 where
/// the
///         system does not tell
long delayMs()
{
    char text[96] = "";
    const int file = open("/proc/self/schedstat", O_RDONLY | O_CLOEXEC);
    if (file < 0)
        return 0;
    const ssize_t length = read(file, text, sizeof text - 1);
    close(file);
    const char* c = text;
    const char* end = text + (length > 0 ? length : 0);
    while (c < end && *c != ' ') // the time that it ran
        ++c;
    long long nanoseconds = 0;
    for (++c; c < end && *c >= '0' && *c <= '9'; ++c)
        nanoseconds = nanoseconds * 10 + (*c - '0');
    return static_cast<long>(nanoseconds / 1000000);
}

void startClock(long limitMs)
{
    if (s_limitMs || !s_hasTimer)
        return;
    s_limitMs = static_cast<sig_atomic_t>(limitMs);
    s_spentMs = 0;
    s_ticks = 0;
    s_delayMs = delayMs();
    itimerspec each {};
    each.it_interval.tv_nsec = each.it_value.tv_nsec = kTickMs * 1000000;
    timer_settime(s_timer, 0, &each, nullptr);
}

/// Waiting and working count alike; being kept from either by a busy machine does not.
void on_tick(int)
{
    const int error = errno;
    const long delay = delayMs();
    const long denied = delay - s_delayMs;
    s_delayMs = delay;
    s_ticks = s_ticks + 1;
    if (denied < kTickMs)
        s_spentMs = static_cast<sig_atomic_t>(s_spentMs + kTickMs - denied);
    if (getpid() == s_process && s_limitMs && (s_spentMs >= s_limitMs || s_ticks >= kMostTicks))
        Ending::now(
            s_status, s_asked ? "did not get to its orderly end in time" : "could not finish in time");
    errno = error;
}

void dieOf(int number)
{
    signal(number, SIG_DFL);
    raise(number); // comes when this handler returns
}

void passOn(int number, siginfo_t* info, void* context)
{
    for (int i = 0; i < kCount; ++i) {
        if (kSignals[i] != number)
            continue;
        const struct sigaction& former = s_former[i];
        if (former.sa_flags & SA_SIGINFO)
            former.sa_sigaction(number, info, context);
        else if (former.sa_handler != SIG_DFL && former.sa_handler != SIG_IGN)
            former.sa_handler(number);
    }
}

void on_signal(int number, siginfo_t* info, void* context)
{
    const int error = errno;
    if (getpid() != s_process) {
        dieOf(number);
    } else if (s_mode == NotBegun) {
        removeTraces();
        dieOf(number);
    } else {
        s_asked = 1;
        startClock(kMsAfterSignal);
        passOn(number, info, context);
    }
    errno = error;
}

void takeSignals(struct sigaction (&former)[kCount])
{
    struct sigaction taken = {};
    taken.sa_sigaction = on_signal;
    taken.sa_flags = SA_SIGINFO | SA_RESTART;
    sigemptyset(&taken.sa_mask);
    for (int i = 0; i < kCount; ++i)
        sigaction(kSignals[i], &taken, &former[i]);
}

void makeTimer()
{
    struct sigaction tick = {};
    tick.sa_handler = on_tick;
    tick.sa_flags = SA_RESTART;
    sigemptyset(&tick.sa_mask);
    sigaction(tickSignal(), &tick, &s_formerTick);
    sigevent event {};
    event.sigev_notify = SIGEV_SIGNAL;
    event.sigev_signo = tickSignal();
    s_hasTimer = timer_create(CLOCK_MONOTONIC, &event, &s_timer) == 0;
}

/// A reader of standard error that stopped reading must not hold the end up.
void say(const char* text)
{
    pollfd output {STDERR_FILENO, POLLOUT, 0};
    if (poll(&output, 1, 0) == 1 && (output.revents & POLLOUT)
        && write(STDERR_FILENO, text, strlen(text)) < 0)
        return; // nobody is there to be told
}

} // namespace

Ending::Ending(const std::string& application)
{
    snprintf(s_application, sizeof s_application, "%s", application.c_str());
    s_process = getpid();
    s_asked = 0;
    s_limitMs = 0;
    s_status = 0;
    makeTimer();
    s_mode = NotBegun;
    takeSignals(s_original);
}

Ending::~Ending()
{
    s_mode = Off;
    if (s_hasTimer)
        timer_delete(s_timer);
    s_hasTimer = false;
    s_limitMs = 0;
    for (int i = 0; i < kCount; ++i)
        sigaction(kSignals[i], &s_original[i], nullptr);
    sigaction(tickSignal(), &s_formerTick, nullptr);
}

void Ending::letLoopServe()
{
    // From now on what was there before is Ecore's.
    takeSignals(s_former);
    s_mode = Loop;
}

void Ending::limitTheRest(int status)
{
    s_status = status;
    startClock(kMsAfterLoop);
}

bool Ending::isAskedFor()
{
    return s_asked != 0;
}

void Ending::now(int status, const char* reason) noexcept
{
    char line[256];
    std::size_t length = 0;
    for (const char* text : {static_cast<const char*>(s_application), ": ", reason, "\n"}) {
        for (; *text && length + 1 < sizeof line; ++text)
            line[length++] = *text;
    }
    line[length] = '\0';
    removeTraces();
    say(line);
    _exit(status);
}

} // namespace orbis::app
