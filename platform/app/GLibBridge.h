/// GLib's default main context inside Ecore's main loop.
#pragma once

#include <Ecore.h>
#include <glib.h>

#include <vector>

namespace orbis::app {

/// While it lives, sources of GLib's default main context run in Ecore's loop: each time the loop is about to
/// sleep, the context's descriptors and next time-out are handed to Ecore. No thread, no polling. Made after
/// ecore_init(), destroyed before ecore_shutdown(); one a process.
class GLibBridge {
public:
    GLibBridge();
    ~GLibBridge();
    GLibBridge(const GLibBridge&) = delete;
    GLibBridge& operator=(const GLibBridge&) = delete;

private:
    static Eina_Bool on_idleEnter(void* data);
    static Eina_Bool on_ready(void* data, Ecore_Fd_Handler*);
    static Eina_Bool on_timeout(void* data);
    static void on_nothing(void*) { }

    void query();
    void watchDescriptors(const std::vector<GPollFD>& wanted);
    void armTimeout(int timeoutMs);
    void dispatch();
    void dropDescriptors();

    GMainContext* m_context; ///< the default one, borrowed; acquired while this lives
    bool m_acquired;
    Ecore_Idle_Enterer* m_idleEnterer;
    Ecore_Timer* m_timer = nullptr;
    int m_priority = 0; ///< of the sources that the last query was for
    std::vector<GPollFD> m_descriptors;
    std::vector<Ecore_Fd_Handler*> m_handlers; ///< one for each descriptor
};

} // namespace orbis::app
