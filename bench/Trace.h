// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a client of a Wayland compositor says and hears, as its library writes it down for WAYLAND_DEBUG.
#pragma once

#include <fstream>
#include <string>
#include <vector>

namespace bench {

/// A picture that was handed to the compositor. Times are those of traceTime().
struct Picture {
    double committed;
    double taken = -1; ///< when the compositor asked for the next one; below 0 as long as it has not
    std::string callback {}; ///< the object that is to tell so
};

/// @return the clock of the traces, milliseconds; it begins anew after 71 minutes
double traceTime();
/// @return from one time of that clock to a later one, milliseconds
double traceSpan(double from, double to);

class Trace {
public:
    /// @param file  the client's standard error, which may still grow
    explicit Trace(const std::string& file);

    /// Forgets what was read and leaves out what is there.
    void skip();
    /// Reads what has come since. @return the pictures since skip(), in order
    const std::vector<Picture>& read();

private:
    void take(const std::string& line);

    std::ifstream m_file;
    std::string m_begun; ///< a line without its end
    std::string m_surface; ///< that has a buffer that was not committed yet
    std::string m_callback; ///< that was asked for last
    std::vector<Picture> m_pictures;
};

} // namespace bench
