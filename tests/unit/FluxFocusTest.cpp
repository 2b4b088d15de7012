/// The keys belong to the topmost popup, and a held one acts once.
#include "Fixtures.h"

namespace {

class TheKeys : public WindowTest {
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

TEST_F(TheKeys, StayInTheTopmostPopupAndComeBackToTheButtonThatHadThem)
{
    Evas_Object* lower = counted({"Cancel", "Help"});
    toolkit::settle();
    toolkit::press(m_window, "Right");
    ASSERT_EQ(focused(), button(lower, 1));
    Evas_Object* upper = popup({"Yes", "No"});
    for (const char* when : {"first", "shown again"}) {
        show(upper);
        EXPECT_EQ(focused(), button(upper, 0)) << when;
        for (const char* key : {"Down", "Left", "Tab", "Tab", "Right", "ISO_Left_Tab", "Return"}) {
            toolkit::press(m_window, key);
            EXPECT_TRUE(focused() == button(upper, 0) || focused() == button(upper, 1)) << key;
        }
        evas_object_hide(upper);
        toolkit::settle();
        EXPECT_EQ(focused(), button(lower, 1)) << when;
        EXPECT_EQ(m_clicks, 0);
    }
    toolkit::press(m_window, "Left");
    EXPECT_EQ(focused(), button(lower, 0)) << "it cannot move any more";
    show(upper);
    evas_object_del(lower);
    toolkit::settle();
    EXPECT_EQ(focused(), button(upper, 0)) << "the one under it took the keys along";
    toolkit::press(m_window, "Right");
    EXPECT_EQ(focused(), button(upper, 1));
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
    EXPECT_EQ(m_clicks, 4);
    toolkit::keyDown(m_window, "KP_Enter");
    EXPECT_EQ(m_clicks, 5) << "another key is another press";
}

TEST_F(TheKeys, DoNotRunIntoAPopupThatOpensUnderThemAndMayDeletePopupOrWindowInTheClick)
{
    Evas_Object* upper = nullptr;
    m_onClick = [&] {
        if (!upper)
            upper = counted({"Yes", "No"});
    };
    Evas_Object* lower = counted({"Cancel"});
    toolkit::settle();
    hold("Return", 15);
    EXPECT_EQ(focused(), button(upper, 0));
    toolkit::keyUp(m_window, "Return");
    EXPECT_EQ(m_clicks, 1) << "holding or letting go acted";

    m_onClick = [&] { evas_object_del(upper); };
    hold("Return", 3);
    EXPECT_EQ(m_clicks, 2);
    EXPECT_EQ(focused(), button(lower, 0));
    toolkit::keyUp(m_window, "Return");
    m_onClick = [&] { evas_object_del(m_window); };
    toolkit::keyDown(m_window, "Return");
    toolkit::settle();
    EXPECT_EQ(m_clicks, 3);
    EXPECT_TRUE(toolkit::windows().empty());
}

} // namespace
