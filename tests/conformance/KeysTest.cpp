// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The keys belong to the topmost popup, a held one acts once, and what they move to can be read out.
#include "WidgetTest.h"
#include "elm_flux.h"
#include "vconf.h"

#include <cstring>
#include <functional>

namespace {

class TheKeys : public WidgetTest {
protected:
    /// A popup whose first button counts its clicks in m_clicks, and does what m_onClick says.
    Evas_Object* counted(std::initializer_list<const char*> labels)
    {
        Evas_Object* result = popup(labels);
        const auto onClicked = [](void* data, Evas_Object*, void*) {
            auto* self = static_cast<TheKeys*>(data);
            ++self->m_clicks;
            self->m_onClick();
        };
        evas_object_smart_callback_add(button(result, 0), "clicked", onClicked, this);
        evas_object_show(result);
        return result;
    }
    void hold(const char* key, int repeats)
    {
        for (int i = 0; i < repeats; ++i)
            toolkit::keyDown(m_window, key, i == 1 ? 500 : 50);
        toolkit::settle();
    }

    int m_clicks = 0;
    std::function<void()> m_onClick = [] {};
};

TEST_F(TheKeys, ComeBackToTheButtonThatHadThem)
{
    Evas_Object* lower = popup({"Cancel", "Help"});
    show(lower);
    toolkit::press(m_window, "Right");
    Evas_Object* upper = popup({"Yes", "No"});
    for (const char* when : {"first", "shown again"}) {
        show(upper);
        EXPECT_EQ(focused(), button(upper, 0)) << when;
        evas_object_hide(upper);
        toolkit::settle();
        EXPECT_EQ(focused(), button(lower, 1)) << when;
    }
    show(upper);
    evas_object_del(lower);
    toolkit::settle();
    toolkit::press(m_window, "Right");
    EXPECT_EQ(focused(), button(upper, 1)) << "the one under it took the keys along";
}

TEST_F(TheKeys, ActOnceWhileHeldAndAgainAfterALostKeyUp)
{
    counted({"OK"});
    toolkit::settle();
    for (const char* key : {"Return", "KP_Enter", "space"}) {
        m_clicks = 0;
        hold(key, 15);
        EXPECT_EQ(m_clicks, 1) << key;
        toolkit::keyUp(m_window, key);
        toolkit::press(m_window, key);
        EXPECT_EQ(m_clicks, 2) << "a new press acts again: " << key;
    }
    toolkit::keyDown(m_window, "Return");
    toolkit::keyDown(m_window, "Return", 5000);
    EXPECT_EQ(m_clicks, 4) << "its end was lost";
}

TEST_F(TheKeys, DoNotRunIntoAPopupThatOpensUnderThemAndMayTakeTheWindowAway)
{
    Evas_Object* upper = nullptr;
    m_onClick = [&] { upper = upper ? upper : counted({"Yes", "No"}); };
    counted({"Cancel"});
    toolkit::settle();
    hold("Return", 15);
    toolkit::keyUp(m_window, "Return");
    EXPECT_EQ(focused(), button(upper, 0));
    EXPECT_EQ(m_clicks, 1) << "holding or letting go acted";
    m_onClick = [&] { evas_object_del(m_window); };
    toolkit::press(m_window, "Return");
    EXPECT_EQ(m_clicks, 2);
    EXPECT_TRUE(toolkit::windows().empty());
}

TEST_F(TheKeys, AskTheButtonThatTheyComeToForItsText)
{
    constexpr const char* kReader = "db/menu/system/accessibility/screenreader";
    int before = 0;
    vconf_get_int(kReader, &before);
    ASSERT_EQ(vconf_set_int(kReader, 1), VCONF_OK);
    Evas_Object* both = popup({"Yes", "No"});
    int asked = 0;
    const auto text = [](void* data, Evas_Object*) {
        ++*static_cast<int*>(data);
        return strdup("a title and a text,Yes");
    };
    elm_access_info_cb_set(button(both, 0), ELM_ACCESS_INFO, text, &asked);
    show(both);
    toolkit::focusWindow(m_window);
    EXPECT_EQ(asked, 1) << "once for each time that it gets the keys";
    toolkit::press(m_window, "Right");
    toolkit::press(m_window, "Left");
    EXPECT_EQ(asked, 2);
    vconf_set_int(kReader, before);
}

} // namespace
