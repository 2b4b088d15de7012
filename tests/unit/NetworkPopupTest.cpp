/// The base of the popups: its timer, its read-out record, and its ends.
#include "NetworkPopup.h"
#include "DimBase.h"
#include "Fixtures.h"
#include "NetUtilAccessibility.h"

#include <stdexcept>

namespace {

using TesselUI::CNetworkPopup;

/// Does in its handlers what a case says.
class OpenPopup : public CNetworkPopup {
public:
    explicit OpenPopup(Evas_Object* parent)
        : CNetworkPopup(parent, ELM_FLUX_POPUP_STYLE_DEFAULT)
    {
        setTitle("Title");
        createContentArea(elm_flux_textbox_add(m_popup), 101, 28);
        addButton("Yes", "", true, "", "");
        addButton("No", "", true, "", "");
        AddToolTipBox(m_content, ELM_FLUX_TOOLTIP_STYLE_HINT, "Hint", ELM_FLUX_TOOLTIP_ORIENT_BELOW);
        addTimer(1);
    }

    using CNetworkPopup::m_buttons;
    using CNetworkPopup::m_timer;

    Eina_Bool t_OnTimeout(void*) override
    {
        journal::note("tick");
        return onTick();
    }
    void t_Button1Clicked() override { onClick(); }
    void t_Button2Clicked() override { onClick(); }

    std::function<Eina_Bool()> onTick = [] { return ECORE_CALLBACK_RENEW; };
    std::function<void()> onClick = [] {};
};

class ANetworkPopup : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        make();
    }
    void TearDown() override
    {
        m_popup.reset();
        WindowTest::TearDown();
        delaccessObject();
    }
    void make() { m_popup = std::make_unique<OpenPopup>(m_window); }
    int ticksIn(double seconds)
    {
        const int before = journal::count("T tick");
        toolkit::advance(seconds);
        return journal::count("T tick") - before;
    }

    std::unique_ptr<OpenPopup> m_popup;
};

TEST_F(ANetworkPopup, WritesTheReadOutRecordAndCutsIt)
{
    const auto* record = getAccessibiltyObject();
    m_popup->setTTS("one", "two", "three");
    m_popup->setFocusOnButton2(true);
    EXPECT_STREQ(record->text1, "Title,one,two,three");
    EXPECT_STREQ(record->text2, "Yes,No,");
    EXPECT_TRUE(record->flag);
    m_popup->setTTS(std::string(3000, 'x'), "", "");
    m_popup->m_SetTTS(m_popup->m_buttons[0]);
    EXPECT_EQ(std::string(record->text1), "Title," + std::string(993, 'x'));
    EXPECT_STREQ(record->text2, "Yes,No,");
}

TEST_F(ANetworkPopup, EndsItsTimerWhenTheTickSaysSoAndSurvivesWhatItsHandlersDo)
{
    EXPECT_EQ(ticksIn(2.5), 2);
    m_popup->onTick = [] { return ECORE_CALLBACK_CANCEL; };
    EXPECT_EQ(ticksIn(10), 1);
    EXPECT_EQ(m_popup->m_timer, nullptr) << "a handle that the toolkit has freed is still held";
    m_popup->onTick = [this] {
        m_popup->deleteTimer();
        m_popup->addTimer(1);
        return ECORE_CALLBACK_CANCEL;
    };
    m_popup->addTimer(1);
    EXPECT_EQ(ticksIn(3), 3) << "the timer that the tick made was forgotten";
    m_popup->onTick = []() -> Eina_Bool { throw std::runtime_error("tick"); };
    EXPECT_EQ(ticksIn(3), 3) << "a tick that fails ends the countdown";
    EXPECT_EQ(journal::count("E m_TimerCB gave up: tick"), 3);
    m_popup->onTick = [this] {
        m_popup.reset();
        return ECORE_CALLBACK_RENEW;
    };
    EXPECT_EQ(ticksIn(3), 1) << "it deleted itself";

    make();
    m_popup->show();
    toolkit::settle();
    m_popup->onClick = [] { throw std::runtime_error("click"); };
    toolkit::press(m_window, "Return");
    EXPECT_TRUE(journal::has("E on_Button1Clicked gave up: click"));
}

TEST_F(ANetworkPopup, EndsInAnyOrder)
{
    // Show, hide, destroy, and last of all delete.
    for (const std::string order : {"", "hd", "sdh", "shsh", "ds", "s"}) {
        SCOPED_TRACE(order);
        make();
        for (char step : order) {
            if (step == 's')
                m_popup->show();
            else if (step == 'h')
                m_popup->hide();
            else
                m_popup->destroy();
            toolkit::settle();
            EXPECT_TRUE(step == 's' || !toolkit::topPopup(m_window));
        }
        m_popup.reset();
        toolkit::settle();
        EXPECT_EQ(toolkit::topPopup(m_window), nullptr);
        EXPECT_EQ(ticksIn(3), 0);
    }
}

using ABackdrop = WindowTest;

TEST_F(ABackdrop, CoversTheWindowWhateverItsSize)
{
    TesselUI::CDimBase backdrop(m_window);
    backdrop.Show();
    evas_object_show(m_window);
    for (const int width : {1280, 640}) {
        evas_object_resize(m_window, width, 480);
        toolkit::settle();
        const Evas_Object* drawn = toolkit::shownGroup(m_window, "dim");
        ASSERT_NE(drawn, nullptr);
        EXPECT_EQ(toolkit::boxOf(drawn), toolkit::boxOf(m_window)) << width;
        EXPECT_GT(toolkit::strength(drawn, "dim"), 0);
    }
    backdrop.Hide();
    EXPECT_EQ(toolkit::shownGroup(m_window, "dim"), nullptr);
}

} // namespace
