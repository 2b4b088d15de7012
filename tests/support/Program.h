// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A program under test and the log it writes to standard error.
#ifndef TESSEL_TESTS_PROGRAM_H
#define TESSEL_TESTS_PROGRAM_H

#include "Process.h"

#include <gtest/gtest.h>

#include <string_view>

namespace tv {

/// A message of the log is what follows "] " in a line such as
/// "I/tessel-ui: TesselUI.cpp: OnCreate(12) > [OnCreate:12] In CTesselUI::OnCreate".
/// Where a message is expected, one that ends in "*" stands for every message that begins so.
class Program : public Process {
public:
    using Process::Process;
    /// Asks a program that still runs to end. What a sanitizer reported is a failure of the test.
    ~Program() override;

    /// @return all messages so far, in order
    const std::vector<std::string>& log() const;
    /// @return how many messages there are now: where to look from for what comes after
    size_t mark() const { return log().size(); }

    bool logged(std::string_view message, size_t from = 0) const { return count(message, from) > 0; }
    size_t count(std::string_view message, size_t from = 0) const;

    testing::AssertionResult waitForLog(std::string_view message, size_t from = 0) const;
    /// Success when the messages came in this order, whatever came between them.
    testing::AssertionResult logsInOrder(const std::vector<std::string>& messages, size_t from = 0) const;
    /// Success when the program ended, or ends, with this status.
    testing::AssertionResult endsWith(int expected) const;

    /// @return what the libraries below the program reported as errors; each is a misuse of theirs
    std::vector<std::string> complaints() const;
    /// @return the lines on standard error that begin so
    std::vector<std::string> lines(std::string_view beginning) const;
    /// @return the last lines on standard error, for a failure's message
    std::string tail() const;

private:
    mutable std::vector<std::string> m_log;
    mutable size_t m_parsed = 0; ///< how many lines of standard error are in m_log already
};

} // namespace tv

#endif
