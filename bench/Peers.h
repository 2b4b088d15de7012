// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The programs that are measured side by side.
#pragma once

#include "Bus.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <sys/types.h>

namespace bench {

/// A program that shows something when it is asked to over the bus.
class Peer {
public:
    struct Traits {
        std::string title;
        std::vector<std::string> command;
        Service service;
        std::function<Method()> show; ///< a PIN for a phone, or what comes next to it
        /// What takes it away again. @param shown  the answer to show
        std::function<Method(GVariant* shown)> hide;
        /// Whether it can be used now; without it when it has its name on the bus.
        std::function<bool()> isReady {};
        std::string windowClass {}; ///< where windows do not tell their process
    };

    Peer(Bus& bus, Traits traits);
    ~Peer();
    Peer(const Peer&) = delete;
    Peer& operator=(const Peer&) = delete;

    /// Starts it. @return seconds until it could be used
    double start();
    void stop();
    /// What it says on standard error goes into a file that is made when it starts; "" for nowhere.
    void keepErrors(const std::string& file) { m_errors = file; }
    /// @return seconds until the answer
    double show();
    /// The same without waiting for an answer.
    void sendShow();
    /// Takes away what was shown last.
    void hide();
    /// Asks for something else of it.
    double call(const Method& method) { return m_bus.call(m_traits.service, method); }
    const std::string& title() const { return m_traits.title; }
    const std::string& windowClass() const { return m_traits.windowClass; }
    pid_t process() const { return m_process; }

private:
    static void on_owner(GDBusConnection*, const char*, const char*, gpointer self);
    static void on_noOwner(GDBusConnection*, const char*, gpointer self);

    Bus& m_bus;
    Traits m_traits;
    base::VariantPtr m_shown;
    guint m_watch;
    bool m_hasName = false;
    bool m_isAnswered = true;
    std::string m_errors;
    pid_t m_process = 0;
};

/// The program on its own, with the set-up daemon's end of the bus, which notes that it is ready.
class TesselPeer {
public:
    /// @param binaries  the folder of the build's programs
    TesselPeer(Bus& bus, const std::string& binaries);
    ~TesselPeer();
    Peer& operator*() { return *m_peer; }
    Peer* operator->() { return m_peer.get(); }

private:
    static void on_call(GDBusConnection*, const char*, const char*, const char*, const char* method,
        GVariant*, GDBusMethodInvocation* call, gpointer self);

    Bus& m_bus;
    guint m_name;
    guint m_object;
    bool m_isReady = false;
    std::unique_ptr<Peer> m_peer;
};

/// @return a call of the program's service
Method tesselMethod(const std::string& name, GVariant* arguments = nullptr);

std::unique_ptr<Peer> makePlain(Bus& bus, const std::string& binaries);
std::unique_ptr<Peer> makeNotifications(Bus& bus);

} // namespace bench
