/// What marks names.
#include "Util.h"
#include "Fixtures.h"

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

} // namespace
