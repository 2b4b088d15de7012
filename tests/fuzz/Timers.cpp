#include "Timers.h"

#include <Ecore.h>
#include <algorithm>
#include <dlfcn.h>
#include <elm_flux.h>
#include <list>

namespace {

struct Timer {
    Ecore_Task_Cb callback;
    const void* data;
    Ecore_Timer* handle;
};

std::list<Timer> s_timers; // NOLINT(cert-err58-cpp): a list, because its entries stay where they are

template <typename Function>
Function* original(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

/// @return the start of the program or library that a function is part of
const void* moduleOf(const void* function)
{
    Dl_info info {};
    return dladdr(function, &info) != 0 ? info.dli_fbase : nullptr;
}

Eina_Bool on_timer(void* data)
{
    const Timer timer = *static_cast<Timer*>(data); // it may delete itself
    if (timer.callback(const_cast<void*>(timer.data)))
        return ECORE_CALLBACK_RENEW;
    s_timers.remove_if([&](const Timer& other) { return other.handle == timer.handle; });
    return ECORE_CALLBACK_CANCEL;
}

bool isOurs(Ecore_Task_Cb callback)
{
    const void* module = moduleOf(reinterpret_cast<void*>(callback));
    return module == moduleOf(reinterpret_cast<void*>(on_timer))
        || module == moduleOf(dlsym(RTLD_DEFAULT, "elm_flux_popup_add"));
}

} // namespace

// The program and its platform find these before the toolkit's own.
#define BEFORE_TOOLKIT extern "C" __attribute__((visibility("default")))

BEFORE_TOOLKIT Ecore_Timer* ecore_timer_add(double seconds, Ecore_Task_Cb callback, const void* data)
{
    auto* add = original<Ecore_Timer*(double, Ecore_Task_Cb, const void*)>("ecore_timer_add");
    if (!isOurs(callback))
        return add(seconds, callback, data);
    Timer& timer = s_timers.emplace_back(Timer {callback, data, nullptr});
    return timer.handle = add(seconds, on_timer, &timer);
}

BEFORE_TOOLKIT void* ecore_timer_del(Ecore_Timer* handle)
{
    void* data = original<void*(Ecore_Timer*)>("ecore_timer_del")(handle);
    s_timers.remove_if([=](const Timer& other) { return other.handle == handle; });
    return data;
}

std::size_t fuzz::runningTimers()
{
    return s_timers.size();
}
