/// The keys belong to the topmost popup, and a held one acts once.
#include "Fixtures.h"
#include "elm_flux.h"

namespace {

class TheKeys : public WindowTest {
protected:
    /// Counts clicks in m_clicks, and does what m_onClick says.
    void countClicks(Evas_Object* button)
    {
        const auto onClicked = [](void* data, Evas_Object*, void*) {
            auto* self = static_cast<TheKeys*>(data);
            ++self->m_clicks;
            if (self->m_onClick)
                self->m_onClick();
        };
        evas_object_smart_callback_add(button, "clicked", onClicked, this);
    }
    /// Shows a popup whose first button counts its clicks.
    Evas_Object* showCounted(std::initializer_list<const char*> labels)
    {
        Evas_Object* shown = popup(labels);
        countClicks(button(shown, 0));
        show(shown);
        return shown;
    }
    void hold(const char* key, int repeats)
    {
        for (int i = 0; i < repeats; ++i)
            toolkit::keyDown(m_window, key, i == 1 ? 500 : 50);
        toolkit::settle();
    }

    int m_clicks = 0;
    std::function<void()> m_onClick;
};

TEST_F(TheKeys, StayInTheTopmostPopupAndComeBackToTheButtonThatHadThem)
{
    Evas_Object* lower = popup({"Cancel", "Help"});
    countClicks(button(lower, 0));
    countClicks(button(lower, 1));
    show(lower);
    toolkit::press(m_window, "Right");
    for (bool deleted : {false, true}) {
        ASSERT_EQ(focused(), button(lower, 1));
        Evas_Object* upper = popup({"Yes", "No"});
        show(upper);
        ASSERT_EQ(focused(), button(upper, 0));
        for (const char* key :
            {"Down", "Up", "Left", "Tab", "Tab", "Tab", "Right", "Right", "ISO_Left_Tab"}) {
            toolkit::press(m_window, key);
            EXPECT_TRUE(focused() == button(upper, 0) || focused() == button(upper, 1)) << key;
        }
        toolkit::press(m_window, "Return");
        EXPECT_EQ(m_clicks, 0);
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
    Evas_Object* upper = popup({"Yes", "No"});
    show(upper);
    evas_object_del(lower);
    toolkit::settle();
    EXPECT_EQ(focused(), button(upper, 0)) << "the one under it took the keys along";
    toolkit::press(m_window, "Right");
    EXPECT_EQ(focused(), button(upper, 1));
}

TEST_F(TheKeys, ActOnceWhileHeldAndAgainAfterALostKeyUp)
{
    for (const char* key : {"Return", "KP_Enter", "space"}) {
        m_clicks = 0;
        Evas_Object* one = showCounted({"OK"});
        hold(key, 15);
        EXPECT_EQ(m_clicks, 1) << key;
        toolkit::keyUp(m_window, key);
        toolkit::press(m_window, key);
        EXPECT_EQ(m_clicks, 2) << "a new press acts again: " << key;
        evas_object_del(one);
        toolkit::settle();
    }
    m_clicks = 0;
    showCounted({"OK"});
    toolkit::keyDown(m_window, "Return");
    toolkit::keyDown(m_window, "Return", 5000);
    EXPECT_EQ(m_clicks, 2);
    toolkit::keyDown(m_window, "KP_Enter");
    EXPECT_EQ(m_clicks, 3) << "another key is another press";
}

TEST_F(TheKeys, DoNotRunIntoAPopupThatOpensUnderThem)
{
    Evas_Object* second = nullptr;
    m_onClick = [&] {
        if (second)
            return;
        second = popup({"Yes", "No"});
        countClicks(button(second, 0));
        evas_object_show(second);
    };
    showCounted({"Cancel"});
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

TEST_F(TheKeys, MayDeletePopupOrWindowInTheClick)
{
    Evas_Object* lower = showCounted({"Cancel"});
    Evas_Object* upper = showCounted({"OK"});
    m_onClick = [&] { evas_object_del(upper); };
    hold("Return", 3);
    EXPECT_EQ(m_clicks, 1);
    EXPECT_EQ(focused(), button(lower, 0));
    toolkit::keyUp(m_window, "Return");

    m_onClick = [&] { evas_object_del(m_window); };
    toolkit::keyDown(m_window, "Return");
    toolkit::settle();
    EXPECT_EQ(m_clicks, 2);
    EXPECT_TRUE(toolkit::windows().empty());
}

} // namespace
