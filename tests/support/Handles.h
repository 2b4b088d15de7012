// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the test support owns beside the handles that all share.
#ifndef TESSEL_TESTS_HANDLES_H
#define TESSEL_TESTS_HANDLES_H

#include "base/GlibHandles.h" // IWYU pragma: export

#include <utility>

#include <unistd.h>

namespace tv {

/// A GLib event source of the default main context; removed with its owner.
class Source {
public:
    explicit Source(guint id = 0)
        : m_id(id)
    {
    }
    Source(Source&& other) noexcept
        : m_id(std::exchange(other.m_id, 0))
    {
    }
    Source& operator=(Source&& other) noexcept
    {
        std::swap(m_id, other.m_id);
        return *this;
    }
    ~Source()
    {
        if (m_id)
            g_source_remove(m_id);
    }

private:
    guint m_id;
};

} // namespace tv

#endif
