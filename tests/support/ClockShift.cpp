// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A wall clock that jumps for one program. To be preloaded into it: its times of day are ahead by as many
/// seconds as the file CLOCK_SHIFT holds, as an int64_t, whenever it asks. What counts from the start of the
/// machine does not jump.
#include <cstdint>
#include <cstdlib>
#include <ctime>
#include <dlfcn.h>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/time.h>

namespace {

/// Mapped: to read a file each time would itself take descriptors and time.
int64_t shift()
{
    static const volatile int64_t* const s_shift = [] {
        static int64_t s_none = 0;
        const char* path = getenv("CLOCK_SHIFT");
        const int descriptor = path ? open(path, O_RDONLY | O_CLOEXEC) : -1;
        if (descriptor < 0)
            return &s_none;
        void* mapped = mmap(nullptr, sizeof(int64_t), PROT_READ, MAP_SHARED, descriptor, 0);
        return mapped == MAP_FAILED ? &s_none : static_cast<int64_t*>(mapped);
    }();
    return *s_shift;
}

template <typename Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

#define EXPORTED extern "C" __attribute__((visibility("default")))

EXPORTED int clock_gettime(clockid_t clock, timespec* time) noexcept
{
    static auto* const s_original = next<int(clockid_t, timespec*)>("clock_gettime");
    const int result = s_original(clock, time);
    if (result == 0 && (clock == CLOCK_REALTIME || clock == CLOCK_REALTIME_COARSE))
        time->tv_sec += shift();
    return result;
}

EXPORTED int gettimeofday(timeval* time, void* zone) noexcept
{
    static auto* const s_original = next<int(timeval*, void*)>("gettimeofday");
    const int result = s_original(time, zone);
    if (result == 0)
        time->tv_sec += shift();
    return result;
}

EXPORTED time_t time(time_t* result) noexcept
{
    timespec now {};
    clock_gettime(CLOCK_REALTIME, &now);
    if (result)
        *result = now.tv_sec;
    return now.tv_sec;
}
