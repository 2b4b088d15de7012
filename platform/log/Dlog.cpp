// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "dlog.h"
#include "base/Handles.h"

#include "log/Escape.h"
#include "log/Journal.h"
#include "log/StandardError.h"

#include <algorithm>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <exception>
#include <mutex>
#include <string>
#include <string_view>

namespace orbis::log {

namespace {

struct Level {
    log_priority priority;
    char letter;
    const char* journal; ///< syslog's number
};

constexpr Level kLevels[] = {
    {DLOG_DEBUG, 'D', "7"},
    {DLOG_INFO, 'I', "6"},
    {DLOG_WARN, 'W', "4"},
    {DLOG_ERROR, 'E', "3"},
};

const Level* findLevel(log_priority priority)
{
    const auto* const found = std::find_if(std::begin(kLevels), std::end(kLevels),
        [=](const Level& level) { return level.priority == priority; });
    return found == std::end(kLevels) ? nullptr : found;
}

/// Where the lines of all threads go.
class Log {
public:
    /// A program that logs need not be an application.
    Log() { ignoreBrokenPipes(); }

    int write(const Level& level, const std::string& tag, const std::string& message)
    {
        const std::lock_guard lock(m_mutex);
        int result = m_output.look();
        if (result == 0 && m_output.isJournal())
            result = writeToJournal(level, tag, message);
        else if (result == 0)
            result = writeLine(level, tag, message);
        m_lost = result < 0 ? m_lost + 1 : 0;
        return result;
    }

private:
    int writeToJournal(const Level& level, const std::string& tag, const std::string& message)
    {
        int result = m_lost > 0 ? sendToJournal(findLevel(DLOG_WARN)->journal, tag, lossNote()) : 0;
        if (result == 0) {
            m_lost = 0;
            result = sendToJournal(level.journal, tag, message);
        }
        if (result == 0)
            return static_cast<int>(message.size());
        return result == -EAGAIN ? result : writeLine(level, tag, message); // there is no journal any more
    }

    /// Both lines in one piece, or a note that fits where the line does not would be written for each line.
    int writeLine(const Level& level, const std::string& tag, const std::string& message)
    {
        const std::string line = lineOf(level, tag, message);
        const std::string note = m_lost > 0 ? lineOf(*findLevel(DLOG_WARN), tag, lossNote()) : "";
        const int result = m_output.write(note + line);
        return result < 0 ? result : static_cast<int>(line.size());
    }

    static std::string lineOf(const Level& level, const std::string& tag, const std::string& message)
    {
        return std::string {level.letter, '/'}.append(tag).append(": ").append(message).append("\n");
    }

    std::string lossNote() const { return std::to_string(m_lost) + " log lines were lost: nobody took them"; }

    std::mutex m_mutex;
    StandardError m_output;
    unsigned long m_lost = 0; ///< lines since the last one that was taken
};

/// Never destroyed: static objects that go later may still log.
Log& theLog()
{
    static auto* const s_log = new Log;
    return *s_log;
}

size_t lineEndsOf(std::string_view text)
{
    const size_t last = text.find_last_not_of('\n');
    return last == std::string_view::npos ? text.size() : text.size() - last - 1;
}

int print(const Level& level, const char* tag, const char* format, va_list arguments)
{
    char* formatted = nullptr;
    const int length = vasprintf(&formatted, format, arguments);
    if (length < 0)
        return -errno;
    const base::MallocStr owner(formatted);
    const std::string_view whole(formatted, static_cast<size_t>(length));
    // Those of the format are the message's own; what comes before them may be a name's.
    const size_t ends = std::min(lineEndsOf(format), lineEndsOf(whole));
    const std::string message = escaped(whole.substr(0, whole.size() - ends)).append(ends, '\n');
    return theLog().write(level, escaped(tag), message);
}

} // namespace

} // namespace orbis::log

int dlog_print(log_priority priority, const char* tag, const char* format, ...)
{
    const auto* level = orbis::log::findLevel(priority);
    if (!format || !level)
        return -EINVAL;
    const int callersError = errno; // a log line between a failure and its report must not hide it
    va_list arguments;
    va_start(arguments, format);
    int result = -ENOMEM;
    try {
        result = orbis::log::print(*level, tag ? tag : "", format, arguments);
    } catch (const std::exception&) {
        result = -ENOMEM;
    }
    va_end(arguments);
    errno = callersError;
    return result;
}
