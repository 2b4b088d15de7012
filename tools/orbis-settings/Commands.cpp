#include "Commands.h"

#include "base/Handles.h"
#include "vconf.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

struct SetRequest {
    std::string type;
    std::string key;
    std::string value;
};

/// @return nothing, with the problem told on standard error, for anything but -t TYPE [--] KEY VALUE
std::optional<SetRequest> parseSet(const Arguments& arguments)
{
    SetRequest request;
    size_t next = 0;
    for (; next < arguments.size() && arguments[next].substr(0, 1) == "-"; ++next) {
        if (arguments[next] == "--") {
            ++next;
            break;
        }
        if (arguments[next] != "-t" || next + 1 == arguments.size()) {
            usageError("set: unknown or incomplete option: " + arguments[next]);
            return std::nullopt;
        }
        request.type = arguments[++next];
    }
    if (request.type != "int" && request.type != "string") {
        usageError("set: a type is needed: -t int or -t string");
        return std::nullopt;
    }
    if (arguments.size() - next != 2) {
        usageError("set: a key and a value are needed");
        return std::nullopt;
    }
    request.key = arguments[next];
    request.value = arguments[next + 1];
    return request;
}

int setNumber(const SetRequest& request)
{
    int number = 0;
    const char* end = request.value.data() + request.value.size();
    const auto parsed = std::from_chars(request.value.data(), end, number);
    if (parsed.ec != std::errc() || parsed.ptr != end) {
        failure("not a whole number in the range of an int: " + request.value, 0);
        return VCONF_ERROR;
    }
    errno = 0;
    const int result = vconf_set_int(request.key.c_str(), number);
    if (result != VCONF_OK)
        failure("cannot write " + request.key, errno);
    return result;
}

int setText(const SetRequest& request)
{
    errno = 0;
    const int result = vconf_set_str(request.key.c_str(), request.value.c_str());
    if (result != VCONF_OK)
        failure("cannot write " + request.key, errno);
    return result;
}

} // namespace

int usageError(const std::string& problem)
{
    fprintf(stderr, "orbis-settings: %s\nTry: orbis-settings --help\n", problem.c_str());
    return kUsageError;
}

int failure(const std::string& problem, int error)
{
    if (error == 0)
        fprintf(stderr, "orbis-settings: %s\n", problem.c_str());
    else
        fprintf(stderr, "orbis-settings: %s: %s\n", problem.c_str(), strerror(error));
    return kFailure;
}

std::optional<std::string> valueOf(const std::string& key)
{
    // One reading for each type: asking for the type first would leave room for a write in between.
    const base::MallocStr text(vconf_get_str(key.c_str()));
    if (text)
        return text.get();
    int number = 0;
    if (vconf_get_int(key.c_str(), &number) == VCONF_OK)
        return std::to_string(number);
    return std::nullopt;
}

std::string lineOf(const std::string& key)
{
    const auto value = valueOf(key);
    std::string line = value ? key + ' ' + *value : key;
    std::replace_if(
        line.begin(), line.end(), [](char letter) { return letter == '\n' || letter == '\r'; }, ' ');
    return line;
}

bool printLine(const std::string& line)
{
    return fwrite(line.data(), 1, line.size(), stdout) == line.size() && putchar('\n') != EOF
        && fflush(stdout) == 0;
}

int setCommand(const Arguments& arguments)
{
    const auto request = parseSet(arguments);
    if (!request)
        return kUsageError;
    const int result = request->type == "int" ? setNumber(*request) : setText(*request);
    return result == VCONF_OK ? kSuccess : kFailure;
}

int getCommand(const Arguments& arguments)
{
    if (arguments.size() != 1)
        return usageError("get: one key is needed");
    errno = 0;
    const auto value = valueOf(arguments[0]);
    if (!value)
        return failure("no value in " + arguments[0], errno);
    return printLine(*value) ? kSuccess : failure("cannot write to standard output", errno);
}

int listCommand(const Arguments& arguments)
{
    if (arguments.size() > 1)
        return usageError("list: at most one prefix is possible");
    Arguments keys;
    const auto keep = [](const char* key, void* data) { static_cast<Arguments*>(data)->emplace_back(key); };
    errno = 0;
    if (vconf_list(arguments.empty() ? nullptr : arguments[0].c_str(), keep, &keys) < 0)
        return failure("cannot read the store", errno);
    for (const std::string& key : keys) {
        if (!printLine(lineOf(key)))
            return failure("cannot write to standard output", errno);
    }
    return kSuccess;
}

int unsetCommand(const Arguments& arguments)
{
    if (arguments.size() != 1)
        return usageError("unset: one key is needed");
    errno = 0;
    if (vconf_unset(arguments[0].c_str()) != VCONF_OK)
        return failure("cannot remove " + arguments[0], errno);
    return kSuccess;
}
