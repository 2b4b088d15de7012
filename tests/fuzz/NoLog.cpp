// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The log writer has a target of its own: here lines are only put together.
#include "dlog.h"

#include <cstdarg>
#include <cstdio>

extern "C" __attribute__((visibility("default"))) int dlog_print(
    log_priority, const char*, const char* format, ...)
{
    char line[4096];
    va_list arguments;
    va_start(arguments, format);
    const int length = vsnprintf(line, sizeof line, format, arguments);
    va_end(arguments);
    return length;
}
