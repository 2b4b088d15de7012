#include "dlog.h"

#include <cerrno>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <exception>
#include <glib.h>
#include <memory>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

struct FreeText {
    void operator()(char* text) const { std::free(text); }
};

struct Level {
    log_priority priority;
    char letter;
    const char* journal; ///< syslog's number
    GLogLevelFlags glib;
};

constexpr Level kLevels[] = {
    {DLOG_DEBUG, 'D', "7", G_LOG_LEVEL_DEBUG},
    {DLOG_INFO, 'I', "6", G_LOG_LEVEL_INFO},
    {DLOG_WARN, 'W', "4", G_LOG_LEVEL_WARNING},
    {DLOG_ERROR, 'E', "3", G_LOG_LEVEL_CRITICAL},
};

const Level* findLevel(log_priority priority)
{
    for (const Level& level : kLevels) {
        if (level.priority == priority)
            return &level;
    }
    return nullptr;
}

bool writeToJournal(const Level& level, const char* tag, const std::string& message)
{
    const GLogField fields[] = {
        {"PRIORITY", level.journal, -1},
        {"SYSLOG_IDENTIFIER", tag, -1},
        {"MESSAGE", message.data(), static_cast<gssize>(message.size())},
    };
    return g_log_writer_is_journald(STDERR_FILENO)
        && g_log_writer_journald(level.glib, fields, G_N_ELEMENTS(fields), nullptr) == G_LOG_WRITER_HANDLED;
}

/// A reader of standard error that went away must cost us a log line, not the process.
class PipeSignalHeldBack {
public:
    PipeSignalHeldBack()
    {
        sigset_t pending;
        sigemptyset(&m_signal);
        sigaddset(&m_signal, SIGPIPE);
        sigpending(&pending);
        m_wasPending = sigismember(&pending, SIGPIPE) == 1;
        pthread_sigmask(SIG_BLOCK, &m_signal, &m_before);
    }
    PipeSignalHeldBack(const PipeSignalHeldBack&) = delete;
    PipeSignalHeldBack& operator=(const PipeSignalHeldBack&) = delete;
    ~PipeSignalHeldBack()
    {
        constexpr timespec kNow = {};
        while (!m_wasPending && sigtimedwait(&m_signal, nullptr, &kNow) < 0 && errno == EINTR) { }
        pthread_sigmask(SIG_SETMASK, &m_before, nullptr);
    }

private:
    sigset_t m_signal = {};
    sigset_t m_before = {};
    bool m_wasPending = false;
};

/// One write() a line keeps the lines of several processes apart; only a reader that takes less at a time
/// makes it several.
int writeToStandardError(std::string_view line)
{
    const PipeSignalHeldBack guard;
    int total = 0;
    while (!line.empty()) {
        const ssize_t written = write(STDERR_FILENO, line.data(), line.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return total > 0 ? total : -errno;
        line.remove_prefix(static_cast<size_t>(written));
        total += static_cast<int>(written);
    }
    return total;
}

int print(const Level& level, const char* tag, const char* format, va_list arguments)
{
    char* formatted = nullptr;
    const int length = vasprintf(&formatted, format, arguments);
    if (length < 0)
        return -errno;
    const std::unique_ptr<char, FreeText> owner(formatted);
    const std::string message(formatted, static_cast<size_t>(length));
    if (writeToJournal(level, tag, message))
        return length;
    return writeToStandardError(std::string {level.letter, '/'} + tag + ": " + message + '\n');
}

} // namespace

int dlog_print(log_priority priority, const char* tag, const char* format, ...)
{
    const Level* level = findLevel(priority);
    if (!format || !level)
        return -EINVAL;
    const int callersError = errno; // a log line between a failure and its report must not hide it
    va_list arguments;
    va_start(arguments, format);
    int result = -ENOMEM;
    try {
        result = print(*level, tag ? tag : "", format, arguments);
    } catch (const std::exception&) {
        result = -ENOMEM;
    }
    va_end(arguments);
    errno = callersError;
    return result;
}
