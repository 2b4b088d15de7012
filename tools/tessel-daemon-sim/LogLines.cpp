// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "LogLines.h"

#include "LogTime.h"
#include "Unescape.h"

#include <json/reader.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <exception>
#include <memory>

namespace DaemonSim {

namespace {

/// The program cuts its lines long before.
constexpr size_t kLongestLine = 256UL * 1024;

/// The platform's own note of what nobody took.
constexpr std::string_view kLossNote = " log lines were lost: nobody took them";

/// The field of the journal that holds the line.
constexpr std::string_view kMessageField = "MESSAGE";

/// What stands in front of each message: "FILE: FUNCTION(LINE) > [FUNCTION:LINE] ".
struct Prefix {
    std::string_view function;
    std::string_view message;
};

/// @param middle  where ") > [" is
std::optional<Prefix> prefixAround(std::string_view text, size_t middle)
{
    const size_t open = text.find_last_of('(', middle);
    const size_t blank = open == std::string_view::npos ? open : text.find_last_of(' ', open);
    if (blank == std::string_view::npos || blank == 0 || text[blank - 1] != ':')
        return std::nullopt;
    const std::string_view function = text.substr(blank + 1, open - blank - 1);
    const std::string_view number = text.substr(open + 1, middle - open - 1);
    const std::string again = std::string(function).append(":").append(number).append("] ");
    const std::string_view rest = text.substr(middle + std::string_view(") > [").size());
    const bool isNumber = !number.empty()
        && std::all_of(number.begin(), number.end(), [](unsigned char digit) { return std::isdigit(digit); });
    if (function.empty() || !isNumber || rest.substr(0, again.size()) != again)
        return std::nullopt;
    return Prefix {function, rest.substr(again.size())};
}

size_t lossIn(std::string_view text)
{
    const size_t end = text.find(kLossNote);
    if (end == std::string_view::npos)
        return 0;
    const size_t before = text.substr(0, end).find_last_not_of("0123456789");
    const std::string number(text.substr(before + 1, end - before - 1)); // before may be npos
    return static_cast<size_t>(strtoul(number.c_str(), nullptr, 10));
}

/// @return the text of a field, which is an array of bytes where it is none that JSON can say
std::string textOf(const Json::Value& field)
{
    if (field.isString())
        return field.asString();
    std::string text;
    for (const Json::Value& byte : field.isArray() ? field : Json::Value(Json::arrayValue))
        text += byte.isInt() ? static_cast<char>(byte.asInt()) : '?';
    return text;
}

} // namespace

/// Reads up to the line's end, and keeps no more of it than may be of use. @return false at the end
bool LogLines::readLine(std::string& line)
{
    line.clear();
    bool isCut = false;
    std::streambuf& buffer = *m_input.rdbuf();
    int character = buffer.sbumpc();
    if (character == std::char_traits<char>::eof())
        return false;
    for (; character != '\n' && character != std::char_traits<char>::eof(); character = buffer.sbumpc()) {
        isCut = isCut || line.size() == kLongestLine;
        if (!isCut)
            line += static_cast<char>(character);
    }
    m_condition.cut += isCut ? 1 : 0;
    if (!line.empty() && line.back() == '\r')
        line.pop_back();
    return true;
}

/// A value with line ends in it has its length in front, eight bytes, the lowest first.
std::string LogLines::readBinaryField()
{
    unsigned char bytes[8] = {};
    m_input.rdbuf()->sgetn(reinterpret_cast<char*>(bytes), sizeof bytes);
    uint64_t length = 0;
    for (size_t index = sizeof bytes; index-- > 0;)
        length = length << 8U | bytes[index];
    if (length > kLongestLine)
        return {}; // no such field: what follows is read as lines
    std::string value(static_cast<size_t>(length), '\0');
    value.resize(static_cast<size_t>(
        m_input.rdbuf()->sgetn(value.data(), static_cast<std::streamsize>(value.size()))));
    return value.substr(0, value.find('\n'));
}

std::optional<LogLine> LogLines::fromJson(const std::string& line)
{
    Json::Value entry;
    try {
        const std::unique_ptr<Json::CharReader> reader(Json::CharReaderBuilder().newCharReader());
        if (!reader->parse(line.data(), line.data() + line.size(), &entry, nullptr) || !entry.isObject())
            return std::nullopt;
    } catch (const std::exception&) {
        return std::nullopt; // nested too deeply
    }
    const Json::Value& time = entry["__REALTIME_TIMESTAMP"];
    if (time.isString())
        m_seconds = strtod(time.asCString(), nullptr) / 1e6;
    const std::string message = textOf(entry["MESSAGE"]);
    return ours(message);
}

/// @return the line when it is one of the program's
std::optional<LogLine> LogLines::ours(std::string_view text)
{
    m_condition.lost += lossIn(text);
    for (size_t middle = text.find(") > ["); middle != std::string_view::npos;
         middle = text.find(") > [", middle + 1)) {
        const auto prefix = prefixAround(text, middle);
        if (!prefix)
            continue;
        ++m_condition.ours;
        m_condition.hasTimes = m_condition.hasTimes || m_seconds.has_value();
        return LogLine {m_seconds, std::string(prefix->function),
            unescapedLog(prefix->message, m_condition.escapes), std::string(prefix->message)};
    }
    return std::nullopt;
}

std::optional<LogLine> LogLines::next()
{
    std::string line;
    while (readLine(line)) {
        std::optional<LogLine> found;
        if (const auto seconds = timeAtBeginning(line))
            m_seconds = seconds;
        const size_t first = std::min(line.find_first_not_of(" \t"), line.size());
        if (line.compare(first, 1, "{") == 0)
            found = fromJson(line);
        else if (std::string_view(line).substr(first) == kMessageField)
            found = ours(readBinaryField());
        else
            found = ours(line);
        if (found)
            return found;
    }
    return std::nullopt;
}

} // namespace DaemonSim
