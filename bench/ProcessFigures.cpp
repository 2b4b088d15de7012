// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "ProcessFigures.h"

#include <glib.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

namespace bench {

namespace {

/// @return the number after a word at the beginning of a line of a file, 0 without it
long numberAfter(const std::string& file, const std::string& word)
{
    std::ifstream input(file);
    for (std::string line; std::getline(input, line);) {
        if (line.compare(0, word.size(), word) == 0)
            return std::stol(line.substr(word.size()));
    }
    return 0;
}

std::string folderOf(pid_t process)
{
    return "/proc/" + std::to_string(process);
}

long pageFaultsOf(pid_t process)
{
    std::ifstream input(folderOf(process) + "/stat");
    std::string text {std::istreambuf_iterator<char>(input), {}};
    constexpr int kBetween = 7; // fields from the name's end to the faults
    std::istringstream fields(text.substr(std::min(text.size(), text.rfind(')') + 1)));
    std::string skipped;
    for (int i = 0; i < kBetween; ++i)
        fields >> skipped;
    long faults = 0;
    fields >> faults;
    return faults;
}

long wakeUpsOf(pid_t process)
{
    long sum = 0;
    std::error_code error;
    for (const auto& thread : std::filesystem::directory_iterator(folderOf(process) + "/task", error))
        sum += numberAfter(thread.path().string() + "/status", "voluntary_ctxt_switches:");
    return sum;
}

/// @param kind  as the kernel calls it
double memoryOf(pid_t process, const char* kind)
{
    constexpr double kKiB = 1024;
    return static_cast<double>(numberAfter(folderOf(process) + "/smaps_rollup", kind)) / kKiB;
}

int entriesOf(const std::string& path)
{
    std::error_code error;
    const std::filesystem::directory_iterator folder(path, error);
    return static_cast<int>(std::distance(begin(folder), end(folder)));
}

} // namespace

ProcessFigures figuresOf(pid_t process)
{
    constexpr double kNanoseconds = 1e9;
    clockid_t clock {};
    timespec time {};
    if (clock_getcpuclockid(process, &clock) == 0)
        clock_gettime(clock, &time);
    return {static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) / kNanoseconds,
        pageFaultsOf(process), wakeUpsOf(process)};
}

double wakeUpsASecond(pid_t process, double seconds)
{
    const long before = wakeUpsOf(process);
    g_usleep(static_cast<gulong>(seconds * G_USEC_PER_SEC));
    return static_cast<double>(std::max(0L, wakeUpsOf(process) - before)) / seconds; // a thread may end
}

double proportionalMiB(pid_t process)
{
    return memoryOf(process, "Pss:");
}

double ownMiB(pid_t process)
{
    return memoryOf(process, "Pss_Anon:");
}

int descriptorsOf(pid_t process)
{
    return entriesOf(folderOf(process) + "/fd");
}

int threadsOf(pid_t process)
{
    return entriesOf(folderOf(process) + "/task");
}

} // namespace bench
