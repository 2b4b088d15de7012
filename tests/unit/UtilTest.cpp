/// What marks names, and the other text helpers.
#include "Util.h"
#include "Fixtures.h"
#include "NetworkTestPopup.h"

namespace {

using TesselUI::CNetwokTestPopup;
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

TEST(AName, IsEscapedAndMarkedForTheNetworkTest)
{
    const std::pair<std::string, std::string> escapes[] = {
        {"a&b&&", "a&amp;b&amp;&amp;"}, {"&amp;", "&amp;amp;"}, {"<b>&lt;\xFF", "<b>&amp;lt;\xFF"}};
    for (auto [plain, escaped] : escapes)
        EXPECT_EQ(taken(CNetwokTestPopup::func(plain.data())), escaped);
    std::string name(1000, 'a');
    EXPECT_EQ(taken(CNetwokTestPopup::addLTRMarker(name.data())), "&#x200e;" + std::string(246, 'a'));
    EXPECT_EQ(CNetwokTestPopup::func(nullptr), nullptr);
    EXPECT_EQ(CNetwokTestPopup::addLTRMarker(nullptr), nullptr);
    EXPECT_EQ(CNetwokTestPopup::power(-3, 3), -27);
    EXPECT_EQ(CNetwokTestPopup::power(2, 40), 0) << "a product too large must not end the program";
}

} // namespace
