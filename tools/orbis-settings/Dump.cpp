// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Dump.h"

#include "base/Handles.h"
#include "vconf.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <sstream>
#include <string_view>

namespace {

constexpr std::string_view kBeginning = "orbis-settings-dump 1 ";
constexpr std::string_view kEnd = "end ";

/// @param keepsBlanks  whether they may stand as they are
std::string escaped(std::string_view text, bool keepsBlanks)
{
    std::string result;
    for (const char character : text) {
        const auto byte = static_cast<unsigned char>(character);
        char code[5] = "";
        if (character == '\\')
            result += "\\\\";
        else if (character == '\n')
            result += "\\n";
        else if (byte < 0x20 || byte == 0x7f || (character == ' ' && !keepsBlanks))
            result.append(code, static_cast<size_t>(snprintf(code, sizeof code, "\\x%02x", byte)));
        else
            result += character;
    }
    return result;
}

/// @return the character that two digits name; nothing for others and for the one that ends a text
std::optional<char> byteOf(std::string_view digits)
{
    unsigned number = 0;
    const char* const end = digits.data() + digits.size();
    const auto parsed = std::from_chars(digits.data(), end, number, 16);
    const bool isRight = digits.size() == 2 && parsed.ec == std::errc() && parsed.ptr == end && number != 0;
    return isRight ? std::optional(static_cast<char>(number)) : std::nullopt;
}

std::optional<std::string> unescaped(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        size_t length = 1;
        char meant = text.front();
        if (meant == '\\') {
            const char letter = text.size() > 1 ? text[1] : '\0';
            const auto byte = letter == 'x' ? byteOf(text.substr(2, 2)) : std::nullopt;
            if (letter != '\\' && letter != 'n' && !byte)
                return std::nullopt;
            meant = byte ? *byte : letter == 'n' ? '\n' : '\\';
            length = byte ? 4 : 2;
        }
        result += meant;
        text.remove_prefix(length);
    }
    return result;
}

/// @return the number of a whole text, which has no other form than the one that is written
std::optional<int> numberOf(std::string_view text)
{
    int number = 0;
    const auto parsed = std::from_chars(text.data(), text.data() + text.size(), number);
    const bool isRight = parsed.ec == std::errc() && parsed.ptr == text.data() + text.size();
    return isRight ? std::optional(number) : std::nullopt;
}

/// @return why the store would refuse the key, "" when it would not
std::string objection(const std::string& key)
{
    errno = 0;
    const bool isRefused =
        vconf_get_type(key.c_str()) == VCONF_TYPE_NONE && (errno == EINVAL || errno == ENAMETOOLONG);
    return isRefused ? "there can be no such key" : "";
}

/// Takes in one line. @return what is wrong with it, "" for nothing
std::string takeLine(Dump& dump, const std::string& line)
{
    const size_t afterType = std::min(line.find(' '), line.size());
    const size_t afterKey = line.find(' ', std::min(afterType + 1, line.size()));
    const std::string type = line.substr(0, afterType);
    if (afterKey == std::string::npos || (type != "int" && type != "string"))
        return "neither \"int KEY NUMBER\" nor \"string KEY TEXT\"";
    const auto key = unescaped(std::string_view(line).substr(afterType + 1, afterKey - afterType - 1));
    const auto value = unescaped(std::string_view(line).substr(afterKey + 1));
    if (!key || !value)
        return "a backslash that means nothing";
    if (key->rfind(dump.prefix, 0) != 0)
        return "the key does not begin with " + dump.prefix;
    std::string problem = objection(*key);
    Setting setting;
    setting.isNumber = type == "int";
    if (setting.isNumber) {
        const auto number = numberOf(*value);
        problem = problem.empty() && !number ? "not a whole number in the range of an int" : problem;
        setting.number = number.value_or(0);
    } else {
        constexpr size_t kMostBytes = 16UL * 1024 * 1024 - 64;
        setting.text = *value;
        problem = problem.empty() && value->size() > kMostBytes ? "the value is too large" : problem;
    }
    if (problem.empty() && !dump.settings.emplace(*key, std::move(setting)).second)
        problem = "the key comes twice";
    return problem;
}

} // namespace

std::optional<std::vector<std::string>> keysOf(const std::string& prefix)
{
    std::vector<std::string> keys;
    const auto keep = [](const char* key, void* data) {
        static_cast<std::vector<std::string>*>(data)->emplace_back(key);
    };
    errno = 0;
    if (vconf_list(prefix.c_str(), keep, &keys) < 0)
        return std::nullopt;
    return keys;
}

std::optional<Setting> settingOf(const std::string& key)
{
    // One reading for each type: asking for the type first would leave room for a write in between.
    errno = 0;
    const base::MallocStr text(vconf_get_str(key.c_str()));
    if (text)
        return Setting {false, 0, text.get()};
    int number = 0;
    if (vconf_get_int(key.c_str(), &number) == VCONF_OK)
        return Setting {true, number};
    return std::nullopt;
}

std::optional<Dump> readStore(const std::string& prefix, std::string& problem)
{
    const auto keys = keysOf(prefix);
    if (!keys) {
        problem = std::string("cannot read the store: ") + strerror(errno);
        return std::nullopt;
    }
    Dump dump {prefix, {}};
    for (const std::string& key : *keys) {
        const auto setting = settingOf(key);
        if (!setting && errno == ENOENT)
            continue; // removed meanwhile
        if (!setting) {
            problem = "cannot read " + key + ": " + strerror(errno);
            return std::nullopt;
        }
        dump.settings.emplace(key, *setting);
    }
    return dump;
}

std::string toText(const Dump& dump)
{
    std::string text = std::string(kBeginning) + escaped(dump.prefix, false) + '\n';
    for (const auto& [key, setting] : dump.settings)
        text += (setting.isNumber ? "int " : "string ") + escaped(key, false) + ' '
            + (setting.isNumber ? std::to_string(setting.number) : escaped(setting.text, true)) + '\n';
    return text + std::string(kEnd) + std::to_string(dump.settings.size()) + '\n';
}

std::optional<Dump> parseDump(const std::string& text, std::string& problem)
{
    Dump dump;
    std::istringstream lines(text);
    std::string line;
    std::getline(lines, line);
    const auto prefix =
        line.rfind(kBeginning, 0) == 0 ? unescaped(line.substr(kBeginning.size())) : std::nullopt;
    problem = prefix ? "" : "1: no dump of orbis-settings";
    dump.prefix = prefix.value_or("");
    bool isWhole = false;
    for (int number = 2; problem.empty() && !isWhole && std::getline(lines, line); ++number) {
        if (line.rfind(kEnd, 0) == 0)
            isWhole = line == std::string(kEnd) + std::to_string(dump.settings.size());
        const std::string wrong = isWhole ? "" : takeLine(dump, line);
        if (!wrong.empty())
            problem = std::to_string(number) + ": " + wrong;
        else if (isWhole && lines.peek() != std::istringstream::traits_type::eof())
            problem = std::to_string(number + 1) + ": something behind the end";
    }
    if (problem.empty() && !isWhole)
        problem = "the end is missing";
    return problem.empty() ? std::optional(dump) : std::nullopt;
}
