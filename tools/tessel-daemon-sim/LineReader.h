// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Reads a pipe or a file line by line without blocking the main loop.
#pragma once

#include "LineSource.h"

#include <glib.h>

#include <functional>

namespace DaemonSim {

class LineReader : public LineSource {
public:
    /// @param descriptor  borrowed. It may be closed, which counts as its end.
    /// @param onInput     called from the main loop when take() or atEnd() may have something new
    LineReader(int descriptor, std::function<void()> onInput);
    ~LineReader() override { stopListening(); }

    std::optional<Line> take() override;
    bool atEnd() const override { return m_ended && m_buffer.empty(); }
    void listen() override;

private:
    static gboolean onReadable(gint descriptor, GIOCondition condition, gpointer data);
    void stopListening();
    void readSome();

    int m_descriptor;
    std::function<void()> m_onInput;
    std::string m_buffer;
    bool m_ended = false;
    bool m_skipping = false; ///< inside a line that is too long
    guint m_source = 0;
};

} // namespace DaemonSim
