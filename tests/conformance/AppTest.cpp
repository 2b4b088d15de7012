// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The life of an application, seen by a small one in a process of its own.
#include <algorithm>
#include <array>
#include <cstdio>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

using Words = std::vector<std::string>;

/// @return what the application told; empty when it did not end with 0
Words run(const std::string& task)
{
    std::array<char, 4096> self {};
    EXPECT_GT(readlink("/proc/self/exe", self.data(), self.size() - 1), 0);
    // A toolkit that is started twice keeps what the first start made.
    const std::string command =
        std::string("ASAN_OPTIONS=detect_leaks=0 timeout 20 '") + self.data() + "' --application " + task;
    FILE* output = popen(command.c_str(), "r");
    Words lines;
    for (std::array<char, 256> line {}; fgets(line.data(), line.size(), output);) {
        lines.emplace_back(line.data());
        lines.back().pop_back(); // the line end
    }
    EXPECT_EQ(pclose(output), 0);
    return lines;
}

/// Success when these came in this order, with nothing but the window's own coming and going in between.
testing::AssertionResult told(Words lines, const Words& expected)
{
    const auto isWindows = [](const std::string& line) { return line == "resume" || line == "pause"; };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isWindows), lines.end());
    return testing::AssertionResult(lines == expected) << testing::PrintToString(lines);
}

} // namespace

TEST(AnApplication, IsCreatedServedAndTerminatedInThisOrder)
{
    const Words life {"create", "app_control", "terminate", "result 0"};
    EXPECT_TRUE(told(run("once"), life));
    EXPECT_TRUE(told(run("signal"), life)) << "ended by the one that ends services";
}

TEST(AnApplication, HasGLibServedByItsLoop)
{
    EXPECT_TRUE(told(
        run("glib"), {"create", "app_control", "idle", "timeout", "descriptor", "terminate", "result 0"}))
        << "without it nothing comes over the bus";
}
