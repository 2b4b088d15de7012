// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

// The commands for many keys at once.
#include "Commands.h"
#include "Dump.h"
#include "vconf.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iostream>
#include <iterator>

namespace {

/// @param file  "-" for standard input
/// @return all of it, nothing with errno when it cannot be read
std::optional<std::string> textOf(const std::string& file)
{
    std::ifstream opened;
    errno = 0;
    if (file != "-")
        opened.open(file, std::ios::binary);
    std::istream& input = file == "-" ? std::cin : opened;
    if (!input.good())
        return std::nullopt;
    std::string text {std::istreambuf_iterator<char>(input), {}};
    return errno == 0 || input.eof() ? std::optional(text) : std::nullopt;
}

std::string nameOf(const std::string& file)
{
    return file == "-" ? "standard input" : file;
}

/// @return whether the store has it now; errno tells why not
bool write(const std::string& key, const Setting& setting)
{
    errno = 0;
    return (setting.isNumber ? vconf_set_int(key.c_str(), setting.number)
                             : vconf_set_str(key.c_str(), setting.text.c_str()))
        == VCONF_OK;
}

/// Makes the store what @p wanted is. What is so already is not written: each write reaches whoever watches
/// the key.
/// @param now  what the store has
/// @return the key where it failed, with errno; "" when it did not
std::string apply(const Dump& wanted, const Dump& now, bool keepsOthers)
{
    for (const auto& [key, setting] : wanted.settings) {
        const auto present = now.settings.find(key);
        const bool isSo = present != now.settings.end() && present->second == setting;
        if (!isSo && !write(key, setting))
            return key;
    }
    for (const auto& each : now.settings) {
        const std::string& key = each.first;
        if (!keepsOthers && wanted.settings.count(key) == 0 && vconf_unset(key.c_str()) != VCONF_OK
            && errno != ENOENT)
            return key;
    }
    return "";
}

int restore(const std::string& file, bool keepsOthers)
{
    const auto text = textOf(file);
    if (!text)
        return failure("cannot read " + nameOf(file), errno);
    std::string problem;
    const auto wanted = parseDump(*text, problem);
    if (!wanted)
        return failure(nameOf(file) + ':' + problem + "; nothing was changed", 0);
    const auto before = readStore(wanted->prefix, problem);
    if (!before)
        return failure(problem + "; nothing was changed", 0);
    const std::string key = apply(*wanted, *before, keepsOthers);
    if (key.empty())
        return kSuccess;
    const std::string reason = strerror(errno);
    const auto halfway = readStore(wanted->prefix, problem);
    const bool isBack = halfway && apply(*before, *halfway, false).empty();
    return failure("cannot write " + key + ": " + reason
            + (isBack ? "; all is as it was before" : "; a part of the store is another now"),
        0);
}

} // namespace

int dumpCommand(const Call& call)
{
    if (call.words.size() > 1)
        return call.line.wrongUsage("at most one prefix is possible");
    std::string problem;
    const auto dump = readStore(call.words.empty() ? "" : call.words[0], problem);
    if (!dump)
        return failure(problem, 0);
    const std::string text = toText(*dump);
    const bool isWritten = fwrite(text.data(), 1, text.size(), stdout) == text.size() && fflush(stdout) == 0;
    return isWritten ? kSuccess : failure("cannot write to standard output", errno);
}

int restoreCommand(const Call& call)
{
    if (call.words.size() > 1)
        return call.line.wrongUsage("at most one file is possible");
    return restore(call.words.empty() ? "-" : call.words[0], call.options.keepsOthers);
}

int batchCommand(const Call& call)
{
    if (call.words.size() > 1)
        return call.line.wrongUsage("at most one file is possible");
    const std::string file = call.words.empty() ? "-" : call.words[0];
    const auto text = textOf(file);
    if (!text)
        return failure("cannot read " + nameOf(file), errno);
    size_t number = 0;
    for (size_t begin = 0; begin < text->size();) {
        const size_t end = std::min(text->find('\n', begin), text->size());
        std::string each = text->substr(begin, end - begin);
        if (!each.empty() && each.back() == '\r')
            each.pop_back();
        const int status = runLine(each);
        ++number;
        if (status != kSuccess) {
            failure(nameOf(file) + ':' + std::to_string(number) + ": the batch ends here", 0);
            return status;
        }
        begin = end + 1;
    }
    return kSuccess;
}
