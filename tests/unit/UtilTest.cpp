/// What cuts and measures texts.
#include "Util.h"
#include "Fixtures.h"
#include "combinate.h"

#include <cstring>

namespace {

using TesselUI::TSUtil;

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
