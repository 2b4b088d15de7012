/// The keys belong to the topmost popup, and a held one acts once.
#include "Fixtures.h"
#include "elm_flux.h"

namespace {

class TheKeys : public WindowTest {
protected:
    /// Counts clicks in m_clicks, and does what m_onClick says.
    void countClicks(Evas_Object* button)
    {
        const auto onClicked = [](void* data, Evas_Object* clicked, void*) {
            auto* self = static_cast<TheKeys*>(data);
            ++self->m_clicks;
            if (self->m_onClick)
                self->m_onClick(clicked);
        };
        evas_object_smart_callback_add(button, "clicked", onClicked, this);
    }
    void hold(const char* key, int repeats)
    {
        for (int i = 0; i < repeats; ++i)
            toolkit::keyDown(m_window, key, i == 1 ? 500 : 50);
        toolkit::settle();
    }

    int m_clicks = 0;
    std::function<void(Evas_Object*)> m_onClick;
};

TEST_F(TheKeys, StayInsideTheTopmostPopup)
{
    Evas_Object* lower = popup({"Cancel", "Help"});
    Evas_Object* upper = popup({"Yes", "No"});
    show(lower);
    toolkit::press(m_window, "Right");
    ASSERT_EQ(focused(), button(lower, 1));
    show(upper);
    ASSERT_EQ(focused(), button(upper, 0));
    for (const char* key :
        {"Down", "Up", "Left", "Tab", "Tab", "Tab", "Right", "Right", "ISO_Left_Tab", "Tab"}) {
        toolkit::press(m_window, key);
        EXPECT_TRUE(focused() == button(upper, 0) || focused() == button(upper, 1)) << key;
    }
    countClicks(button(lower, 0));
    countClicks(button(lower, 1));
    toolkit::press(m_window, "Return");
    EXPECT_EQ(m_clicks, 0);
}

TEST_F(TheKeys, ComeBackToTheButtonThatHadThem)
{
    Evas_Object* lower = popup({"Cancel", "Help"});
    show(lower);
    toolkit::press(m_window, "Right");
    for (bool deleted : {false, true}) {
        Evas_Object* upper = popup({"Yes", "No"});
        show(upper);
        ASSERT_EQ(focused(), button(upper, 0));
        if (deleted)
            evas_object_del(upper);
        else
            evas_object_hide(upper);
        toolkit::settle();
        EXPECT_EQ(focused(), button(lower, 1)) << (deleted ? "deleted" : "hidden");
        toolkit::press(m_window, "Left");
        EXPECT_EQ(focused(), button(lower, 0)) << "it cannot move any more";
        toolkit::press(m_window, "Right");
        if (!deleted) {
            show(upper);
            EXPECT_EQ(focused(), button(upper, 0)) << "shown again";
            evas_object_del(upper);
            toolkit::settle();
        }
    }
}

TEST_F(TheKeys, LeaveAPopupThatIsDeletedUnderAnother)
{
    Evas_Object* lower = popup({"Cancel"});
    Evas_Object* upper = popup({"Yes", "No"});
    show(lower);
    show(upper);
    evas_object_del(lower);
    toolkit::settle();
    EXPECT_EQ(focused(), button(upper, 0));
    toolkit::press(m_window, "Right");
    EXPECT_EQ(focused(), button(upper, 1));
    evas_object_del(upper);
    toolkit::settle();
    Evas_Object* next = popup({"OK"});
    show(next);
    EXPECT_EQ(focused(), button(next, 0));
}

TEST_F(TheKeys, StartAtTheButtonThatWasAskedFor)
{
    Evas_Object* both = popup({"Yes", "No"});
    EXPECT_TRUE(elm_flux_popup_focused_button_set(both, 1));
    show(both);
    EXPECT_EQ(focused(), button(both, 1));
    EXPECT_TRUE(elm_flux_popup_focused_button_set(both, 0));
    toolkit::settle();
    EXPECT_EQ(focused(), button(both, 0)) << "at once when it is up";

    Evas_Object* single = popup({"OK"});
    EXPECT_TRUE(elm_flux_popup_focused_button_set(single, 1));
    show(single);
    EXPECT_EQ(focused(), button(single, 0)) << "an empty slot was named";
    EXPECT_TRUE(elm_flux_popup_focused_button_set(both, 1));
    toolkit::settle();
    EXPECT_EQ(focused(), button(single, 0)) << "a popup below took the keys";
}

TEST_F(TheKeys, ActOnceWhileHeld)
{
    for (const char* key : {"Return", "KP_Enter", "space"}) {
        Evas_Object* one = popup({"OK"});
        countClicks(button(one, 0));
        show(one);
        m_clicks = 0;
        hold(key, 15);
        EXPECT_EQ(m_clicks, 1) << key;
        toolkit::keyUp(m_window, key);
        toolkit::press(m_window, key);
        EXPECT_EQ(m_clicks, 2) << "a new press acts again: " << key;
        evas_object_del(one);
        toolkit::settle();
    }
}

TEST_F(TheKeys, DoNotRunIntoAPopupThatOpensUnderThem)
{
    Evas_Object* first = popup({"Cancel"});
    Evas_Object* second = nullptr;
    countClicks(button(first, 0));
    m_onClick = [&](Evas_Object*) {
        if (second)
            return;
        second = popup({"Yes", "No"});
        countClicks(button(second, 0));
        evas_object_show(second);
    };
    show(first);
    toolkit::keyDown(m_window, "Return");
    toolkit::settle();
    ASSERT_EQ(focused(), button(second, 0));
    hold("Return", 14);
    EXPECT_EQ(m_clicks, 1);
    toolkit::keyUp(m_window, "Return");
    EXPECT_EQ(m_clicks, 1) << "letting go acted";
    toolkit::press(m_window, "Return");
    EXPECT_EQ(m_clicks, 2);
}

TEST_F(TheKeys, ActAgainAfterALostKeyUp)
{
    Evas_Object* one = popup({"OK"});
    countClicks(button(one, 0));
    show(one);
    toolkit::keyDown(m_window, "Return");
    toolkit::keyDown(m_window, "Return", 5000);
    EXPECT_EQ(m_clicks, 2);
    toolkit::keyDown(m_window, "KP_Enter");
    EXPECT_EQ(m_clicks, 3) << "another key is another press";
}

TEST_F(TheKeys, MayDeletePopupOrWindowInTheClick)
{
    Evas_Object* lower = popup({"Cancel"});
    show(lower);
    Evas_Object* upper = popup({"OK"});
    countClicks(button(upper, 0));
    m_onClick = [&](Evas_Object*) { evas_object_del(upper); };
    show(upper);
    hold("Return", 3);
    EXPECT_EQ(m_clicks, 1);
    EXPECT_EQ(focused(), button(lower, 0));
    toolkit::keyUp(m_window, "Return");

    countClicks(button(lower, 0));
    m_onClick = [&](Evas_Object*) { evas_object_del(m_window); };
    toolkit::keyDown(m_window, "Return");
    toolkit::settle();
    EXPECT_EQ(m_clicks, 2);
    EXPECT_TRUE(toolkit::windows().empty());
}

} // namespace
