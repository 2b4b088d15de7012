#include "string_util.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace {

/// @param room  of the buffer, which ends there: a sanitizer sees a byte too many
std::string combine(int room, const char* format, const char* one = "A", const char* two = "B",
    const char* three = "C", const char* four = "D")
{
    std::vector<char> out(static_cast<size_t>(room));
    const int length = CStringUtil::CombinateStrings(out.data(), room, format, one, two, three, four);
    const std::string text = out.data();
    EXPECT_EQ(length, static_cast<int>(text.size()));
    return text;
}

} // namespace

TEST(ATemplate, TakesItsArgumentsInAnyOrder)
{
    constexpr int kRoom = 64;
    EXPECT_EQ(combine(kRoom, "%4%3 and %2%1%1"), "DC and BAA");
    EXPECT_EQ(combine(kRoom, "100%% of %1, 5% %5 %0 %s %"), "100% of A, 5% %5 %0 %s %");
    EXPECT_EQ(combine(kRoom, "%%1 %%%1 %10"), "%1 %A A0");
    EXPECT_EQ(combine(kRoom, "[%1]", "%2%%"), "[%2%%]") << "arguments are no templates";
    EXPECT_EQ(combine(kRoom, "[%1%2]", nullptr, ""), "[]");
    EXPECT_EQ(combine(kRoom, nullptr), "");
}

TEST(ATemplate, IsCutAtACharacterAtEverySize)
{
    const std::string whole = "aé电\U0001F4FAé|电é\U0001F4FA|z";
    for (size_t room = 1; room <= whole.size() + 2; ++room) {
        size_t expected = std::min(room - 1, whole.size());
        while (expected < whole.size() && (static_cast<unsigned char>(whole[expected]) & 0xC0U) == 0x80U)
            --expected;
        EXPECT_EQ(combine(static_cast<int>(room), "aé%1é|%2|z", "电\U0001F4FA", "电é\U0001F4FA"),
            whole.substr(0, expected));
    }
    EXPECT_EQ(combine(4, "\x80\x80\x80\x80\x80"), "\x80\x80\x80") << "no UTF-8";
    EXPECT_EQ(combine(4, "ab\xC3"), "ab\xC3");
    EXPECT_EQ(combine(4, "ab%1c", "é"), "ab") << "nothing follows a cut";
    char out[8] = "kept";
    for (const int none : {0, -1})
        EXPECT_EQ(CStringUtil::CombinateStrings(out, none, "x", "", "", "", ""), -1);
    EXPECT_EQ(CStringUtil::CombinateStrings(nullptr, 8, "x", "", "", "", ""), -1);
    EXPECT_STREQ(out, "kept");
}
