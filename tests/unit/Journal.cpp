// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Journal.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <unistd.h>

namespace journal {

namespace {

/// A program line is "I/tessel-ui: File.cpp: function(12) > [function:12] message".
std::string withoutPlace(const std::string& line)
{
    const size_t mark = line.find(") > [");
    const size_t end = mark == std::string::npos ? mark : line.find("] ", mark);
    if (line.size() < 2 || line[1] != '/' || end == std::string::npos)
        return line;
    return line.substr(0, 1) + line.substr(end + 1);
}

} // namespace

void open()
{
    FILE* file = tmpfile();
    if (!file || dup2(fileno(file), STDERR_FILENO) < 0)
        abort();
    fclose(file);
}

void clear()
{
    if (ftruncate(STDERR_FILENO, 0) != 0)
        abort();
    lseek(STDERR_FILENO, 0, SEEK_SET);
}

void note(const std::string& message)
{
    dprintf(STDERR_FILENO, "T %s\n", message.c_str());
}

std::vector<std::string> lines()
{
    std::vector<std::string> result;
    std::ifstream file("/proc/self/fd/2"); // from its beginning, and without moving the end to write at
    for (std::string line; std::getline(file, line);)
        result.push_back(withoutPlace(line));
    return result;
}

int count(const std::string& line)
{
    const auto all = lines();
    return static_cast<int>(std::count(all.begin(), all.end(), line));
}

std::string missing(const std::vector<std::string>& wanted)
{
    const auto all = lines();
    auto from = all.begin();
    for (const std::string& line : wanted) {
        from = std::find(from, all.end(), line);
        if (from == all.end())
            return line;
        ++from;
    }
    return "";
}

} // namespace journal
