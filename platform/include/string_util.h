// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// String library: fills translated templates.
#ifndef ORBIS_STRING_UTIL_H
#define ORBIS_STRING_UTIL_H

class CStringUtil {
public:
    /// Writes @p format into @p out with %1 … %4 replaced by the arguments, in any order and as often as they
    /// stand there, and %% by a percent sign; any other % is copied. The result is cut before the first
    /// UTF-8 character that does not fit and is always terminated.
    /// @param out     the caller's buffer of @p size bytes, the terminator included
    /// @param format  borrowed; null counts as ""; so do the arguments
    /// @return the number of bytes written without the terminator, or -1 for a null @p out or a @p size
    ///         below 1, with nothing written
    static int CombinateStrings(char* out, int size, const char* format, const char* arg1, const char* arg2,
        const char* arg3, const char* arg4);
};

#endif
