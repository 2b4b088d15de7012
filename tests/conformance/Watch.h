// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A watch of a settings key that counts, and the loop that tells it.
#ifndef TESTS_WATCH_H
#define TESTS_WATCH_H

#include "vconf.h"

#include <functional>
#include <optional>
#include <string>

/// Runs the main loop until the condition holds. @return false when it does not in time
bool runUntil(const std::function<bool()>& condition, double seconds = 20);

/// Ends with its owner.
class Watch {
public:
    explicit Watch(
        const std::string& key, std::function<void()> action = {}, vconf_callback_fn callback = on_changed);
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
    ~Watch() { end(); }

    static void on_changed(keynode_t* node, void* data);
    /// The same for a second watch of a key: there is one for each callback.
    static void also(keynode_t* node, void* data) { on_changed(node, data); }

    int end();
    int calls() const { return m_calls; }
    bool called(int times = 1) const;

private:
    std::string m_key;
    std::function<void()> m_action;
    vconf_callback_fn m_callback;
    int m_calls = 0;
    bool m_active;
};

/// @return the text that the key holds
std::optional<std::string> text(const std::string& key);

#endif
