// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Program.h"

#include <algorithm>
#include <csignal>
#include <iterator>

namespace tv {

namespace {

constexpr std::string_view kTag = "/tessel-ui: ";
constexpr size_t kLongestShown = 300;
constexpr size_t kLinesShown = 40;

/// @return the message of a log line, nothing for any other line
std::optional<std::string> messageOf(const std::string& line)
{
    if (line.size() < kTag.size() || line.compare(1, kTag.size(), kTag) != 0)
        return std::nullopt;
    const size_t names = line.find(") > [");
    const size_t end = names == std::string::npos ? names : line.find("] ", names);
    return end == std::string::npos ? std::nullopt : std::optional(line.substr(end + 2));
}

bool matches(const std::string& message, std::string_view expected)
{
    if (expected.empty() || expected.back() != '*')
        return message == expected;
    expected.remove_suffix(1);
    return message.compare(0, expected.size(), expected) == 0;
}

bool hasOneOf(const std::string& line, const std::vector<const char*>& parts)
{
    return std::any_of(
        parts.begin(), parts.end(), [&](const char* part) { return line.find(part) != std::string::npos; });
}

template <typename Condition>
std::vector<std::string> those(const std::vector<std::string>& lines, const Condition& condition)
{
    std::vector<std::string> result;
    std::copy_if(lines.begin(), lines.end(), std::back_inserter(result), condition);
    return result;
}

} // namespace

/// An orderly end: the sanitizers look for leaks then, and a window whose owner is killed while openbox takes
/// it stays in openbox's list for good, where the next program's window, which gets the same number, is
/// found.
Program::~Program()
{
    signal(SIGCONT);
    signal(SIGTERM);
    waitForExit();
    EXPECT_EQ(those(errors(),
                  [](auto& line) {
                      return hasOneOf(
                          line, {"ERROR: AddressSanitizer", "ERROR: LeakSanitizer", ": runtime error: "});
                  }),
        std::vector<std::string> {});
}

const std::vector<std::string>& Program::log() const
{
    for (; m_parsed < errors().size(); ++m_parsed) {
        if (auto message = messageOf(errors()[m_parsed]))
            m_log.push_back(std::move(*message));
    }
    return m_log;
}

size_t Program::count(std::string_view message, size_t from) const
{
    const auto& all = log();
    const auto begin = all.begin() + static_cast<std::ptrdiff_t>(std::min(from, all.size()));
    return static_cast<size_t>(
        std::count_if(begin, all.end(), [&](const std::string& one) { return matches(one, message); }));
}

testing::AssertionResult Program::waitForLog(std::string_view message, size_t from) const
{
    waitUntil([&] { return logged(message, from) || !running(); });
    return testing::AssertionResult(logged(message, from))
        << "the log never said \"" << message << "\"" << (running() ? "" : "; the program has ended");
}

testing::AssertionResult Program::logsInOrder(const std::vector<std::string>& messages, size_t from) const
{
    const auto& all = log();
    auto at = all.begin() + static_cast<std::ptrdiff_t>(std::min(from, all.size()));
    for (const std::string& message : messages) {
        at = std::find_if(at, all.end(), [&](const std::string& one) { return matches(one, message); });
        if (at == all.end())
            return testing::AssertionFailure() << "the log does not say \"" << message << "\", or too early";
        ++at;
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult Program::endsWith(int expected) const
{
    const auto actual = waitForExit();
    return testing::AssertionResult(actual == expected)
        << (actual ? "the program ended with " + std::to_string(*actual)
                   : std::string("the program still runs"));
}

std::vector<std::string> Program::complaints() const
{
    return those(errors(), [](auto& line) {
        // That a thread of the toolkit did not get its turn in time says only that the machine was busy.
        return hasOneOf(line, {"ERR<", "CRI<", "-CRITICAL **", "-WARNING **"})
            && !hasOneOf(line, {"timeout waiting for async rendering", "should have slept"});
    });
}

std::vector<std::string> Program::lines(std::string_view beginning) const
{
    return those(errors(), [&](auto& line) { return line.compare(0, beginning.size(), beginning) == 0; });
}

std::string Program::tail() const
{
    const auto& all = errors();
    std::string text;
    for (size_t i = all.size() - std::min(kLinesShown, all.size()); i < all.size(); ++i)
        text += "  " + all[i].substr(0, kLongestShown) + "\n";
    return text;
}

} // namespace tv
