#include "app/GLibBridge.h"

#include <algorithm>
#include <utility>

namespace orbis::app {

namespace {

bool sameDescriptors(const std::vector<GPollFD>& a, const std::vector<GPollFD>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
        [](const GPollFD& x, const GPollFD& y) { return x.fd == y.fd && x.events == y.events; });
}

Ecore_Fd_Handler_Flags flagsOf(const GPollFD& descriptor)
{
    int flags = 0;
    if (descriptor.events & (G_IO_IN | G_IO_HUP | G_IO_PRI))
        flags |= ECORE_FD_READ;
    if (descriptor.events & G_IO_OUT)
        flags |= ECORE_FD_WRITE;
    if (descriptor.events & G_IO_ERR)
        flags |= ECORE_FD_ERROR;
    return static_cast<Ecore_Fd_Handler_Flags>(flags ? flags : ECORE_FD_ERROR);
}

} // namespace

GLibBridge::GLibBridge()
    : m_context(g_main_context_default())
    , m_acquired(g_main_context_acquire(m_context))
    , m_idleEnterer(ecore_idle_enterer_add(on_idleEnter, this))
{
}

GLibBridge::~GLibBridge()
{
    if (m_idleEnterer)
        ecore_idle_enterer_del(m_idleEnterer);
    if (m_timer)
        ecore_timer_del(m_timer);
    dropDescriptors();
    if (m_acquired)
        g_main_context_release(m_context);
}

Eina_Bool GLibBridge::on_idleEnter(void* data)
{
    static_cast<GLibBridge*>(data)->query();
    return ECORE_CALLBACK_RENEW;
}

void GLibBridge::query()
{
    g_main_context_prepare(m_context, &m_priority);
    int timeoutMs = -1;
    std::vector<GPollFD> wanted(std::max<std::size_t>(m_descriptors.size(), 4));
    for (;;) {
        const int count = g_main_context_query(
            m_context, m_priority, &timeoutMs, wanted.data(), static_cast<int>(wanted.size()));
        const bool complete = count <= static_cast<int>(wanted.size());
        wanted.resize(static_cast<std::size_t>(count));
        if (complete)
            break;
    }
    watchDescriptors(wanted);
    if (timeoutMs == 0) {
        dispatch();
        // The sources that just ran may have made new ones: come by again before the loop sleeps.
        ecore_job_add(on_nothing, nullptr);
    }
    armTimeout(timeoutMs);
}

/// Handlers are kept as long as the descriptors stay the same, which is nearly always.
void GLibBridge::watchDescriptors(const std::vector<GPollFD>& wanted)
{
    if (sameDescriptors(wanted, m_descriptors))
        return;
    dropDescriptors();
    m_descriptors = wanted;
    for (const GPollFD& descriptor : m_descriptors)
        m_handlers.push_back(
            ecore_main_fd_handler_add(descriptor.fd, flagsOf(descriptor), on_ready, this, nullptr, nullptr));
}

void GLibBridge::armTimeout(int timeoutMs)
{
    if (m_timer)
        ecore_timer_del(std::exchange(m_timer, nullptr));
    if (timeoutMs > 0)
        m_timer = ecore_timer_add(timeoutMs / 1000.0, on_timeout, this);
}

Eina_Bool GLibBridge::on_ready(void* data, Ecore_Fd_Handler*)
{
    static_cast<GLibBridge*>(data)->dispatch();
    return ECORE_CALLBACK_RENEW;
}

Eina_Bool GLibBridge::on_timeout(void* data)
{
    auto* self = static_cast<GLibBridge*>(data);
    self->m_timer = nullptr;
    self->dispatch();
    return ECORE_CALLBACK_CANCEL;
}

/// Several descriptors may be ready at once, and a callback may have read one of them meanwhile, so the
/// state is taken afresh.
void GLibBridge::dispatch()
{
    std::vector<GPollFD> ready = m_descriptors;
    g_poll(ready.data(), static_cast<guint>(ready.size()), 0);
    if (g_main_context_check(m_context, m_priority, ready.data(), static_cast<int>(ready.size())))
        g_main_context_dispatch(m_context);
}

void GLibBridge::dropDescriptors()
{
    for (Ecore_Fd_Handler* handler : m_handlers) {
        if (handler)
            ecore_main_fd_handler_del(handler);
    }
    m_handlers.clear();
    m_descriptors.clear();
}

} // namespace orbis::app
