// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "CallQueue.h"

#include "Guard.h"

#include <utility>

namespace TesselUI {

CallQueue::CallQueue(std::function<void(GDBusMethodInvocation*)> serve)
    : m_serve(std::move(serve))
{
}

CallQueue::~CallQueue()
{
    refuseAll();
    if (m_turn != 0)
        g_source_remove(m_turn);
}

void CallQueue::add(GDBusMethodInvocation* call)
{
    if (m_turn == 0) {
        waitForTurn();
        m_serve(call);
        return;
    }
    try {
        m_calls.push_back(call);
    } catch (...) { // out of turn is better than never
        logCaught(__func__);
        m_serve(call);
    }
}

/// At the priority of the bus's own events, so that neither keeps the other waiting.
void CallQueue::waitForTurn()
{
    m_turn = g_idle_add_full(G_PRIORITY_DEFAULT, on_turn, this, nullptr);
}

gboolean CallQueue::on_turn(gpointer data)
{
    auto* self = static_cast<CallQueue*>(data);
    if (self->m_calls.empty()) {
        self->m_turn = 0;
        return G_SOURCE_REMOVE;
    }
    GDBusMethodInvocation* call = self->m_calls.front();
    self->m_calls.pop_front();
    self->m_serve(call);
    return G_SOURCE_CONTINUE;
}

void CallQueue::takeOver(CallQueue& other)
{
    for (GDBusMethodInvocation* call : std::exchange(other.m_calls, {}))
        m_calls.push_back(call);
    if (!m_calls.empty() && m_turn == 0)
        waitForTurn();
}

void CallQueue::refuseAll()
{
    for (GDBusMethodInvocation* call : std::exchange(m_calls, {}))
        g_dbus_method_invocation_return_error_literal(
            call, G_DBUS_ERROR, G_DBUS_ERROR_UNKNOWN_METHOD, "The user interface is closing");
}

} // namespace TesselUI
