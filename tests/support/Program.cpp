#include "Program.h"

#include <algorithm>
#include <csignal>

namespace tv {

namespace {

constexpr std::string_view kTag = "/tessel-ui: ";
constexpr size_t kLongestShown = 300;
constexpr size_t kLinesShown = 40;

/// @return the message of a log line, nothing for any other line
std::optional<std::string> messageOf(const std::string& line)
{
    if (line.compare(1, kTag.size(), kTag) != 0)
        return std::nullopt;
    const size_t names = line.find(") > [");
    const size_t end = names == std::string::npos ? names : line.find("] ", names);
    if (end == std::string::npos)
        return std::nullopt;
    return line.substr(end + 2);
}

bool matches(const std::string& message, std::string_view expected)
{
    if (expected.empty() || expected.back() != '*')
        return message == expected;
    expected.remove_suffix(1);
    return message.compare(0, expected.size(), expected) == 0;
}

bool contains(const std::string& line, const char* part)
{
    return line.find(part) != std::string::npos;
}

/// Says only that the machine was busy: a thread of the toolkit did not get its turn in time.
bool isLateness(const std::string& line)
{
    return contains(line, "timeout waiting for async rendering") || contains(line, "should have slept");
}

bool isReport(const std::string& line)
{
    return contains(line, "ERROR: AddressSanitizer") || contains(line, "ERROR: LeakSanitizer")
        || contains(line, ": runtime error: ");
}

} // namespace

Program::~Program()
{
#ifdef __SANITIZE_ADDRESS__
    signal(SIGCONT);
    signal(SIGTERM);
    waitForExit();
#endif
    std::string report;
    for (auto line = std::find_if(errors().begin(), errors().end(), isReport); line != errors().end(); ++line)
        report += *line + "\n";
    if (!report.empty())
        ADD_FAILURE() << report;
}

const std::vector<std::string>& Program::log() const
{
    for (; m_parsed < errors().size(); ++m_parsed) {
        const std::string& line = errors()[m_parsed];
        if (line.empty())
            continue;
        if (auto message = messageOf(line))
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
    if (logged(message, from))
        return testing::AssertionSuccess();
    return testing::AssertionFailure()
        << "the log never said \"" << message << "\"" << (running() ? "" : "; the program has ended");
}

testing::AssertionResult Program::logsInOrder(const std::vector<std::string>& messages, size_t from) const
{
    const auto& all = log();
    auto at = all.begin() + static_cast<std::ptrdiff_t>(std::min(from, all.size()));
    for (size_t i = 0; i < messages.size(); ++i) {
        at = std::find_if(at, all.end(), [&](const std::string& one) { return matches(one, messages[i]); });
        if (at == all.end())
            return testing::AssertionFailure() << "the log does not say \"" << messages[i] << "\" after \""
                                               << (i ? messages[i - 1] : "(the beginning)") << "\"";
        ++at;
    }
    return testing::AssertionSuccess();
}

testing::AssertionResult Program::endsWith(int expected) const
{
    const auto actual = waitForExit();
    if (actual == expected)
        return testing::AssertionSuccess();
    if (!actual)
        return testing::AssertionFailure() << "the program still runs";
    return testing::AssertionFailure() << "the program ended with " << *actual << ", not " << expected;
}

std::vector<std::string> Program::complaints() const
{
    std::vector<std::string> result;
    for (const std::string& line : errors()) {
        for (const char* mark : {"ERR<", "CRI<", "-CRITICAL **", "-WARNING **"}) {
            if (contains(line, mark) && !isLateness(line))
                result.push_back(line);
        }
    }
    return result;
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
