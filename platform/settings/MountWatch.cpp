// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "settings/MountWatch.h"

#include <fcntl.h>
#include <poll.h>

namespace orbis::settings {

namespace {

constexpr const char* kTable = "/proc/self/mountinfo";

} // namespace

// Each opening of the table tells of a change to the first who asks. The loop asks twice, once whether it has
// to wake and then what for, and so finds nothing the second time. One opening wakes it, therefore, and
// another is asked before it goes to sleep again.
MountWatch::MountWatch(std::function<void()> changed)
    : m_changed(std::move(changed))
    , m_waker(open(kTable, O_RDONLY | O_CLOEXEC))
    , m_table(open(kTable, O_RDONLY | O_CLOEXEC))
{
    if (!m_waker || !m_table)
        return;
    m_handler = ecore_main_fd_handler_add(m_waker.get(), ECORE_FD_ERROR, on_awake, nullptr, nullptr, nullptr);
    m_idle = ecore_idle_enterer_add(on_idle, this);
}

MountWatch::~MountWatch()
{
    if (m_handler)
        ecore_main_fd_handler_del(m_handler);
    if (m_idle)
        ecore_idle_enterer_del(m_idle);
    if (m_job)
        ecore_job_del(m_job);
}

unsigned char MountWatch::on_awake(void*, Ecore_Fd_Handler*) noexcept
{
    return ECORE_CALLBACK_RENEW;
}

unsigned char MountWatch::on_idle(void* data) noexcept
{
    auto* self = static_cast<MountWatch*>(data);
    pollfd table = {self->m_table.get(), POLLPRI, 0};
    if (poll(&table, 1, 0) > 0 && (table.revents & (POLLPRI | POLLERR)) != 0 && !self->m_job)
        self->m_job = ecore_job_add(on_changed, self);
    return ECORE_CALLBACK_RENEW;
}

void MountWatch::on_changed(void* data) noexcept
{
    auto* self = static_cast<MountWatch*>(data);
    self->m_job = nullptr;
    const std::function<void()> changed = self->m_changed;
    changed(); // may destroy *self
}

} // namespace orbis::settings
