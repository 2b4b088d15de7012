// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "settings/FolderWatch.h"

#include "loop/LoopStart.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <utility>

namespace orbis::settings {

namespace {

constexpr double kSecondsBetweenLooks = 2;

void tellOnce(const std::string& folder, int error)
{
    static bool s_told = false;
    if (!std::exchange(s_told, true))
        fprintf(stderr, "%s cannot be watched (%s); it is looked at every %g seconds\n", folder.c_str(),
            strerror(error), kSecondsBetweenLooks);
}

} // namespace

FolderWatch::FolderWatch(const std::string& folder, Changed changed)
    : m_folder(folder)
    , m_changed(std::move(changed))
    , m_events(folder)
{
}

FolderWatch::~FolderWatch()
{
    if (m_eventsHandler)
        ecore_main_fd_handler_del(m_eventsHandler);
    if (m_timer)
        ecore_timer_del(m_timer);
    m_mounts.reset();
    ecore_shutdown();
}

std::unique_ptr<FolderWatch> FolderWatch::create(const std::string& folder, Changed changed)
{
    // A watch that outlives the caller's use of Ecore must still find its handlers alive.
    if (!loop::start()) {
        errno = ENOMEM;
        return nullptr;
    }
    std::unique_ptr<FolderWatch> watch(new FolderWatch(folder, std::move(changed)));
    // A mount over the folder, or over one above it, is no event of any folder.
    watch->m_mounts = std::make_unique<MountWatch>([self = watch.get()] {
        self->look();
        self->tell({});
    });
    watch->look();
    watch->m_isOther = false; // nobody has been told of any
    return watch;
}

void FolderWatch::look()
{
    m_isOther = m_events.follow() || m_isOther;
    listen();
}

void FolderWatch::listen()
{
    if (!m_eventsHandler && m_events.descriptor() >= 0)
        m_eventsHandler = ecore_main_fd_handler_add(
            m_events.descriptor(), ECORE_FD_READ, on_events, this, nullptr, nullptr);
    if (m_eventsHandler && m_events.error() == 0) {
        if (m_timer)
            ecore_timer_del(m_timer);
        m_timer = nullptr;
    } else if (!m_timer) {
        tellOnce(m_folder, m_events.error() == 0 ? ENOMEM : m_events.error());
        m_timer = ecore_timer_add(kSecondsBetweenLooks, on_tick, this);
    }
}

void FolderWatch::tell(FolderChange change)
{
    change.everything |= std::exchange(m_isOther, false);
    if (!change.everything && change.names.empty())
        return;
    const Changed changed = m_changed;
    changed(change); // may destroy *this
}

unsigned char FolderWatch::on_events(void* data, Ecore_Fd_Handler*) noexcept
{
    auto* self = static_cast<FolderWatch*>(data);
    FolderChange change = self->m_events.take();
    if (change.everything)
        self->look();
    self->tell(std::move(change));
    return ECORE_CALLBACK_RENEW;
}

unsigned char FolderWatch::on_tick(void* data) noexcept
{
    auto* self = static_cast<FolderWatch*>(data);
    self->look(); // the last time that the timer is needed, perhaps
    FolderChange change;
    change.everything = true;
    const bool goesOn = self->m_timer != nullptr;
    self->tell(std::move(change));
    return goesOn ? ECORE_CALLBACK_RENEW : ECORE_CALLBACK_CANCEL;
}

} // namespace orbis::settings
