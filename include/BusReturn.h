// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Waiting for the system bus after its connection was closed.
#pragma once

#include "Cookie.h"

#include <gio/gio.h>

#include <functional>

namespace TesselUI {

/// Tries the bus at once, for a few seconds more, and whenever its socket changes after that: a bus that
/// stays away costs nothing. A bus whose address names no socket file is tried for these seconds only. Lives
/// until the bus is back or its owner drops it. Main loop only; never blocks.
class BusReturn {
public:
    /// @param onBack  called when the bus has accepted a connection (which is closed again). It may delete
    ///                this object and return true; after false it is called again a little later
    explicit BusReturn(std::function<bool()> onBack);
    ~BusReturn();
    BusReturn(const BusReturn&) = delete;
    BusReturn& operator=(const BusReturn&) = delete;

private:
    static void on_socketChanged(
        GFileMonitor* monitor, GFile* file, GFile* other, GFileMonitorEvent event, gpointer id);
    static void on_probed(GObject* source, GAsyncResult* result, gpointer id);
    static gboolean on_retry(gpointer self);

    void watchSocket();
    void tryToConnect();
    void retryLater();

    std::function<bool()> m_onBack;
    GFileMonitor* m_monitor = nullptr; ///< owned; null when there is no file to watch
    GCancellable* m_cancellable; ///< owned
    bool m_isTrying = false;
    int m_triesLeft;
    guint m_retry = 0; ///< timer, 0 for none
    Cookie<BusReturn> m_cookie;
};

} // namespace TesselUI
