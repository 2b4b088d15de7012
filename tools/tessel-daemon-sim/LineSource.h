// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Where typed commands come from.
#pragma once

#include <optional>
#include <string>

namespace DaemonSim {

class LineSource {
public:
    struct Line {
        std::string text; ///< without its line end
        bool isTooLong = false; ///< the text was thrown away
    };

    LineSource() = default;
    virtual ~LineSource() = default;
    LineSource(const LineSource&) = delete;
    LineSource& operator=(const LineSource&) = delete;

    /// @return the next line, if there is one already.
    virtual std::optional<Line> take() = 0;

    /// @return whether no line will come any more.
    virtual bool atEnd() const = 0;

    /// Reads on until there is something new. Nothing is read before, so that a flood of input waits
    /// outside.
    virtual void listen() = 0;
};

} // namespace DaemonSim
