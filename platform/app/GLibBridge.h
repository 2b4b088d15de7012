// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// GLib's default main context inside Ecore's main loop.
#pragma once

#include <Ecore.h>
#include <glib.h>
#include <sys/select.h>
#include <sys/time.h>

#include <functional>
#include <vector>

namespace orbis::app {

/// While it lives, Ecore's loop sleeps in one poll over its own descriptors and those of GLib's default main
/// context, and what is ready of GLib is dispatched before Ecore has its turn. No thread, no timer, nothing
/// kept from one sleep to the next: GLib is asked afresh each time, so descriptors may come, go, change and
/// be numbered anew as they like. Made after ecore_init(), destroyed before ecore_shutdown(); one a process.
class GLibBridge {
public:
    /// @return whether it did anything, which the loop then deals with before it sleeps
    using BeforeSleep = std::function<bool()>;

    /// What Ecore waits for, as select() has it; each may be null.
    struct Sets {
        fd_set* read;
        fd_set* write;
        fd_set* except;
    };

    /// @param beforeSleep  called whenever the loop is about to sleep: nothing is queued any more, and it was
    ///                     not asked to end. May be empty.
    explicit GLibBridge(BeforeSleep beforeSleep = {});
    ~GLibBridge();
    GLibBridge(const GLibBridge&) = delete;
    GLibBridge& operator=(const GLibBridge&) = delete;

private:
    static int on_select(int count, fd_set* read, fd_set* write, fd_set* except, timeval* timeout);

    int sleep(int count, Sets& sets, const timeval* timeout);
    int query(std::vector<GPollFD>& descriptors, int& priority);

    GMainContext* m_context; ///< the default one, borrowed; acquired while this lives
    bool m_acquired;
    BeforeSleep m_beforeSleep;
    Ecore_Select_Function m_formerSelect;
    std::vector<GPollFD> m_spare; ///< room for the next sleep; a nested one makes its own
};

} // namespace orbis::app
