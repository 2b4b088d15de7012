// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The system bus as the benchmark uses it.
#pragma once

#include "base/GlibHandles.h"

#include <functional>
#include <string>

namespace bench {

/// What is called on a program.
struct Method {
    std::string name; ///< with its interface
    GVariant* arguments; ///< floating, or null; used up by the call
};

struct Service {
    std::string name;
    std::string path;
};

class Bus {
public:
    /// The address is that of the environment. Ends the process with a message when there is no bus.
    Bus();

    /// Waits for the answer. @return seconds until it came; ends the process with a message when it is an
    /// error
    double call(const Service& service, const Method& method, base::VariantPtr* answer = nullptr);
    /// The same without waiting. @param answered  called with the answer, null for an error, out of
    /// waitUntil()
    void send(const Service& service, const Method& method, std::function<void(base::VariantPtr)> answered);
    GDBusConnection* connection() const { return m_connection.get(); }

private:
    base::GObjectPtr<GDBusConnection> m_connection;
};

/// @return seconds of a clock that only goes forward
double now();

/// Serves what comes over the bus until @p reached says so. Ends the process with a message when that takes
/// too long.
void waitUntil(const std::function<bool()>& reached, const std::string& what);

/// Says what is wrong on standard error, and ends the process.
[[noreturn]] void fail(const std::string& message);

} // namespace bench
