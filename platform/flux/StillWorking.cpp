// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/StillWorking.h"

#include <utility>

namespace orbis::flux {

namespace {

// Seconds.
constexpr double kFirst = 10.0;
constexpr double kLater = 30.0;

} // namespace

void StillWorking::heard()
{
    if (Ecore_Timer* former = std::exchange(m_timer, nullptr))
        ecore_timer_del(former);
    wait();
}

void StillWorking::end()
{
    if (Ecore_Timer* former = std::exchange(m_timer, nullptr))
        ecore_timer_del(former);
    m_hasSaid = false;
}

void StillWorking::wait()
{
    m_timer = ecore_timer_add(m_hasSaid ? kLater : kFirst, on_silence, this);
}

Eina_Bool StillWorking::on_silence(void* data)
{
    auto* self = static_cast<StillWorking*>(data);
    self->m_timer = nullptr;
    self->m_hasSaid = true;
    self->m_say(); // which is heard
    return ECORE_CALLBACK_CANCEL;
}

} // namespace orbis::flux
