// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Watch.h"

#include "base/Handles.h"

#include <Ecore.h>

#include <gtest/gtest.h>
#include <unistd.h>
#include <utility>

bool runUntil(const std::function<bool()>& condition, double seconds)
{
    const double deadline = ecore_time_get() + seconds;
    while (!condition()) {
        if (ecore_time_get() > deadline)
            return false;
        ecore_main_loop_iterate();
        usleep(1000); // it may sleep through the deadline
    }
    return true;
}

Watch::Watch(const std::string& key, std::function<void()> action, vconf_callback_fn callback)
    : m_key(key)
    , m_action(std::move(action))
    , m_callback(callback)
    , m_active(vconf_notify_key_changed(key.c_str(), callback, this) == VCONF_OK)
{
}

void Watch::on_changed(keynode_t* node, void* data)
{
    auto* self = static_cast<Watch*>(data);
    EXPECT_EQ(vconf_keynode_get_name(node), self->m_key);
    ++self->m_calls;
    if (self->m_action)
        self->m_action();
}

int Watch::end()
{
    if (!m_active)
        return VCONF_ERROR;
    m_active = false;
    return vconf_ignore_key_changed(m_key.c_str(), m_callback);
}

bool Watch::called(int times) const
{
    return runUntil([=] { return m_calls >= times; });
}

std::optional<std::string> text(const std::string& key)
{
    const base::MallocStr value(vconf_get_str(key.c_str()));
    return value ? std::make_optional<std::string>(value.get()) : std::nullopt;
}
