/// What the screen reader is given.
#include "Fixtures.h"
#include "NetUtilAccessibility.h"
#include "elm_flux.h"
#include "vconf.h"

#include <cstring>
#include <fstream>
#include <memory>
#include <unistd.h>

namespace {

using TesselUI::AccessibilityInfo;

std::string taken(char* text)
{
    const std::unique_ptr<char, decltype(&free)> owner {text, free};
    return text ? text : "(null)";
}

class TheReadOutRecord : public ToolkitTest {
protected:
    void SetUp() override
    {
        ToolkitTest::SetUp();
        delaccessObject();
    }
    void TearDown() override
    {
        delaccessObject();
        ToolkitTest::TearDown();
    }
};

TEST_F(TheReadOutRecord, IsOneForTheProcessAndStartsEmpty)
{
    AccessibilityInfo* record = getAccessibiltyObject();
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(getAccessibiltyObject(), record);
    EXPECT_EQ(std::string(record->text1) + record->text2, "");
    EXPECT_FALSE(record->flag);
    strcpy(record->text1, "left over");
    delaccessObject();
    delaccessObject();
    EXPECT_STREQ(getAccessibiltyObject()->text1, "");
}

TEST_F(TheReadOutRecord, GivesTheContextOnceAndThenTheNameAlone)
{
    AccessibilityInfo* record = getAccessibiltyObject();
    strcpy(record->text1, "PIN,Enter<br>it on &amp; on");
    strcpy(record->text2, "<b>Cancel</b>,,");
    record->flag = true;
    EXPECT_EQ(taken(access_info_cb_widget(record, nullptr)), "PIN,Enter\nit on & on,Cancel,,");
    EXPECT_FALSE(record->flag);
    EXPECT_EQ(taken(access_info_cb_widget(record, nullptr)), "Cancel,,");
    EXPECT_EQ(
        journal::missing({"D text1 == PIN,Enter<br>it on &amp; on", "D text2 == <b>Cancel</b>,,",
            "D Entered in access_cb_func to read out the text!", "D <<flag == true >>", "D flag == false"}),
        "");
}

TEST_F(TheReadOutRecord, SurvivesItsOwnAbsence)
{
    auto* record = static_cast<AccessibilityInfo*>(calloc(1, sizeof(AccessibilityInfo)));
    EXPECT_EQ(taken(access_info_cb_widget(record, nullptr)), "");
    EXPECT_EQ(getAccessibiltyObject(), record) << "the data becomes the process's record";
    delaccessObject();
    EXPECT_EQ(access_info_cb_widget(nullptr, nullptr), nullptr);
    EXPECT_TRUE(journal::has("E memory allocated failed"));
    EXPECT_EQ(taken(access_cb_func(nullptr, nullptr, true)), ",");
    EXPECT_EQ(taken(access_cb_func("a", nullptr, false)), "");
    EXPECT_EQ(taken(access_cb_func(nullptr, "b", true)), ",b");
}

class TheReadOut : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        m_file = std::string(getenv("HOME")) + "/speech";
        unlink(m_file.c_str());
        setenv("ORBIS_SPEECH_LOG", m_file.c_str(), 1);
        vconf_set_int("db/menu/system/accessibility/screenreader", 1);
    }
    void TearDown() override
    {
        WindowTest::TearDown();
        unsetenv("ORBIS_SPEECH_LOG");
    }

    /// @return what was spoken since the last call
    std::vector<std::string> spoken()
    {
        toolkit::settle();
        std::vector<std::string> lines;
        std::ifstream file(m_file);
        for (std::string line; std::getline(file, line);)
            lines.push_back(line);
        unlink(m_file.c_str());
        return lines;
    }

    std::string m_file;
};

using Lines = std::vector<std::string>;

TEST_F(TheReadOut, SpeaksOncePerChangeOfTheFocus)
{
    Evas_Object* both = popup({"Yes", "No"});
    show(both);
    EXPECT_EQ(spoken(), Lines {"Yes"});
    toolkit::press(m_window, "Right");
    EXPECT_EQ(spoken(), Lines {"No"});
    toolkit::press(m_window, "Right");
    toolkit::press(m_window, "Up");
    elm_object_focus_set(button(both, 1), EINA_TRUE);
    EXPECT_EQ(spoken(), Lines()) << "the focus did not move";

    elm_object_focus_set(button(both, 0), EINA_TRUE);
    elm_object_focus_set(button(both, 1), EINA_TRUE);
    elm_object_focus_set(button(both, 0), EINA_TRUE);
    EXPECT_EQ(spoken(), Lines {"Yes"}) << "a button that had the focus in passing was read";

    vconf_set_int("db/menu/system/accessibility/screenreader", 0);
    toolkit::press(m_window, "Right");
    EXPECT_EQ(spoken(), Lines());
}

TEST_F(TheReadOut, IsOneLineEvenOfATextWithLineEnds)
{
    Evas_Object* one = popup({"OK"});
    elm_access_info_cb_set(
        button(one, 0), ELM_ACCESS_INFO, [](void*, Evas_Object*) { return strdup("a\nb\r\nc"); }, nullptr);
    show(one);
    EXPECT_EQ(spoken(), Lines {"a b  c"});
}

TEST_F(TheReadOut, SaysNothingOfAWindowThatIsGone)
{
    show(popup({"OK"}));
    spoken();
    Evas_Object* other = popup({"Other"});
    evas_object_show(other);
    evas_object_del(m_window);
    EXPECT_EQ(spoken(), Lines());
}

} // namespace
