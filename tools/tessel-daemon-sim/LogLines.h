// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The program's lines in a log as it comes from the field.
#pragma once

#include <istream>
#include <optional>
#include <string>
#include <string_view>

namespace DaemonSim {

struct LogLine {
    std::optional<double> seconds; ///< only differences within one log mean something
    std::string function; ///< which wrote it
    std::string message; ///< control characters as themselves
    std::string written; ///< the message as it stands there
};

/// What the whole of a log was like.
struct LogCondition {
    size_t ours = 0; ///< lines of the program
    size_t cut = 0; ///< lines too long to be read as a whole
    size_t lost = 0; ///< lines that the program could not write, as it told
    size_t escapes = 0; ///< which a backslash in a name looks the same as
    bool hasTimes = false;
};

/// Reads what the program wrote to standard error, with or without a time and a tag in front of each line,
/// and what the journal's tools print of it: "short" and its kin, "verbose", "export" and "json". Whatever
/// else there is, is skipped; nothing that a file holds is an error.
class LogLines {
public:
    /// @param input  borrowed
    explicit LogLines(std::istream& input)
        : m_input(input)
    {
    }

    /// @return the next line of the program, nothing at the end
    std::optional<LogLine> next();
    const LogCondition& condition() const { return m_condition; }

private:
    bool readLine(std::string& line);
    std::string readBinaryField();
    std::optional<LogLine> ours(std::string_view text);
    std::optional<LogLine> fromJson(const std::string& line);

    std::istream& m_input;
    LogCondition m_condition;
    std::optional<double> m_seconds; ///< of the line, or the journal's entry, that is being read
};

} // namespace DaemonSim
