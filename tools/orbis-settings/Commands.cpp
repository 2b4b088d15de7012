// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Commands.h"

#include "Dump.h"
#include "base/GlibHandles.h"
#include "options/Terminal.h"
#include "vconf.h"

#include <json/writer.h>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <utility>

namespace {

struct SetRequest {
    std::string type;
    std::string key;
    std::string value;
};

/// Lets a command print as JSON.
void addJson(tools::CommandLine& line, bool& flag)
{
    line.add(
        {"json", tools::setFlag(flag), "print as JSON: numbers and texts; what is no UTF-8 in it is U+FFFD"});
}

/// @return the text with quotes
std::string jsonOf(const std::string& text)
{
    const base::GStr valid(g_utf8_make_valid(text.data(), static_cast<gssize>(text.size())));
    return Json::valueToQuotedString(valid.get());
}

std::string jsonOf(const Setting& setting)
{
    return setting.isNumber ? std::to_string(setting.number) : jsonOf(setting.text);
}

/// @param line  with the command's options
/// @return the key that is all else the command takes
std::optional<std::string> parseKey(tools::CommandLine line, const Arguments& arguments)
{
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

int printAsJson(const Arguments& keys)
{
    std::string text;
    for (const std::string& key : keys) {
        errno = 0;
        const auto setting = settingOf(key);
        if (!setting && errno != ENOENT)
            return failure("cannot read " + key, errno);
        if (setting)
            text += (text.empty() ? "\n  " : ",\n  ") + jsonOf(key) + ": " + jsonOf(*setting);
    }
    return printLine('{' + text + (text.empty() ? "}" : "\n}"))
        ? kSuccess
        : failure("cannot write to standard output", errno);
}

} // namespace

/// The command line of a command. What follows its first argument is no option: a value may begin with "-".
tools::CommandLine commandLine(const char* command, const char* parameters)
{
    tools::CommandLine line(std::string(kToolName) + ' ' + command, parameters, "");
    line.stopAtFirstArgument();
    return line;
}

int failure(const std::string& problem, int error)
{
    tools::complain(kToolName, error == 0 ? problem : problem + ": " + strerror(error));
    return kFailure;
}

std::optional<std::string> valueOf(const std::string& key)
{
    const auto setting = settingOf(key);
    if (!setting)
        return std::nullopt;
    return setting->isNumber ? std::to_string(setting->number) : setting->text;
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
    bool isJson = false;
    tools::CommandLine line = commandLine("get", "KEY");
    addJson(line, isJson);
    const auto key = parseKey(std::move(line), arguments);
    if (!key)
        return tools::kWrongUsage;
    errno = 0;
    const auto setting = settingOf(*key);
    if (!setting)
        return failure("no value in " + *key, errno);
    const std::string text = setting->isNumber ? std::to_string(setting->number) : setting->text;
    return printLine(isJson ? jsonOf(*setting) : text) ? kSuccess
                                                       : failure("cannot write to standard output", errno);
}

int listCommand(const Arguments& arguments)
{
    bool isJson = false;
    tools::CommandLine line = commandLine("list", "[PREFIX]");
    addJson(line, isJson);
    const auto words = line.parse(arguments);
    if (!words)
        return tools::kWrongUsage;
    if (words->size() > 1)
        return line.wrongUsage("at most one prefix is possible");
    const auto keys = keysOf(words->empty() ? "" : words->front());
    if (!keys)
        return failure("cannot read the store", errno);
    if (isJson)
        return printAsJson(*keys);
    for (const std::string& key : *keys) {
        if (!printLine(lineOf(key)))
            return failure("cannot write to standard output", errno);
    }
    return kSuccess;
}

int unsetCommand(const Arguments& arguments)
{
    const auto key = parseKey(commandLine("unset", "KEY"), arguments);
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
