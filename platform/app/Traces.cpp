// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/Traces.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace orbis::app {

namespace {

/// A signal handler must not touch memory that is being managed, so all of it lies here.
struct Slot {
    volatile sig_atomic_t used;
    char path[PATH_MAX];
    char beginning[32]; ///< what the file must begin with to be removed
};

Slot s_slots[4];

bool beginsWith(const char* path, const char* beginning)
{
    char text[sizeof Slot::beginning] = {};
    const std::size_t length = strlen(beginning);
    const int file = open(path, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC);
    if (file < 0)
        return false;
    const ssize_t count = read(file, text, length);
    close(file);
    return count == static_cast<ssize_t>(length) && memcmp(text, beginning, length) == 0;
}

void removeFileOf(const Slot& slot)
{
    if (!slot.beginning[0] || beginsWith(slot.path, slot.beginning))
        unlink(slot.path);
}

} // namespace

Trace::Trace(const std::string& path, Whose whose)
{
    Slot* free = std::find_if(std::begin(s_slots), std::end(s_slots), [](const Slot& s) { return !s.used; });
    if (free == std::end(s_slots) || path.size() >= sizeof free->path)
        return;
    memcpy(free->path, path.c_str(), path.size() + 1);
    free->beginning[0] = '\0';
    if (whose == Whose::IfItNamesUs)
        snprintf(free->beginning, sizeof free->beginning, "%ld ", static_cast<long>(getpid()));
    m_slot = static_cast<int>(free - s_slots);
    free->used = 1;
}

Trace::~Trace()
{
    if (m_slot < 0)
        return;
    removeFileOf(s_slots[m_slot]);
    s_slots[m_slot].used = 0;
}

void removeTraces() noexcept
{
    const int error = errno;
    for (const Slot& slot : s_slots) {
        if (slot.used)
            removeFileOf(slot);
    }
    errno = error;
}

} // namespace orbis::app
