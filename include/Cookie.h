// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Live-object registry: how an asynchronous callback finds out whether its object still exists.
#pragma once

#include <glib.h>

#include <map>

namespace TesselUI {

/// Gives its owner an id for as long as the owner lives. The owner passes the id, not its address, to
/// asynchronous calls; their callbacks look it up and do nothing when it is gone. Held as the owner's last
/// member, so that it is registered before the owner's constructor starts any work, and dropped after the
/// owner's destructor released everything else. Ids of one type are never used again. Main loop only.
template <typename T>
class Cookie {
public:
    /// @param owner  borrowed; the object that holds this cookie
    explicit Cookie(T* owner)
        : m_cookie(++m_last_cookie)
    {
        cookieMap[m_cookie] = owner;
    }

    virtual ~Cookie() { cookieMap.erase(m_cookie); }

    Cookie(const Cookie&) = delete;
    Cookie& operator=(const Cookie&) = delete;

    int id() const { return m_cookie; }

    /// The id as the user data of a GLib callback.
    gpointer userData() const { return GINT_TO_POINTER(m_cookie); }

    /// @return the live object of a callback's user data, or null
    static T* find(gpointer userData)
    {
        const auto entry = cookieMap.find(GPOINTER_TO_INT(userData));
        return entry == cookieMap.end() ? nullptr : entry->second;
    }

private:
    int m_cookie;

    static inline int m_last_cookie = 0;
    static inline std::map<int, T*> cookieMap;
};

} // namespace TesselUI
