// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "aul.h"

#include "files/Folders.h"
#include "files/WholeFile.h"
#include "names/Places.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr size_t kLongestEntry = 32; ///< two numbers, a blank and a line end

struct Entry {
    pid_t process;
    int status;
    timespec mark; ///< of the entry's file, see markOf()
};

/// What the system knows of a process.
struct ProcessState {
    bool ended; ///< keeps its number until its parent has asked for the result
    unsigned long long start; ///< in ticks since the machine's start
};

std::string entriesFolder()
{
    return orbis::files::runtimeFolder() + orbis::names::kStatusEntries;
}

/// A leading dot is refused: it would reach the folder itself, the one above, and drafts of entries.
bool isUsable(const char* package)
{
    return package && *package && *package != '.' && !std::strchr(package, '/')
        && std::strlen(package) <= NAME_MAX;
}

bool takeNumber(std::string_view& text, int& number)
{
    if (text.empty() || text[0] < '0' || text[0] > '9')
        return false;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), number);
    text.remove_prefix(static_cast<size_t>(result.ptr - text.data()));
    return result.ec == std::errc();
}

std::optional<Entry> parse(std::string_view text)
{
    Entry entry = {};
    if (!takeNumber(text, entry.process) || text.empty() || text[0] != ' ')
        return std::nullopt;
    text.remove_prefix(1);
    if (!takeNumber(text, entry.status) || (!text.empty() && text != "\n"))
        return std::nullopt;
    const bool sane = entry.process > 0 && entry.status >= STATUS_LAUNCHING && entry.status <= STATUS_BG;
    return sane ? std::optional(entry) : std::nullopt;
}

std::optional<Entry> readEntry(const char* package)
{
    if (!isUsable(package))
        return std::nullopt;
    struct stat status = {};
    const auto file = orbis::files::openFile(
        entriesFolder() + '/' + package, kLongestEntry, orbis::files::Links::Refused, status);
    std::array<char, kLongestEntry> text = {};
    const ssize_t size = file ? orbis::files::readBytes(file, text.data(), text.size()) : -1;
    if (size < 0)
        return std::nullopt;
    auto entry = parse({text.data(), static_cast<size_t>(size)});
    if (entry)
        entry->mark = status.st_mtim;
    return entry;
}

/// @return nothing when the system does not tell
std::optional<ProcessState> stateOf(pid_t process)
{
    constexpr int kFieldsBeforeStart = 19; // between the state and the time of the start
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    const std::string text {std::istreambuf_iterator<char>(file), {}};
    const size_t name = text.rfind(')'); // the name itself may hold anything
    if (name == std::string::npos)
        return std::nullopt;
    std::istringstream fields(text.substr(name + 1));
    char state = 0;
    fields >> state;
    std::string skipped;
    for (int i = 0; i < kFieldsBeforeStart - 1; ++i)
        fields >> skipped;
    ProcessState result = {};
    fields >> result.start;
    result.ended = state == 'Z' || state == 'X';
    return fields ? std::optional(result) : std::nullopt;
}

// The entry's text has no room for more than two numbers, and a process number is given out again. So the
// time of the entry's file is set to that of the process's start, counted from the machine's own: no change
// of the clock can touch it. It lies in the first days of 1970; the odd nanoseconds tell it from the time of
// an entry that was written by other means, on a machine that does not know the date either.
constexpr long kOddNanoseconds = 7919;
constexpr long kNanoseconds = 1000000000;
constexpr time_t kLongestUptime = time_t {20} * 365 * 24 * 3600;

timespec markOf(const ProcessState& state)
{
    const auto ticks = static_cast<unsigned long long>(sysconf(_SC_CLK_TCK));
    const auto rest = static_cast<long>(state.start % ticks);
    return {static_cast<time_t>(state.start / ticks),
        rest * (kNanoseconds / static_cast<long>(ticks)) + kOddNanoseconds};
}

bool isMark(const timespec& time)
{
    const long tick = kNanoseconds / sysconf(_SC_CLK_TCK);
    return time.tv_sec < kLongestUptime && time.tv_nsec % tick == kOddNanoseconds;
}

bool isRunning(const Entry& entry)
{
    if (kill(entry.process, 0) != 0 && errno != EPERM)
        return false;
    const auto state = stateOf(entry.process);
    if (!state)
        return true;
    const timespec mark = markOf(*state);
    return !state->ended
        && (!isMark(entry.mark) || (mark.tv_sec == entry.mark.tv_sec && mark.tv_nsec == entry.mark.tv_nsec));
}

/// The entry of a process that is alive.
std::optional<Entry> findRunning(const char* package) noexcept
{
    try {
        const auto entry = readEntry(package);
        if (entry && isRunning(*entry))
            return entry;
    } catch (const std::exception&) { // out of memory: nothing is known of the application
    }
    return std::nullopt;
}

} // namespace

int aul_app_is_running(const char* package)
{
    return findRunning(package) ? 1 : 0;
}

int aul_app_get_status(const char* package)
{
    const auto entry = findRunning(package);
    return entry ? entry->status : -1;
}

int aul_app_set_status(const char* package, aul_app_status status)
{
    if (!isUsable(package) || status < STATUS_LAUNCHING || status > STATUS_BG)
        return -1;
    try {
        const std::string text = std::to_string(getpid()) + ' ' + std::to_string(status) + '\n';
        orbis::files::FileKind kind;
        kind.mode = 0644; // no secret, and other users' applications ask for it
        if (const auto state = stateOf(getpid()))
            kind.time = markOf(*state);
        return orbis::files::replaceFile(entriesFolder(), package, {text}, kind) ? 0 : -1;
    } catch (const std::exception&) {
        return -1;
    }
}

int aul_app_remove_status(const char* package)
{
    try {
        const auto entry = findRunning(package);
        const bool own = entry && entry->process == getpid();
        return own && orbis::files::removeFile(entriesFolder(), package, orbis::files::Durability::Volatile)
            ? 0
            : -1;
    } catch (const std::exception&) {
        return -1;
    }
}
