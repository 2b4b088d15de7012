// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Fuzz.h"

#include <Efreet.h>
#include <Elementary.h>
#include <glib.h>
#include <sanitizer/lsan_interface.h>

#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

namespace fuzz {

namespace {

void on_message(const Eina_Log_Domain*, Eina_Log_Level level, const char* file, const char* function,
    int line, const char* format, void*, va_list arguments)
{
    if (strcmp(function, "evas_object_smart_members_get") == 0) // of looking at what is on the canvas
        return;
    char message[1000];
    vsnprintf(message, sizeof message, format, arguments);
    char shown[1200];
    snprintf(shown, sizeof shown, "%s:%d %s() %s", file, line, function, message);
    demand(level > EINA_LOG_LEVEL_ERR, "the toolkit complains", shown);
}

} // namespace

void startToolkit()
{
    static bool s_runs = false;
    if (std::exchange(s_runs, true))
        return;
    for (const char* variable : {"ELM_DISPLAY=buffer", "ELM_ENGINE=buffer", "ECORE_NO_SYSTEM_MODULES=1",
             "EINA_FREEQ_BYPASS=1", "LC_ALL=C.UTF-8", "LANGUAGE=en",
             "DBUS_SESSION_BUS_ADDRESS=disabled:", "DBUS_SYSTEM_BUS_ADDRESS=disabled:"})
        putenv(const_cast<char*>(variable));
    setlocale(LC_ALL, "");
    efreet_cache_disable();
    {
        // What it keeps for good is not the input's that happens to be the first.
        const __lsan::ScopedDisabler disabler;
        elm_init(0, nullptr);
    }
    atexit([] { elm_shutdown(); });
    // Not before: without a bus and a home its start complains of both.
    eina_log_print_cb_set(on_message, nullptr);
    g_log_set_always_fatal(static_cast<GLogLevelFlags>(G_LOG_LEVEL_CRITICAL | G_LOG_FATAL_MASK));
}

} // namespace fuzz
