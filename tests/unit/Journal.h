// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the process writes to standard error, in the order in which it was written.
#ifndef TESTS_JOURNAL_H
#define TESTS_JOURNAL_H

#include <string>
#include <vector>

namespace journal {

/// From here on standard error goes to a file without a name.
void open();

/// Forgets what was written before.
void clear();

/// Adds a line of the test's own, "T message", so that its place among the program's lines can be checked.
void note(const std::string& message);

/// The lines since clear(). Those of the program are "LEVEL message", with LEVEL one of D, I and E and
/// without the place in the code; others are as they were written.
std::vector<std::string> lines();

int count(const std::string& line);
inline bool has(const std::string& line)
{
    return count(line) > 0;
}

/// @return the first of @p wanted that does not come behind those before it; "" when all do
std::string missing(const std::vector<std::string>& wanted);

} // namespace journal

#endif
