// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the setup daemon can ask for, in one table for the two ways of asking: a call on the bus, and a JSON
/// value in the settings store.
#pragma once

#include "dlog.h"

#include <cstddef>
#include <string>

namespace TesselUI {

class UIManager;

/// One request. Each way has its own words in the log, and its own log level; null: none.
struct Request {
    const char* method; ///< on the bus
    const char* signature; ///< of its arguments; null: none are read
    const char* methodMatched; ///< logged when it is called; null for most

    const char* page; ///< the value of "page"; null: not asked for in this way
    const char* members[2]; ///< what carries the arguments, read in this order
    const char* pageMatched;

    int (*call)(UIManager& manager, std::string& first, std::string& second);

    // Logged when the manager showed nothing; people who read these logs are used to it.
    log_priority methodPriority;
    const char* methodLine;
    const char* pageLine;
};

/// @return the request that @p method, or @p page, asks for; null for an unknown one
const Request* requestOfMethod(const char* method);
const Request* requestOfPage(const std::string& page);

/// @return how many there are
std::size_t requestCount();

} // namespace TesselUI
