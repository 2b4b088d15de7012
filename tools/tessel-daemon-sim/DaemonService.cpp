// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "DaemonService.h"

#include "EventLog.h"
#include "Names.h"
#include "Settings.h"
#include "base/GlibHandles.h"

#include <cstring>
#include <utility>

namespace DaemonSim {

namespace {

constexpr char kRefusedError[] = "com.norvale.orbis.tessel.daemon.Error.Refused";

/// The bus library has checked the arguments against the interface already.
Event toEvent(const char* method, GVariant* parameters)
{
    Event event {strcmp(method, "StopTessel") == 0 ? EventKind::StopTessel : EventKind::ServerStarted, {}};
    for (gsize index = 0; index < g_variant_n_children(parameters); ++index) {
        const base::VariantPtr flag(g_variant_get_child_value(parameters, index));
        event.flags.push_back(g_variant_get_boolean(flag.get()) != FALSE);
    }
    return event;
}

/// Takes the call over, as every answer of the bus library does.
void answerNormally(base::GObjectPtr<GDBusMethodInvocation> invocation)
{
    g_dbus_method_invocation_return_value(invocation.release(), g_variant_new("(i)", 0));
}

} // namespace

DaemonService::DaemonService(
    GDBusConnection* connection, EventLog& log, std::optional<double> endAfterStop, Callbacks callbacks)
    : m_connection(connection)
    , m_log(log)
    , m_endAfterStop(endAfterStop)
    , m_callbacks(std::move(callbacks))
    , m_interface(g_dbus_node_info_new_for_xml(kDaemonInterfaceXml, nullptr))
{
}

DaemonService::~DaemonService()
{
    if (m_nameOwner != 0)
        g_bus_unown_name(m_nameOwner);
    if (m_registration != 0)
        g_dbus_connection_unregister_object(m_connection, m_registration);
}

bool DaemonService::start()
{
    static const GDBusInterfaceVTable s_vtable = {onMethodCall, nullptr, nullptr, {}};
    m_registration = g_dbus_connection_register_object(
        m_connection, kDaemonPath, m_interface->interfaces[0], &s_vtable, this, nullptr, nullptr);
    if (m_registration == 0)
        return false;
    m_nameOwner = g_bus_own_name_on_connection(m_connection, kDaemonName, G_BUS_NAME_OWNER_FLAGS_DO_NOT_QUEUE,
        onNameAcquired, onNameLost, this, nullptr);
    return true;
}

void DaemonService::onNameAcquired(GDBusConnection*, const char*, gpointer data)
{
    static_cast<DaemonService*>(data)->m_callbacks.onReady();
}

void DaemonService::onNameLost(GDBusConnection*, const char*, gpointer data)
{
    static_cast<DaemonService*>(data)->m_callbacks.onNameLost();
}

void DaemonService::onMethodCall(GDBusConnection*, const char*, const char*, const char*, const char* method,
    GVariant* parameters, GDBusMethodInvocation* invocation, gpointer data)
{
    static_cast<DaemonService*>(data)->receive(
        toEvent(method, parameters), base::GObjectPtr<GDBusMethodInvocation>(invocation));
}

void DaemonService::receive(const Event& event, base::GObjectPtr<GDBusMethodInvocation> invocation)
{
    const bool isStop = event.kind == EventKind::StopTessel;
    m_log.event("received " + toText(event));
    const Behaviour behaviour = m_behaviour; // what follows the event may set another one
    m_callbacks.onReceived(event);
    answerAs(behaviour, std::move(invocation), isStop);
}

void DaemonService::setBehaviour(const Behaviour& behaviour)
{
    m_behaviour = behaviour;
    if (behaviour.kind == Behaviour::Kind::Silent)
        return;
    for (Answer& late : std::exchange(m_unanswered, {}))
        answerAs(behaviour, std::move(late.invocation), late.isStop);
}

void DaemonService::answerAs(
    const Behaviour& behaviour, base::GObjectPtr<GDBusMethodInvocation> invocation, bool isStop)
{
    switch (behaviour.kind) {
    case Behaviour::Kind::Refuse:
        g_dbus_method_invocation_return_dbus_error(invocation.release(), kRefusedError, "told to refuse");
        break;
    case Behaviour::Kind::Silent:
        m_unanswered.emplace_back();
        m_unanswered.back().invocation = std::move(invocation);
        m_unanswered.back().isStop = isStop;
        break;
    case Behaviour::Kind::Vanish:
        vanish();
        break;
    case Behaviour::Kind::Dawdle:
        answerLater(std::move(invocation), isStop, behaviour.seconds);
        break;
    case Behaviour::Kind::WrongType:
        answerWithWrongType(invocation.get());
        planEnd(isStop);
        break;
    case Behaviour::Kind::Normal:
        answerNormally(std::move(invocation));
        planEnd(isStop);
        break;
    }
}

void DaemonService::answerLater(
    base::GObjectPtr<GDBusMethodInvocation> invocation, bool isStop, double seconds)
{
    m_answers.emplace_back();
    const auto answer = std::prev(m_answers.end());
    answer->invocation = std::move(invocation);
    answer->isStop = isStop;
    answer->timer.start(seconds, [this, answer] {
        const bool wasStop = answer->isStop;
        answerNormally(std::move(answer->invocation));
        m_answers.erase(answer);
        planEnd(wasStop);
        if (isIdle())
            m_callbacks.onIdle();
    });
}

void DaemonService::answerWithWrongType(GDBusMethodInvocation* invocation)
{
    // Made by hand: the library refuses to send an answer that does not fit the interface.
    const base::GObjectPtr<GDBusMessage> reply(
        g_dbus_message_new_method_reply(g_dbus_method_invocation_get_message(invocation)));
    g_dbus_message_set_body(reply.get(), g_variant_new("(s)", "not a number"));
    g_dbus_connection_send_message(
        m_connection, reply.get(), G_DBUS_SEND_MESSAGE_FLAGS_NONE, nullptr, nullptr);
}

void DaemonService::vanish()
{
    m_callbacks.onVanished(); // first, so that the closed connection surprises nobody
    g_dbus_connection_close_sync(m_connection, nullptr, nullptr);
}

void DaemonService::planEnd(bool isStop)
{
    if (!isStop || !m_endAfterStop)
        return;
    m_endTimer.start(*m_endAfterStop, [this] {
        writeInt(m_log, kStartModeKey, kStartModeEnd);
        if (isIdle())
            m_callbacks.onIdle();
    });
}

} // namespace DaemonSim
