// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The log takes what the program writes, keeps it in order, and holds nobody up.
#include "Processes.h"

#include "dlog.h"

#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <string>
#include <vector>

namespace {

/// @return the log's end: what CONFORMANCE_LOG, a command of the shell's, prints; without it @p standardError
std::string logText(FILE* standardError)
{
    const char* command = std::getenv("CONFORMANCE_LOG");
    FILE* log = command ? popen(command, "r") : standardError;
    std::string all;
    rewind(standardError);
    for (int c = 0; log && (c = fgetc(log)) != EOF;)
        all += static_cast<char>(c);
    if (command)
        pclose(log);
    return all;
}

} // namespace

TEST(TheLog, TakesLinesOfEveryLevelAndLengthInOrder)
{
    FILE* file = tmpfile();
    ASSERT_NE(file, nullptr);
    const std::string mark = "conformance-" + std::to_string(getpid()) + "-";
    const std::vector<std::pair<log_priority, std::string>> lines {{DLOG_DEBUG, "first"},
        {DLOG_INFO, "Größe"}, {DLOG_ERROR, "\xFF no UTF-8"}, {DLOG_INFO, std::string(2000, 'x')},
        {DLOG_DEBUG, "%s%n"}, {DLOG_ERROR, "last\n\n"}};
    apart([&] {
        dup2(fileno(file), STDERR_FILENO);
        for (const auto& [level, text] : lines)
            EXPECT_GE(dlog_print(level, "tessel-ui", "%s: %s(%d) > [%s:%d] %s", "file", "function", 1,
                          "function", 1, (mark + text).c_str()),
                0);
    });
    const std::string log = logText(file);
    size_t at = 0;
    for (const auto& [level, text] : lines) {
        const std::string plain =
            text.substr(0, text.find_first_of("\xFF\n")); // those may be written otherwise
        const size_t found = log.find("[function:1] " + mark + plain, at);
        EXPECT_NE(found, std::string::npos) << plain.substr(0, 20) << " is missing or out of order";
        at = found == std::string::npos ? at : found + 1;
    }
    fclose(file);
}

TEST(TheLog, HoldsNobodyUpWhereNobodyReadsIt)
{
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe(ends), 0);
    apart([&] { // which ends it when it hangs
        dup2(ends[1], STDERR_FILENO);
        const std::string text(1000, 'x');
        for (int i = 0; i < 1000; ++i)
            dlog_print(DLOG_INFO, "tessel-ui", "%s", text.c_str());
    });
    close(ends[0]);
    close(ends[1]);
}
