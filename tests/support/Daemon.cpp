// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Daemon.h"

#include <stdexcept>

namespace tv {

namespace {

constexpr const char* kUiPath = "/com/norvale/orbis/tessel/ui";

std::string printed(GVariant* value)
{
    return base::GStr(g_variant_print(value, TRUE)).get();
}

std::vector<std::string> with(std::vector<std::string> all, const std::string& one)
{
    all.push_back(one);
    return all;
}

} // namespace

Daemon::Daemon(const std::string& busAddress, std::vector<std::string> environment,
    const std::vector<std::string>& options)
    : Simulator(options, with(std::move(environment), "DBUS_SYSTEM_BUS_ADDRESS=" + busAddress))
{
    const auto flags = static_cast<GDBusConnectionFlags>(
        G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT | G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
    m_connection.reset(
        g_dbus_connection_new_for_address_sync(busAddress.c_str(), flags, nullptr, nullptr, nullptr));
    if (!m_connection || !says("ready"))
        throw std::runtime_error("the daemon does not come to the bus");
}

Daemon::~Daemon()
{
    g_dbus_connection_close_sync(m_connection.get(), nullptr, nullptr);
    // Closing answers what is still pending with an error; those callbacks know this object.
    waitUntil([this] { return m_pending == 0; });
}

std::vector<std::string> Daemon::calls() const
{
    const std::string mark = "received ";
    std::vector<std::string> result;
    const auto& lines = output();
    for (size_t i = m_forgotten; i < lines.size(); ++i) {
        if (lines[i].rfind(mark, 0) == 0)
            result.push_back(lines[i].substr(mark.size()));
    }
    return result;
}

bool Daemon::receives(const std::string& call) const
{
    return waitUntil([&] {
        const auto all = calls();
        return std::find(all.begin(), all.end(), call) != all.end();
    });
}

void Daemon::behave(const std::string& how)
{
    tell("behave " + how);
    says("behave " + how);
}

base::VariantPtr Daemon::askBus(const char* method, GVariant* parameters) const
{
    return base::VariantPtr(g_dbus_connection_call_sync(m_connection.get(), "org.freedesktop.DBus",
        "/org/freedesktop/DBus", "org.freedesktop.DBus", method, parameters, nullptr, G_DBUS_CALL_FLAGS_NONE,
        static_cast<int>(kLimit.count()), nullptr, nullptr));
}

bool Daemon::findsUi(int pid) const
{
    const auto owner = askBus("GetConnectionUnixProcessID", g_variant_new("(s)", kUiName));
    return owner && printed(owner.get()) == "(uint32 " + std::to_string(pid) + ",)";
}

void Daemon::send(const std::string& method, const std::vector<std::string>& texts, Milliseconds limit)
{
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_TUPLE);
    for (const std::string& text : texts)
        g_variant_builder_add(&builder, "s", text.c_str());
    ++m_pending;
    g_dbus_connection_call(m_connection.get(), kUiName, kUiPath, kUiName, method.c_str(),
        g_variant_builder_end(&builder), nullptr, G_DBUS_CALL_FLAGS_NO_AUTO_START,
        static_cast<int>(limit.count()), nullptr, on_reply, this);
}

void Daemon::on_reply(GObject* source, GAsyncResult* result, gpointer self)
{
    auto* daemon = static_cast<Daemon*>(self);
    GError* raw = nullptr;
    const base::VariantPtr value(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &raw));
    const base::ErrorPtr error(raw);
    --daemon->m_pending;
    daemon->m_replies.push_back(value ? printed(value.get()) : error->message);
}

std::string Daemon::request(const std::string& method, const std::vector<std::string>& texts)
{
    const size_t before = m_replies.size();
    send(method, texts);
    return waitUntil([&] { return m_replies.size() > before; }, kLimit + Milliseconds(1000))
        ? m_replies.back()
        : "no answer at all";
}

} // namespace tv
