// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Bus.h"

#include <cstdio>
#include <cstdlib>

namespace bench {

namespace {

constexpr int kTimeLimitMs = 20000;

/// @return interface and method of a name that has both
std::pair<std::string, std::string> apart(const std::string& name)
{
    const auto point = name.rfind('.');
    return {name.substr(0, point), name.substr(point + 1)};
}

} // namespace

double now()
{
    constexpr double kMicroseconds = 1e6;
    return static_cast<double>(g_get_monotonic_time()) / kMicroseconds;
}

void fail(const std::string& message)
{
    fprintf(stderr, "tessel-bench: %s\n", message.c_str());
    exit(EXIT_FAILURE);
}

void waitUntil(const std::function<bool()>& reached, const std::string& what)
{
    constexpr double kLongest = 20;
    constexpr guint kLookAgainMs = 100; // at what no message tells of
    const double end = now() + kLongest;
    const guint timer = g_timeout_add(
        kLookAgainMs, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
    while (!reached()) {
        if (now() > end)
            fail("waited too long: " + what);
        g_main_context_iteration(nullptr, TRUE);
    }
    g_source_remove(timer);
}

Bus::Bus()
{
    GError* error = nullptr;
    m_connection.reset(g_bus_get_sync(G_BUS_TYPE_SYSTEM, nullptr, &error));
    if (!m_connection)
        fail(error->message);
    g_dbus_connection_set_exit_on_close(m_connection.get(), FALSE);
}

double Bus::call(const Service& service, const Method& method, base::VariantPtr* answer)
{
    const auto [interface, member] = apart(method.name);
    GError* error = nullptr;
    const double start = now();
    base::VariantPtr reply {g_dbus_connection_call_sync(m_connection.get(), service.name.c_str(),
        service.path.c_str(), interface.c_str(), member.c_str(), method.arguments, nullptr,
        G_DBUS_CALL_FLAGS_NO_AUTO_START, kTimeLimitMs, nullptr, &error)};
    const double took = now() - start;
    if (!reply)
        fail(method.name + ": " + error->message);
    if (answer)
        *answer = std::move(reply);
    return took;
}

void Bus::send(const Service& service, const Method& method, std::function<void(base::VariantPtr)> answered)
{
    using Answered = std::function<void(base::VariantPtr)>;
    const auto [interface, member] = apart(method.name);
    const auto done = [](GObject* connection, GAsyncResult* result, gpointer data) {
        const std::unique_ptr<Answered> take {static_cast<Answered*>(data)};
        (*take)(
            base::VariantPtr {g_dbus_connection_call_finish(G_DBUS_CONNECTION(connection), result, nullptr)});
    };
    g_dbus_connection_call(m_connection.get(), service.name.c_str(), service.path.c_str(), interface.c_str(),
        member.c_str(), method.arguments, nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START, kTimeLimitMs, nullptr,
        done, new Answered {std::move(answered)});
    g_dbus_connection_flush_sync(m_connection.get(), nullptr, nullptr);
}

} // namespace bench
