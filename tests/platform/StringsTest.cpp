#include "string_util.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

/// @param room  of the buffer, which ends there: a sanitizer sees a byte too many
std::string combine(int room, const char* format, const char* one = "A", const char* two = "B")
{
    std::vector<char> out(static_cast<size_t>(room));
    const int length = CStringUtil::CombinateStrings(out.data(), room, format, one, two, "C", "D");
    const std::string text = out.data();
    EXPECT_EQ(length, static_cast<int>(text.size()));
    return text;
}

} // namespace

/// What holds for every template and size, the fuzz target "combiner" demands.
TEST(ATemplate, TakesItsArgumentsInAnyOrderAndIsCutAtACharacter)
{
    constexpr int kRoom = 64;
    EXPECT_EQ(combine(kRoom, "%4%3 and %2%1%1"), "DC and BAA");
    EXPECT_EQ(combine(kRoom, "100%% of %1, 5% %5 %0 %s %"), "100% of A, 5% %5 %0 %s %");
    EXPECT_EQ(combine(kRoom, "%%1 %%%1 %10"), "%1 %A A0");
    EXPECT_EQ(combine(kRoom, "[%1]", "%2%%"), "[%2%%]") << "arguments are no templates";
    EXPECT_EQ(combine(kRoom, "[%1%2]", nullptr, ""), "[]");
    EXPECT_EQ(combine(kRoom, nullptr), "");
    for (const int room : {3, 4, 5})
        EXPECT_EQ(combine(room, "a%1", "é电"), room < 4 ? "a" : "aé") << room;
    EXPECT_EQ(combine(4, "\x80\x80\x80\x80\x80"), "\x80\x80\x80") << "no UTF-8";
    EXPECT_EQ(combine(4, "ab%1c", "é"), "ab") << "nothing follows a cut";
    char out[8] = "kept";
    EXPECT_EQ(CStringUtil::CombinateStrings(out, 0, "x", "", "", "", ""), -1);
    EXPECT_EQ(CStringUtil::CombinateStrings(nullptr, 8, "x", "", "", "", ""), -1);
    EXPECT_STREQ(out, "kept");
}
