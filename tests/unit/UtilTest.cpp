/// What cuts and measures texts.
#include "Util.h"
#include "Fixtures.h"
#include "combinate.h"

#include <cstring>

namespace {

using TesselUI::TSUtil;

class AText : public WindowTest { };

TEST_F(AText, IsMeasuredInLinesAtAWidth)
{
    const auto lines = [this](const std::string& text, int width = 808) {
        return TSUtil::m_GetTextNumLines(m_window,
            "DEFAULT='font=NorvaleSans-500 font_size=28 align=left color=#ffffff wrap=word'", text.c_str(),
            width);
    };
    EXPECT_EQ(lines(""), 0);
    EXPECT_EQ(lines("one<br>two<br>three"), 3);
    EXPECT_EQ(TSUtil::m_GetTextNumLines(nullptr, nullptr, nullptr, 808), 0);
    std::string text = "mmm";
    while (lines(text) == 1 && text.size() < 500)
        text += " mmm";
    EXPECT_EQ(lines(text), 2) << text;
    EXPECT_EQ(lines(text, 1700), 1) << "the text that just wraps at 808 pixels";
}

TEST(AName, IsMarkedAndCutAt254Bytes)
{
    const auto marked = [](std::string name) { return taken(TSUtil::AddLTRMarker(name.data())); };
    EXPECT_EQ(TSUtil::AddLTRMarker(nullptr), nullptr);
    EXPECT_EQ(marked(""), "\xE2\x80\x8E\xE2\x80\x8F");
    EXPECT_EQ(marked(std::string(248, 'n')).size(), 254U);
    EXPECT_EQ(marked(std::string(249, 'n')), "\xE2\x80\x8E" + std::string(249, 'n') + "\xE2\x80");
    EXPECT_EQ(marked(std::string(1 << 20, 'n')), "\xE2\x80\x8E" + std::string(251, 'n'));
}

TEST(ACombinedSentence, IsCutAtTheEndOfTheCallersBuffer)
{
    char buffer[TesselUI::kCombinedTextSize + 1];
    memset(buffer, '#', sizeof buffer);
    combinate_string("%1, %2", "a", std::string(1000, 'x').c_str(), buffer);
    EXPECT_EQ(buffer, "a, " + std::string(TesselUI::kCombinedTextSize - 4, 'x'));
    EXPECT_EQ(buffer[TesselUI::kCombinedTextSize], '#') << "written behind the buffer";
    combinate_string("%1%2", "a", nullptr, buffer);
    EXPECT_STREQ(buffer, "a");
    combinate_string("%1", "a", nullptr, nullptr);
}

} // namespace
