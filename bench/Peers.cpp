// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Peers.h"

#include "tessel-daemon-sim/Names.h"

#include <csignal>
#include <utility>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

namespace {

constexpr const char* kPhone = "Nova 12";
constexpr const char* kPin = "0427";
constexpr const char* kNotifications = "org.freedesktop.Notifications";

Method notify()
{
    GVariantBuilder hints;
    g_variant_builder_init(&hints, G_VARIANT_TYPE_VARDICT);
    const std::string text = std::string {"Enter this PIN on "} + kPhone + ":\n\n" + kPin;
    return {std::string {kNotifications} + ".Notify",
        g_variant_new(
            "(susssasa{sv}i)", "bench", 0U, "", "Set-up with your phone", text.c_str(), nullptr, &hints, 0)};
}

Method closeNotification(GVariant* shown)
{
    guint32 id = 0;
    if (shown)
        g_variant_get(shown, "(u)", &id);
    return {std::string {kNotifications} + ".CloseNotification", g_variant_new("(u)", id)};
}

} // namespace

Peer::Peer(Bus& bus, Traits traits)
    : m_bus(bus)
    , m_traits(std::move(traits))
    , m_watch(g_bus_watch_name_on_connection(bus.connection(), m_traits.service.name.c_str(),
          G_BUS_NAME_WATCHER_FLAGS_NONE, on_owner, on_noOwner, this, nullptr))
{
}

Peer::~Peer()
{
    stop();
    g_bus_unwatch_name(m_watch);
}

double Peer::start()
{
    std::vector<char*> arguments;
    for (const std::string& argument : m_traits.command)
        arguments.push_back(const_cast<char*>(argument.c_str()));
    arguments.push_back(nullptr);
    GError* error = nullptr;
    const int errors = open(
        m_errors.empty() ? "/dev/null" : m_errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const double begin = now();
    if (!g_spawn_async_with_fds(nullptr, arguments.data(), nullptr,
            static_cast<GSpawnFlags>(G_SPAWN_SEARCH_PATH | G_SPAWN_DO_NOT_REAP_CHILD), nullptr, nullptr,
            &m_process, -1, -1, errors, &error))
        fail(error->message);
    close(errors);
    waitUntil(
        [this] { return m_traits.isReady ? m_traits.isReady() : m_hasName; }, m_traits.title + " starts");
    const double took = now() - begin;
    waitUntil([this] { return m_hasName; }, m_traits.title + " has its name");
    return took;
}

void Peer::stop()
{
    if (m_process == 0)
        return;
    kill(m_process, SIGTERM);
    waitpid(m_process, nullptr, 0);
    m_process = 0;
    waitUntil([this] { return !m_hasName; }, m_traits.title + " ends");
}

double Peer::show()
{
    return m_bus.call(m_traits.service, m_traits.show(), &m_shown);
}

void Peer::sendShow()
{
    m_isAnswered = false;
    m_bus.send(m_traits.service, m_traits.show(), [this](base::VariantPtr answer) {
        m_shown = std::move(answer);
        m_isAnswered = true;
    });
}

void Peer::hide()
{
    waitUntil([this] { return m_isAnswered; }, m_traits.title + " answers");
    m_bus.call(m_traits.service, m_traits.hide(m_shown.get()));
}

void Peer::on_owner(GDBusConnection*, const char*, const char*, gpointer self)
{
    static_cast<Peer*>(self)->m_hasName = true;
}

void Peer::on_noOwner(GDBusConnection*, const char*, gpointer self)
{
    static_cast<Peer*>(self)->m_hasName = false;
}

TesselPeer::TesselPeer(Bus& bus, const std::string& binaries)
    : m_bus(bus)
    , m_name(g_bus_own_name_on_connection(bus.connection(), DaemonSim::kDaemonName,
          G_BUS_NAME_OWNER_FLAGS_NONE, nullptr, nullptr, nullptr, nullptr))
{
    const base::NodeInfoPtr node {g_dbus_node_info_new_for_xml(DaemonSim::kDaemonInterfaceXml, nullptr)};
    static const GDBusInterfaceVTable s_table {on_call, nullptr, nullptr, {}};
    m_object = g_dbus_connection_register_object(
        bus.connection(), DaemonSim::kDaemonPath, node->interfaces[0], &s_table, this, nullptr, nullptr);
    m_peer = std::make_unique<Peer>(bus,
        Peer::Traits {"this program", {binaries + "/tessel-ui", "LAUNCH_MODE=POPUP"},
            {DaemonSim::kUiName, DaemonSim::kUiPath},
            [] { return tesselMethod("ShowPinPopup", g_variant_new("(ss)", kPhone, kPin)); },
            [](GVariant*) { return tesselMethod("HidePopup"); },
            [this] { return std::exchange(m_isReady, false); }});
}

TesselPeer::~TesselPeer()
{
    m_peer.reset();
    g_dbus_connection_unregister_object(m_bus.connection(), m_object);
    g_bus_unown_name(m_name);
}

void TesselPeer::on_call(GDBusConnection*, const char*, const char*, const char*, const char* method,
    GVariant*, GDBusMethodInvocation* call, gpointer self)
{
    if (std::string {method} == "ServerStarted")
        static_cast<TesselPeer*>(self)->m_isReady = true;
    g_dbus_method_invocation_return_value(call, g_variant_new("(i)", 0));
}

Method tesselMethod(const std::string& name, GVariant* arguments)
{
    return {std::string {DaemonSim::kUiName} + "." + name, arguments};
}

std::unique_ptr<Peer> makePlain(Bus& bus, const std::string& binaries)
{
    constexpr const char* kPlain = "org.orbis.bench.plain";
    return std::make_unique<Peer>(bus,
        Peer::Traits {"plain Elementary", {binaries + "/tessel-bench-plain"},
            {kPlain, "/org/orbis/bench/plain"},
            [] {
                return Method {std::string {kPlain} + ".Show", g_variant_new("(ss)", kPhone, kPin)};
            },
            [](GVariant*) {
                return Method {std::string {kPlain} + ".Hide", nullptr};
            }});
}

std::unique_ptr<Peer> makeNotifications(Bus& bus)
{
    return std::make_unique<Peer>(bus,
        Peer::Traits {"dunst", {"dunst"}, {kNotifications, "/org/freedesktop/Notifications"}, notify,
            closeNotification, {}, "Dunst"});
}

} // namespace bench
