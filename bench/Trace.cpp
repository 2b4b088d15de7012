// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Trace.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <ctime>

namespace bench {

namespace {

constexpr double kMicrosecondsInOne = 1e3;
constexpr double kRound = 4294967296.0 / kMicrosecondsInOne; ///< 32 bits of microseconds

/// @return what stands between two texts of a line, "" without them
std::string between(const std::string& line, const std::string& before, const std::string& after)
{
    const auto begin = line.find(before);
    if (begin == std::string::npos)
        return {};
    const auto end = line.find(after, begin + before.size());
    return end == std::string::npos ? "" : line.substr(begin + before.size(), end - begin - before.size());
}

} // namespace

double traceTime()
{
    timespec now {};
    clock_gettime(CLOCK_REALTIME, &now);
    const auto microseconds = static_cast<uint32_t>(now.tv_sec * 1000000L + now.tv_nsec / 1000);
    return microseconds / kMicrosecondsInOne;
}

double traceSpan(double from, double to)
{
    return std::fmod(to - from + kRound, kRound);
}

Trace::Trace(const std::string& file)
    : m_file(file)
{
}

void Trace::skip()
{
    read();
    m_pictures.clear();
}

const std::vector<Picture>& Trace::read()
{
    m_file.clear();
    for (std::string part; std::getline(m_file, part);) {
        m_begun += part;
        if (m_file.eof()) // the rest of it is still to come
            break;
        take(m_begun);
        m_begun.clear();
    }
    return m_pictures;
}

/// Such as "[1952331.431]  -> wl_surface@10.commit()"; arrows are the client's own words.
void Trace::take(const std::string& line)
{
    if (line.empty() || line[0] != '[')
        return;
    const double time = atof(line.c_str() + 1);
    const std::string surface = between(line, "-> wl_surface@", ".");
    if (surface.empty()) {
        const std::string told = between(line, "] wl_callback@", ".done(");
        for (Picture& picture : m_pictures) {
            if (!told.empty() && picture.callback == told && picture.taken < 0)
                picture.taken = time;
        }
        return;
    }
    if (line.find(".attach(wl_buffer@") != std::string::npos)
        m_surface = surface;
    else if (const std::string asked = between(line, ".frame(new id wl_callback@", ")"); !asked.empty())
        m_callback = asked;
    if (line.find(".commit()") == std::string::npos || m_surface != surface)
        return;
    m_pictures.push_back({time, -1, m_callback});
    m_surface.clear();
}

} // namespace bench
