// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Popup requests in the settings store, whatever they hold.
#include "Bounded.h"
#include "Fixtures.h"
#include "PopupRequest.h"
#include "TesselUI.h"
#include "vconf.h"

namespace {

using namespace TesselUI;

class ARequest : public ApplicationTest {
protected:
    void SetUp() override
    {
        ApplicationTest::SetUp();
        start();
    }

    /// Serves a request as the store's change would. @return the title of the popup that is up then, or ""
    std::string shownFor(const std::string& json)
    {
        journal::clear();
        EXPECT_EQ(vconf_set_str(TESSEL_VCONF, json.c_str()), VCONF_OK);
        CTesselUI::m_OnMethodPopup(nullptr, nullptr);
        toolkit::settle();
        return top() ? elm_object_part_text_get(top()->object, "title,text") : "";
    }
};

TEST_F(ARequest, ReadsWhateverItsMembersHold)
{
    const struct {
        const char* json;
        const char* pin;
        const char* name;
    } requests[] = {
        {R"({"page":"pin","pin":42,"mobilename":true})", "42", "true"},
        {R"({"page":"pin","pin":["0042"],"mobilename":{"first":"Anna"}})", "", ""},
        {R"({"page":"pin","pin":null,"mobilename":"A\u0000nna"})", "", "A"},
        {"{\"page\":\"pin\",\"pin\":\"\xFF\xC3\",\"mobilename\":\"\xE2\x82\"}", "\\xff\\xc3", "\\xe2\\x82"},
        {R"({"page":"tnc","page":"pin","pin":"<b>&","mobilename":"</color>%1%s"})", "<b>&", "</color>%1%s"},
    };
    for (const auto& [json, pin, name] : requests) {
        SCOPED_TRACE(json);
        EXPECT_EQ(shownFor(json), text("SID_PIN"));
        EXPECT_TRUE(journal::has("I Set Meassge [" + std::string(pin) + "] Mobile Name =  [" + name + "]"));
    }
}

TEST_F(ARequest, LeavesThePopupAsItIsWhenItNamesNoPage)
{
    const char* const requests[] = {R"({"page":"PIN"})", R"({"page":"pin\u0000"})", R"({"page":["pin"]})",
        R"({"page":{"page":"pin"}})", R"({"page":1.5e300})", "\xEF\xBB\xBF{}", R"(["page","pin"])", "7",
        "null", "", R"({"page":"pin")", "{page:pin}"};
    ASSERT_EQ(shownFor(R"({"page":"tnc"})"), text("COM_TV_SID_TESSEL"));
    for (const char* json : requests)
        EXPECT_EQ(shownFor(json), text("COM_TV_SID_TESSEL")) << json;
    vconf_set_int(TESSEL_VCONF, 3);
    CTesselUI::m_OnMethodPopup(nullptr, nullptr);
    EXPECT_TRUE(journal::has("E No value in VCONF")) << "a number is no request";
}

TEST_F(ARequest, MayBeOfAnyDepthAndSize)
{
    constexpr size_t kDepth = 100000;
    std::string members;
    for (size_t i = 0; i < kDepth; ++i)
        members += R"({"page":)";
    EXPECT_EQ(shownFor(members), "");
    EXPECT_EQ(shownFor(std::string(kDepth, '[')), "");

    // As long as a request may be; names are kept in part.
    const auto pinOf = [](const std::string& name) {
        return R"({"page":"pin","pin":"0042","mobilename":")" + name + "\"}";
    };
    const std::string longName(kLongestRequest - pinOf("").size(), 'x');
    EXPECT_EQ(shownFor(pinOf(longName)), text("SID_PIN"));
    EXPECT_EQ(CTesselUI::getInstance()->GetJsonData("mobilename").size(), kLongestText);
    for (const std::string& shown : toolkit::textsOf(m_window))
        EXPECT_LT(shown.size(), 512U);
    // Longer ones are no requests, are not kept, and do not fill the log.
    for (const std::string& longer : {longName + "x", std::string(1 << 20, '[')}) {
        EXPECT_EQ(shownFor(pinOf(longer)), text("SID_PIN")) << "the one before stays";
        EXPECT_EQ(CTesselUI::getInstance()->GetJsonData("page"), "");
        EXPECT_TRUE(journal::has(
            "I parsingSuccessful[false]  root [" + pinOf(longer).substr(0, kLongestText) + "] "));
    }
}

TEST_F(ARequest, IsCutBetweenCharactersWhereItIsCut)
{
    const std::string sign = "\xF0\x9F\x93\xB1";
    for (size_t lead = 0; lead < sign.size(); ++lead) {
        std::string name(kLongestText - lead, 'x');
        const std::string cut(bounded(name + sign));
        EXPECT_EQ(cut, name);
    }
    EXPECT_EQ(bounded(std::string_view("A\0B", 3)).size(), 3U);
    EXPECT_EQ(bounded(std::string(kLongestText, '\x80')).size(), kLongestText);
    EXPECT_EQ(bounded(static_cast<const char*>(nullptr)), "");
}

} // namespace
