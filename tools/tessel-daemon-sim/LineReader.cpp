// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "LineReader.h"

#include <glib-unix.h>

#include <cerrno>
#include <unistd.h>
#include <utility>

namespace DaemonSim {

namespace {

constexpr size_t kMaxLineBytes = 0x40000;

} // namespace

LineReader::LineReader(int descriptor, std::function<void()> onInput)
    : m_descriptor(descriptor)
    , m_onInput(std::move(onInput))
{
}

void LineReader::listen()
{
    if (m_source == 0 && !m_ended)
        m_source = g_unix_fd_add(m_descriptor,
            static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR | G_IO_NVAL), onReadable, this);
}

void LineReader::stopListening()
{
    if (m_source != 0)
        g_source_remove(std::exchange(m_source, 0));
}

gboolean LineReader::onReadable(gint, GIOCondition, gpointer data)
{
    auto* self = static_cast<LineReader*>(data);
    self->m_source = 0; // listen() makes a new one
    self->readSome();
    self->m_onInput();
    return G_SOURCE_REMOVE;
}

void LineReader::readSome()
{
    char chunk[4096];
    const ssize_t count = read(m_descriptor, chunk, sizeof chunk);
    if (count > 0)
        m_buffer.append(chunk, static_cast<size_t>(count));
    else if (count == 0 || (errno != EINTR && errno != EAGAIN))
        m_ended = true;
}

std::optional<LineReader::Line> LineReader::take()
{
    const size_t end = m_buffer.find('\n');
    if (end == std::string::npos && !m_ended) {
        m_skipping = m_skipping || m_buffer.size() > kMaxLineBytes;
        if (m_skipping)
            m_buffer.clear();
        return std::nullopt;
    }
    if (end == std::string::npos && m_buffer.empty() && !m_skipping)
        return std::nullopt;

    const bool skipped = std::exchange(m_skipping, false);
    Line line {skipped ? std::string() : m_buffer.substr(0, end), skipped};
    m_buffer.erase(0, end == std::string::npos ? end : end + 1);
    return line;
}

} // namespace DaemonSim
