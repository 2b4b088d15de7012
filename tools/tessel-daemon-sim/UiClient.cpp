// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "UiClient.h"

#include "EventLog.h"
#include "Names.h"
#include "base/GlibHandles.h"

#include <utility>

namespace DaemonSim {

namespace {

constexpr double kNameGraceSeconds = 5;

GVariant* newTuple(const std::vector<std::string>& texts)
{
    GVariantBuilder builder;
    g_variant_builder_init(&builder, G_VARIANT_TYPE_TUPLE);
    for (const std::string& text : texts)
        g_variant_builder_add(&builder, "s", text.c_str());
    return g_variant_builder_end(&builder);
}

} // namespace

UiClient::UiClient(GDBusConnection* connection, EventLog& log, const Knowledge& knowledge,
    std::function<void(const Event&)> onPresence)
    : m_connection(connection)
    , m_log(log)
    , m_onPresence(std::move(onPresence))
    , m_cancellable(g_cancellable_new())
    , m_ui(knowledge)
    , m_watch(g_bus_watch_name_on_connection(
          connection, kUiName, G_BUS_NAME_WATCHER_FLAGS_NONE, onAppeared, onVanished, this, nullptr))
{
}

UiClient::~UiClient()
{
    g_bus_unwatch_name(m_watch);
    g_cancellable_cancel(m_cancellable.get());
}

void UiClient::onAppeared(GDBusConnection*, const char*, const char*, gpointer data)
{
    auto* self = static_cast<UiClient*>(data);
    self->m_ui.present = true;
    self->m_log.event("ui appeared");
    self->m_onPresence({EventKind::UiAppeared, {}});
    if (self->m_nameTimer.isRunning())
        self->call();
}

void UiClient::onVanished(GDBusConnection*, const char*, gpointer data)
{
    auto* self = static_cast<UiClient*>(data);
    if (!std::exchange(self->m_ui.present, false))
        return; // it was not there when the watch began
    self->m_ui.announced = false;
    self->m_log.event("ui vanished");
    self->m_onPresence({EventKind::UiVanished, {}});
}

void UiClient::send(const RequestCommand& request, std::function<void()> onDone)
{
    m_request = request;
    m_onDone = std::move(onDone);
    if (!m_ui.present && m_ui.announced)
        m_nameTimer.start(kNameGraceSeconds, [this] { call(); });
    else
        call();
}

void UiClient::call()
{
    m_nameTimer.stop();
    m_log.event("request " + toText(m_request));
    g_dbus_connection_call(m_connection, kUiName, kUiPath, kUiName, m_request.method.c_str(),
        newTuple(m_request.arguments), G_VARIANT_TYPE("(i)"), G_DBUS_CALL_FLAGS_NO_AUTO_START, -1,
        m_cancellable.get(), onReply, this);
}

void UiClient::onReply(GObject* source, GAsyncResult* result, gpointer data)
{
    GError* rawError = nullptr;
    const base::VariantPtr reply(g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &rawError));
    const base::ErrorPtr error(rawError);
    if (g_error_matches(error.get(), G_IO_ERROR, G_IO_ERROR_CANCELLED))
        return; // the object behind data may be gone

    auto* self = static_cast<UiClient*>(data);
    if (reply) {
        gint32 value = 0;
        g_variant_get(reply.get(), "(i)", &value);
        self->m_log.event("reply " + self->m_request.method + " " + std::to_string(value));
    } else {
        g_dbus_error_strip_remote_error(error.get());
        self->m_log.event("error " + self->m_request.method + " " + error->message);
    }
    const auto onDone = std::exchange(self->m_onDone, {});
    onDone();
}

} // namespace DaemonSim
