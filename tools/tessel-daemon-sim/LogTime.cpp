// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "LogTime.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <string>

namespace DaemonSim {

namespace {

constexpr size_t kLongestTime = 64; ///< bytes

/// A line of the system log has no year; any one does that has all days.
constexpr int kSomeYear = 100;

/// @return the fraction of a second that stands there, which may be none, in @p text; moves behind it
double takeFraction(const char*& text)
{
    if (*text != '.' && *text != ',')
        return 0;
    const char* const begin = text++;
    while (*text >= '0' && *text <= '9')
        ++text;
    const std::string digits = "0." + std::string(begin + 1, text);
    return strtod(digits.c_str(), nullptr);
}

/// @return what a zone such as +0200 or -03:30 adds, in seconds; 0 for a name
double takeZone(const char* text)
{
    int hours = 0;
    int minutes = 0;
    const char sign = *text;
    if ((sign != '+' && sign != '-') || sscanf(text + 1, "%2d", &hours) != 1 || strlen(text) < 5)
        return 0;
    sscanf(text + (text[3] == ':' ? 4 : 3), "%2d", &minutes);
    return (sign == '-' ? -60.0 : 60.0) * (hours * 60 + minutes);
}

bool isReal(const tm& date)
{
    return date.tm_mon >= 0 && date.tm_mon < 12 && date.tm_mday >= 1 && date.tm_mday <= 31
        && date.tm_hour >= 0 && date.tm_hour < 24 && date.tm_min >= 0 && date.tm_min < 60 && date.tm_sec >= 0
        && date.tm_sec <= 60;
}

/// @param rest  what follows the whole seconds
std::optional<double> secondsOf(tm date, const char* rest)
{
    if (!isReal(date))
        return std::nullopt;
    const double fraction = takeFraction(rest);
    return static_cast<double>(timegm(&date)) + fraction - takeZone(rest);
}

/// "Nov 22 07:22:05.123456"
std::optional<double> systemLogTime(const char* text)
{
    constexpr char kMonths[] = "JanFebMarAprMayJunJulAugSepOctNovDec";
    char month[4] = "";
    tm date = {};
    int end = 0;
    if (sscanf(text, "%3s %2d %2d:%2d:%2d%n", month, &date.tm_mday, &date.tm_hour, &date.tm_min, &date.tm_sec,
            &end)
        != 5)
        return std::nullopt;
    const char* const found = strlen(month) == 3 ? strstr(kMonths, month) : nullptr;
    if (!found)
        return std::nullopt;
    date.tm_mon = static_cast<int>(found - kMonths) / 3;
    date.tm_year = kSomeYear;
    return secondsOf(date, text + end);
}

/// "2026-11-22T07:22:05.123456+0000", or with a blank, or behind the day of the week
std::optional<double> isoTime(const char* text)
{
    tm date = {};
    int skipped = 0;
    sscanf(text, "%*1[A-Z]%*2[a-z] %n", &skipped);
    int end = 0;
    if (sscanf(text + skipped, "%4d-%2d-%2d%*1[T ]%2d:%2d:%2d%n", &date.tm_year, &date.tm_mon, &date.tm_mday,
            &date.tm_hour, &date.tm_min, &date.tm_sec, &end)
        != 6)
        return std::nullopt;
    date.tm_year -= 1900;
    --date.tm_mon;
    return secondsOf(date, text + skipped + end);
}

/// "[ 1234.567890]", "1763796125.123456" or "__REALTIME_TIMESTAMP=1763796125123456"
std::optional<double> plainTime(const char* text)
{
    double seconds = 0;
    char after = '\0';
    if (sscanf(text, "[ %15lf%c", &seconds, &after) == 2 && after == ']')
        return seconds;
    constexpr char kField[] = "__REALTIME_TIMESTAMP=";
    if (strncmp(text, kField, sizeof kField - 1) == 0)
        return strtod(text + sizeof kField - 1, nullptr) / 1e6;
    int end = 0;
    constexpr size_t kFewestDigits = 9; // any other number may begin a line
    if (strspn(text, "0123456789") >= kFewestDigits && sscanf(text, "%*11[0-9].%*9[0-9]%n", &end) == 0
        && end > 0 && text[end] == ' ')
        return strtod(text, nullptr);
    return std::nullopt;
}

} // namespace

std::optional<double> timeAtBeginning(std::string_view line)
{
    char text[kLongestTime + 1] = "";
    line.copy(text, std::min(line.size(), kLongestTime));
    for (const auto& parse : {plainTime, systemLogTime, isoTime}) {
        const auto seconds = parse(text);
        if (seconds && std::isfinite(*seconds))
            return seconds;
    }
    return std::nullopt;
}

} // namespace DaemonSim
