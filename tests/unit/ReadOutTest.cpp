/// What the screen reader is given.
#include "Fixtures.h"
#include "Folders.h"
#include "NetUtilAccessibility.h"
#include "vconf.h"

#include <cstring>
#include <unistd.h>

namespace {

using Lines = std::vector<std::string>;

TEST(TheReadOutRecord, GivesTheContextOnceAndThenTheNameAlone)
{
    using TesselUI::AccessibilityInfo;
    AccessibilityInfo* record = getAccessibiltyObject();
    strcpy(record->text1, "PIN,Enter<br>it on &amp; on");
    strcpy(record->text2, "<b>Cancel</b>,,");
    record->flag = true;
    EXPECT_EQ(taken(access_info_cb_widget(record, nullptr)), "PIN,Enter\nit on & on,Cancel,,");
    EXPECT_FALSE(record->flag);
    EXPECT_EQ(taken(access_info_cb_widget(record, nullptr)), "Cancel,,");
    delaccessObject();
    delaccessObject();
    EXPECT_EQ(access_info_cb_widget(nullptr, nullptr), nullptr);
    auto* given = static_cast<AccessibilityInfo*>(calloc(1, sizeof(AccessibilityInfo)));
    EXPECT_EQ(taken(access_info_cb_widget(given, nullptr)), "");
    EXPECT_EQ(getAccessibiltyObject(), given) << "the data becomes the process's record";
    delaccessObject();
    EXPECT_STREQ(getAccessibiltyObject()->text1, "");
    EXPECT_EQ(taken(access_cb_func(nullptr, "b", true)), ",b");
    delaccessObject();
}

using TheReadOut = WindowTest;

TEST_F(TheReadOut, SpeaksOneLineForEachChangeOfTheFocus)
{
    const std::string log = std::string(getenv("HOME")) + "/speech";
    setenv("ORBIS_SPEECH_LOG", log.c_str(), 1);
    vconf_set_int("db/menu/system/accessibility/screenreader", 1);
    const auto spoken = [&log] { // since the last call
        toolkit::settle();
        Lines lines = tv::readLines(log);
        unlink(log.c_str());
        return lines;
    };
    Evas_Object* both = popup({"Yes", "No"});
    const auto textOf = [](void*, Evas_Object*) { return strdup("a\nb\r\nc"); };
    elm_access_info_cb_set(button(both, 1), ELM_ACCESS_INFO, textOf, nullptr);
    show(both);
    EXPECT_EQ(spoken(), Lines {"Yes"});
    toolkit::press(m_window, "Right");
    EXPECT_EQ(spoken(), Lines {"a b  c"});
    toolkit::press(m_window, "Up");
    elm_object_focus_set(button(both, 1), EINA_TRUE);
    EXPECT_EQ(spoken(), Lines()) << "the focus did not move";

    elm_object_focus_set(button(both, 0), EINA_TRUE);
    elm_object_focus_set(button(both, 1), EINA_TRUE);
    elm_object_focus_set(button(both, 0), EINA_TRUE);
    EXPECT_EQ(spoken(), Lines {"Yes"}) << "a button that had the focus in passing was read";

    evas_object_show(popup({"Other"}));
    evas_object_del(m_window);
    EXPECT_EQ(spoken(), Lines()) << "of a window that is gone";
    unsetenv("ORBIS_SPEECH_LOG");
}

} // namespace
