// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Signals to the window. The toolkit drops a theme signal that is emitted on a window, because a window has
/// no theme object of its own; the widget set gives it a dim layer, so this definition, which precedes the
/// toolkit's in the search order, hands a managed window's signals to its host and all others on.

#include "flux/WindowSignal.h"
#include "dlog.h"
#include "flux/Countdown.h"
#include "flux/WindowHost.h"
#include "names/LogTag.h"

#include <dlfcn.h>

namespace orbis::flux {

void checkSearchOrder()
{
    if (!dlsym(RTLD_NEXT, "elm_object_signal_emit"))
        dlog_print(DLOG_ERROR, names::kLogTag,
            "The toolkit's libraries come before the platform's: signals to the window have no effect. Link "
            "the "
            "platform's first");
}

} // namespace orbis::flux

extern "C" __attribute__((visibility("default"))) void elm_object_signal_emit(
    Evas_Object* object, const char* emission, const char* source)
{
    using Emit = void (*)(Evas_Object*, const char*, const char*);
    static const auto toolkitEmit = reinterpret_cast<Emit>(dlsym(RTLD_NEXT, "elm_object_signal_emit"));

    if (orbis::flux::WindowHost* host = orbis::flux::WindowHost::of(object))
        host->windowSignal(emission ? emission : "");
    else if (toolkitEmit) {
        toolkitEmit(object, emission, source);
        orbis::flux::drawCountdown(object, emission);
    }
}
