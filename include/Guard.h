// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Where C code calls the program: nothing is thrown past such a function.
#pragma once

#include "Log.h"

#include <exception>

namespace TesselUI {

/// Logs the exception that is being handled. Called from a callback's last catch clause: neither the loop nor
/// the libraries below can pass an exception on, so it would end the program.
/// @param where  the callback's name
inline void logCaught(const char* where) noexcept
{
    try {
        throw;
    } catch (const std::exception& error) {
        LOGE_AS(where, "%s gave up: %s", where, error.what());
    } catch (...) {
        LOGE_AS(where, "%s gave up", where);
    }
}

} // namespace TesselUI
