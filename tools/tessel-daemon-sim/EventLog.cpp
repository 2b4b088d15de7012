// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "EventLog.h"

#include "options/Terminal.h"

#include <cstdio>
#include <utility>

namespace DaemonSim {

namespace {

constexpr double kMicrosecondsPerSecond = 1e6;

std::string oneLine(std::string_view text)
{
    std::string line;
    line.reserve(text.size());
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        char escape[5] = "";
        if (character == '\n')
            line += "\\n";
        else if (byte < 0x20 || byte == 0x7f)
            line.append(escape, static_cast<size_t>(snprintf(escape, sizeof escape, "\\x%02x", byte)));
        else
            line += character;
    }
    return line;
}

} // namespace

EventLog::EventLog(bool timestamps)
    : m_start(g_get_monotonic_time())
    , m_timestamps(timestamps)
{
}

void EventLog::event(std::string_view text)
{
    if (m_erasePrompt)
        m_erasePrompt();
    if (m_timestamps)
        printf("%.3f ", static_cast<double>(g_get_monotonic_time() - m_start) / kMicrosecondsPerSecond);
    puts(oneLine(text).c_str());
    fflush(stdout);
    if (m_showPrompt)
        m_showPrompt();
}

void EventLog::error(std::string_view text)
{
    if (m_erasePrompt) {
        m_erasePrompt();
        fflush(stdout);
    }
    tools::complain("tessel-daemon-sim", oneLine(text));
    if (m_showPrompt)
        m_showPrompt();
}

void EventLog::setPrompt(std::function<void()> erase, std::function<void()> show)
{
    m_erasePrompt = std::move(erase);
    m_showPrompt = std::move(show);
}

std::string EventLog::quoted(std::string_view text)
{
    std::string result = "\"";
    for (const char character : text) {
        if (character == '"' || character == '\\')
            result += '\\';
        result += character;
    }
    return result + '"';
}

} // namespace DaemonSim
