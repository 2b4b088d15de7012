#include "aul.h"

#include "settings/Folders.h"
#include "settings/WholeFile.h"

#include <cerrno>
#include <charconv>
#include <climits>
#include <csignal>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>
#include <unistd.h>

namespace {

constexpr size_t kLongestEntry = 32; ///< two numbers, a blank and a line end

struct Entry {
    pid_t process;
    int status;
};

std::string entriesFolder()
{
    return orbis::runtimeFolder() + "/apps";
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
    const auto contents = orbis::readFile(entriesFolder() + '/' + package, kLongestEntry);
    return contents ? parse(*contents) : std::nullopt;
}

/// A process that ended keeps its number until its parent has asked for the result.
bool hasEnded(pid_t process)
{
    std::ifstream file("/proc/" + std::to_string(process) + "/stat");
    const std::string state {std::istreambuf_iterator<char>(file), {}};
    const size_t name = state.rfind(')'); // the name itself may hold anything
    return name != std::string::npos && name + 2 < state.size()
        && (state[name + 2] == 'Z' || state[name + 2] == 'X');
}

/// The entry of a process that is alive.
std::optional<Entry> findRunning(const char* package) noexcept
{
    try {
        const auto entry = readEntry(package);
        if (entry && (kill(entry->process, 0) == 0 || errno == EPERM) && !hasEnded(entry->process))
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
        return orbis::replaceFile(entriesFolder(), package, text, orbis::Durability::Volatile) ? 0 : -1;
    } catch (const std::exception&) {
        return -1;
    }
}

int aul_app_remove_status(const char* package)
{
    try {
        const auto entry = readEntry(package);
        const bool own = entry && entry->process == getpid();
        return own && orbis::removeFile(entriesFolder(), package, orbis::Durability::Volatile) ? 0 : -1;
    } catch (const std::exception&) {
        return -1;
    }
}
