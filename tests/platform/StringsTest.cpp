#include "efl_assist.h"
#include "string_util.h"

#include <cstring>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

std::string combine(const char* format, const char* one = "A", const char* two = "B", const char* three = "C",
    const char* four = "D")
{
    char out[64] = "untouched";
    const int length = CStringUtil::CombinateStrings(out, sizeof out, format, one, two, three, four);
    EXPECT_EQ(length, static_cast<int>(std::strlen(out)));
    return out;
}

} // namespace

TEST(ATemplate, TakesItsArgumentsInAnyOrder)
{
    EXPECT_EQ(combine("%1 and %2"), "A and B");
    EXPECT_EQ(combine("%4%3%2%1%1"), "DCBAA");
    EXPECT_EQ(combine("100%% of %1, 5% %5 %0 %s %"), "100% of A, 5% %5 %0 %s %");
    EXPECT_EQ(combine("%%1 %%%1 %10"), "%1 %A A0");
    EXPECT_EQ(combine("[%1]", "%2%%"), "[%2%%]") << "arguments are no templates";
    EXPECT_EQ(combine("[%1%2]", nullptr, ""), "[]");
    EXPECT_EQ(combine(nullptr), "");
}

TEST(ATemplate, IsCutAtACharacterAtEverySize)
{
    const std::string whole = "aé电\U0001F4FAé|电é\U0001F4FA|z";
    for (int size = 1; size <= static_cast<int>(whole.size()) + 2; ++size) {
        size_t expected = 0; // whole characters only
        for (size_t end = 1; end <= whole.size() && end < static_cast<size_t>(size); ++end) {
            if (end == whole.size() || (static_cast<unsigned char>(whole[end]) & 0xC0U) != 0x80U)
                expected = end;
        }
        std::vector<char> out(static_cast<size_t>(size)); // exact, so that a sanitizer sees a byte too many
        EXPECT_EQ(CStringUtil::CombinateStrings(
                      out.data(), size, "aé%1é|%2|z", "电\U0001F4FA", "电é\U0001F4FA", "", ""),
            static_cast<int>(expected));
        EXPECT_EQ(std::string(out.data()), whole.substr(0, expected)) << size;
    }
    char out[8] = "kept";
    EXPECT_EQ(CStringUtil::CombinateStrings(out, 0, "x", "", "", "", ""), -1);
    EXPECT_EQ(CStringUtil::CombinateStrings(out, -1, "x", "", "", "", ""), -1);
    EXPECT_EQ(CStringUtil::CombinateStrings(nullptr, 8, "x", "", "", "", ""), -1);
    EXPECT_STREQ(out, "kept");
    EXPECT_EQ(CStringUtil::CombinateStrings(out, 4, "\x80\x80\x80\x80\x80", "", "", "", ""), 3) << "no UTF-8";
    EXPECT_EQ(CStringUtil::CombinateStrings(out, 4, "ab\xC3", "", "", "", ""), 3);
    EXPECT_EQ(CStringUtil::CombinateStrings(out, 4, "ab%1c", "é", "", "", ""), 2) << "nothing follows a cut";
}

TEST(TheAssistLibrary, TakesOnlyZeroes)
{
    EXPECT_EQ(ea_init(0, 0), 0);
    EXPECT_EQ(ea_init(1, 0), -1);
    EXPECT_EQ(ea_init(0, 1), -1);
}
