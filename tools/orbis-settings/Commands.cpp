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

namespace {

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

int setNumber(const std::string& key, const std::string& value)
{
    int number = 0;
    const char* end = value.data() + value.size();
    const auto parsed = std::from_chars(value.data(), end, number);
    if (parsed.ec != std::errc() || parsed.ptr != end)
        return failure("not a whole number in the range of an int: " + value, 0);
    errno = 0;
    return vconf_set_int(key.c_str(), number) == VCONF_OK ? kSuccess : failure("cannot write " + key, errno);
}

int setText(const std::string& key, const std::string& value)
{
    errno = 0;
    return vconf_set_str(key.c_str(), value.c_str()) == VCONF_OK ? kSuccess
                                                                 : failure("cannot write " + key, errno);
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

int setCommand(const Call& call)
{
    const std::string& type = call.options.type;
    if (type != "int" && type != "string")
        return call.line.wrongUsage("a type is needed: -t int or -t string");
    if (call.words.size() != 2)
        return call.line.wrongUsage("a key and a value are needed");
    return (type == "int" ? setNumber : setText)(call.words[0], call.words[1]);
}

int getCommand(const Call& call)
{
    if (call.words.size() != 1)
        return call.line.wrongUsage("one key is needed");
    const std::string& key = call.words[0];
    errno = 0;
    const auto setting = settingOf(key);
    if (!setting)
        return failure("no value in " + key, errno);
    const std::string text = setting->isNumber ? std::to_string(setting->number) : setting->text;
    return printLine(call.options.isJson ? jsonOf(*setting) : text)
        ? kSuccess
        : failure("cannot write to standard output", errno);
}

int listCommand(const Call& call)
{
    if (call.words.size() > 1)
        return call.line.wrongUsage("at most one prefix is possible");
    const auto keys = keysOf(call.words.empty() ? "" : call.words[0]);
    if (!keys)
        return failure("cannot read the store", errno);
    if (call.options.isJson)
        return printAsJson(*keys);
    for (const std::string& key : *keys) {
        if (!printLine(lineOf(key)))
            return failure("cannot write to standard output", errno);
    }
    return kSuccess;
}

int unsetCommand(const Call& call)
{
    if (call.words.size() != 1)
        return call.line.wrongUsage("one key is needed");
    errno = 0;
    return vconf_unset(call.words[0].c_str()) == VCONF_OK ? kSuccess
                                                          : failure("cannot remove " + call.words[0], errno);
}

int watchCommand(const Call& call)
{
    return call.words.empty() ? call.line.wrongUsage("at least one key is needed") : watch(call.words);
}
