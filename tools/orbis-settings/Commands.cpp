#include "Commands.h"

#include "base/Handles.h"
#include "vconf.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>

namespace {

struct SetRequest {
    std::string type;
    std::string key;
    std::string value;
};

/// The command line of a command. What follows its first argument is no option: a value may begin with "-".
tools::CommandLine commandLine(const char* command, const char* parameters)
{
    tools::CommandLine line(std::string(kToolName) + ' ' + command, parameters, "");
    line.stopAtFirstArgument();
    return line;
}

/// @return the key that is all a command takes
std::optional<std::string> parseKey(const char* command, const Arguments& arguments)
{
    tools::CommandLine line = commandLine(command, "KEY");
    const auto words = line.parse(arguments);
    if (words && words->size() == 1)
        return words->front();
    if (words)
        line.wrongUsage("one key is needed");
    return std::nullopt;
}

std::optional<SetRequest> parseSet(const Arguments& arguments)
{
    SetRequest request;
    tools::CommandLine line = commandLine("set", "KEY VALUE");
    line.add(
        {"type", tools::setText(request.type), "which kind of value: int or string", "TYPE", false, 't'});
    const auto words = line.parse(arguments);
    if (!words)
        return std::nullopt;
    const bool hasType = request.type == "int" || request.type == "string";
    if (!hasType || words->size() != 2) {
        line.wrongUsage(hasType ? "a key and a value are needed" : "a type is needed: -t int or -t string");
        return std::nullopt;
    }
    request.key = words->front();
    request.value = words->back();
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

int failure(const std::string& problem, int error)
{
    if (error == 0)
        fprintf(stderr, "%s: %s\n", kToolName, problem.c_str());
    else
        fprintf(stderr, "%s: %s: %s\n", kToolName, problem.c_str(), strerror(error));
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
        return tools::kWrongUsage;
    const int result = request->type == "int" ? setNumber(*request) : setText(*request);
    return result == VCONF_OK ? kSuccess : kFailure;
}

int getCommand(const Arguments& arguments)
{
    const auto key = parseKey("get", arguments);
    if (!key)
        return tools::kWrongUsage;
    errno = 0;
    const auto value = valueOf(*key);
    if (!value)
        return failure("no value in " + *key, errno);
    return printLine(*value) ? kSuccess : failure("cannot write to standard output", errno);
}

int listCommand(const Arguments& arguments)
{
    tools::CommandLine line = commandLine("list", "[PREFIX]");
    const auto words = line.parse(arguments);
    if (!words)
        return tools::kWrongUsage;
    if (words->size() > 1)
        return line.wrongUsage("at most one prefix is possible");
    Arguments keys;
    const auto keep = [](const char* key, void* data) { static_cast<Arguments*>(data)->emplace_back(key); };
    errno = 0;
    if (vconf_list(words->empty() ? nullptr : words->front().c_str(), keep, &keys) < 0)
        return failure("cannot read the store", errno);
    for (const std::string& key : keys) {
        if (!printLine(lineOf(key)))
            return failure("cannot write to standard output", errno);
    }
    return kSuccess;
}

int unsetCommand(const Arguments& arguments)
{
    const auto key = parseKey("unset", arguments);
    if (!key)
        return tools::kWrongUsage;
    errno = 0;
    if (vconf_unset(key->c_str()) != VCONF_OK)
        return failure("cannot remove " + *key, errno);
    return kSuccess;
}

int watchCommand(const Arguments& arguments)
{
    tools::CommandLine line = commandLine("watch", "KEY...");
    const auto words = line.parse(arguments);
    if (!words)
        return tools::kWrongUsage;
    return words->empty() ? line.wrongUsage("at least one key is needed") : watch(*words);
}
