/// The base of the popups: its widgets, its callbacks, and its ends.
#include "NetworkPopup.h"
#include "Fixtures.h"
#include "NetUtilAccessibility.h"

#include <functional>

namespace {

using TesselUI::CNetworkPopup;
using toolkit::PopupRecord;

/// Shows what is protected, and does in its handlers what a case says.
class OpenPopup : public CNetworkPopup {
public:
    explicit OpenPopup(Evas_Object* parent)
        : CNetworkPopup(parent, ELM_FLUX_POPUP_STYLE_DEFAULT)
    {
    }
    ~OpenPopup() override { journal::note("popup deleted"); }

    using CNetworkPopup::m_buttonCount;
    using CNetworkPopup::m_buttons;
    using CNetworkPopup::m_content;
    using CNetworkPopup::m_popup;
    using CNetworkPopup::m_timer;
    using CNetworkPopup::m_tooltip;

    Eina_Bool t_OnTimeout(void* data) override
    {
        journal::note("tick");
        const Eina_Bool goesOn = onTick ? onTick() : CNetworkPopup::t_OnTimeout(data);
        return goesOn;
    }
    void t_Button1Clicked() override { act("button 1"); }
    void t_Button2Clicked() override { act("button 2"); }
    void t_CenterButtonClicked() override { act("centre"); }
    void t_CentreButtonFocussed() override { journal::note("centre focused"); }

    std::function<Eina_Bool()> onTick;
    std::function<void()> onClick;

private:
    void act(const char* what)
    {
        journal::note(what);
        if (onClick)
            onClick();
    }
};

class ANetworkPopup : public WindowTest {
protected:
    void SetUp() override
    {
        WindowTest::SetUp();
        m_popup = std::make_unique<OpenPopup>(m_window);
    }
    void TearDown() override
    {
        m_popup.reset();
        WindowTest::TearDown();
        delaccessObject();
    }

    void fill()
    {
        m_popup->setTitle("Title");
        m_popup->createContentArea(elm_flux_textbox_add(m_popup->m_popup), 101, 28);
        m_popup->addButton("Yes", "", true, "", "");
        m_popup->addButton("No", "", true, "", "");
        m_popup->AddToolTipBox(
            m_popup->m_content, ELM_FLUX_TOOLTIP_STYLE_HINT, "Hint", ELM_FLUX_TOOLTIP_ORIENT_BELOW);
        m_popup->addTimer(1);
    }

    std::unique_ptr<OpenPopup> m_popup;
};

TEST_F(ANetworkPopup, ShowsTitleContentAndTwoButtonsInReadingOrder)
{
    fill();
    EXPECT_EQ(toolkit::topPopup(m_window), nullptr) << "visible before it is shown";
    m_popup->show();
    m_popup->setFocusOnButton1(true);
    toolkit::settle();
    const PopupRecord* record = toolkit::topPopup(m_window);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(toolkit::titleOf(*record), "Title");
    EXPECT_EQ(toolkit::labelsOf(*record), (std::vector<std::string> {"Yes", "No"}));
    const auto content = toolkit::boxOf(m_popup->m_content);
    EXPECT_EQ(content.width, 808);
    EXPECT_EQ(content.height, 224);
    EXPECT_LT(toolkit::boxOf(m_popup->m_buttons[0]).x, toolkit::boxOf(m_popup->m_buttons[1]).x);
    EXPECT_TRUE(journal::has("I w=101,h=28"));

    toolkit::press(m_window, "Return");
    toolkit::press(m_window, "Right");
    toolkit::press(m_window, "Return");
    EXPECT_EQ(journal::missing({"T button 1", "I on_Button2Clicked", "T button 2"}), "");
    m_popup->addButton("Maybe", "", true, "", "");
    EXPECT_EQ(toolkit::labelsOf(*record), (std::vector<std::string> {"Yes", "Maybe"}));
    EXPECT_EQ(m_popup->m_buttonCount, 3);
}

TEST_F(ANetworkPopup, HasACentreButtonOutsideTheCount)
{
    m_popup->createCentreButton("OK", "", true, "");
    m_popup->show();
    m_popup->setFocusOnButton1(false);
    toolkit::settle();
    toolkit::press(m_window, "XF86Back");
    EXPECT_FALSE(journal::has("I START")) << "the centre button has no key handlers of its own";
    toolkit::press(m_window, "KP_Enter");
    EXPECT_EQ(journal::missing({"T centre focused", "T centre"}), "");
    EXPECT_EQ(m_popup->m_buttonCount, 0);
}

TEST_F(ANetworkPopup, OnlyLogsTheKeysThatLeaveOtherPrograms)
{
    fill();
    m_popup->show();
    toolkit::settle();
    ASSERT_EQ(focused(), m_popup->m_buttons[0]);
    for (const char* key : {"Escape", "r", "XF86Back", "Menu", "XF86SysMenu", "XF86Close", "q"})
        toolkit::press(m_window, key);
    EXPECT_EQ(journal::count("I Escape/r/Back key pressed "), 3);
    EXPECT_EQ(journal::count("I Menu key pressed. Exit Application"), 2);
    EXPECT_EQ(journal::missing({"I Escape/r/Back key pressed ", "I Escape/r/Back key pressed ",
                  "I Escape/r/Back key pressed ", "I END", "D Exit Key is Pressed,Exiting...",
                  "I Menu key pressed. Exit Application", "D Return Key is Pressed,Exiting..."}),
        "");
    EXPECT_EQ(journal::count("D Exit Key is Pressed,Exiting..."), 1);
    EXPECT_EQ(journal::count("D Return Key is Pressed,Exiting..."), 1);
    EXPECT_FALSE(journal::has("T exit"));
    EXPECT_NE(toolkit::topPopup(m_window), nullptr);

    CNetworkPopup::onKeyDown(nullptr, nullptr, nullptr, nullptr);
    CNetworkPopup::onKeyDown(m_popup.get(), nullptr, nullptr, nullptr);
    CNetworkPopup::handleReturnExitKey(nullptr, nullptr, nullptr, nullptr);
    CNetworkPopup::on_Button1Clicked(nullptr, nullptr, nullptr);
    CNetworkPopup::on_Button2Clicked(nullptr, nullptr, nullptr);
    CNetworkPopup::on_CentreButtonClicked(nullptr, nullptr, nullptr);
    CNetworkPopup::on_CentreButtonFocussed(nullptr, nullptr, nullptr);
    EXPECT_EQ(CNetworkPopup::m_TimerCB(nullptr), ECORE_CALLBACK_CANCEL);
}

TEST_F(ANetworkPopup, MovesTheFocusAsAsked)
{
    m_popup->setFocusOnButton1(true);
    m_popup->setFocusOnButton2(false);
    fill();
    m_popup->show();
    toolkit::settle();
    m_popup->setFocusOnButton2(false);
    EXPECT_EQ(focused(), m_popup->m_buttons[1]);
    m_popup->setFocusOnButton1(false);
    EXPECT_EQ(focused(), m_popup->m_buttons[1]);
    m_popup->setFocusOnButton1(true);
    EXPECT_EQ(focused(), m_popup->m_buttons[0]);
    CNetworkPopup::on_MouseInFocuscb(nullptr, nullptr, m_popup->m_buttons[1], nullptr);
    EXPECT_EQ(focused(), m_popup->m_buttons[1]);

    m_popup->bindFocusOnButton();
    for (const char* key : {"Right", "Left", "Up", "Down"}) {
        toolkit::press(m_window, key);
        EXPECT_EQ(focused(), m_popup->m_buttons[0]) << key;
    }
}

TEST_F(ANetworkPopup, WritesTheReadOutRecord)
{
    const auto* record = getAccessibiltyObject();
    m_popup->setTitle("T");
    m_popup->m_SetTTS(m_window);
    EXPECT_STREQ(record->text1, "T,,,");
    EXPECT_STREQ(record->text2, ",,");
    fill();
    m_popup->setTTS("one", "two", "three");
    m_popup->setFocusOnButton2(true);
    EXPECT_STREQ(record->text1, "Title,one,two,three");
    EXPECT_STREQ(record->text2, "Yes,No,");
    EXPECT_TRUE(record->flag);
    m_popup->setMessage("a", "", "", false);
    m_popup->m_SetTTS(m_popup->m_buttons[0]);
    EXPECT_STREQ(record->text1, "Title,a,,");
    m_popup->setTTS(std::string(3000, 'x'), "", "");
    m_popup->m_SetTTS(m_popup->m_buttons[0]);
    EXPECT_EQ(std::string(record->text1), "Title," + std::string(993, 'x'));
    EXPECT_STREQ(record->text2, "Yes,No,");
}

TEST_F(ANetworkPopup, EndsItsTimerWhenTheTickSaysSo)
{
    m_popup->addTimer(2);
    toolkit::advance(5);
    EXPECT_EQ(journal::count("T tick"), 2);
    m_popup->onTick = [] { return ECORE_CALLBACK_CANCEL; };
    toolkit::advance(10);
    EXPECT_EQ(journal::count("T tick"), 3);
    EXPECT_EQ(m_popup->m_timer, nullptr) << "a handle that the toolkit has freed is still held";

    m_popup->onTick = [this] {
        m_popup->deleteTimer();
        m_popup->addTimer(1);
        return ECORE_CALLBACK_CANCEL;
    };
    m_popup->addTimer(1);
    toolkit::advance(3);
    EXPECT_EQ(journal::count("T tick"), 6) << "the timer that the tick made was forgotten";
    m_popup->deleteTimer();
    toolkit::advance(3);
    EXPECT_EQ(journal::count("T tick"), 6);
}

TEST_F(ANetworkPopup, MayBeDeletedInItsOwnCallbacks)
{
    fill();
    m_popup->onTick = [this] {
        m_popup.reset();
        return ECORE_CALLBACK_RENEW;
    };
    toolkit::advance(3);
    EXPECT_EQ(journal::count("T popup deleted"), 1);
    EXPECT_EQ(journal::count("T tick"), 1);

    for (const char* keys : {"Return", "Right Return"}) {
        journal::clear();
        m_popup = std::make_unique<OpenPopup>(m_window);
        fill();
        m_popup->onClick = [this] { m_popup.reset(); };
        m_popup->show();
        toolkit::settle();
        if (std::string(keys) != "Return")
            toolkit::press(m_window, "Right");
        toolkit::press(m_window, "Return");
        EXPECT_EQ(journal::count("T popup deleted"), 1) << keys;
        EXPECT_EQ(toolkit::topPopup(m_window), nullptr) << keys;
    }
}

TEST_F(ANetworkPopup, EndsInAnyOrder)
{
    enum Step { Show, Hide, Destroy, Delete };
    const std::vector<std::vector<Step>> orders = {{Delete}, {Hide, Destroy, Delete},
        {Show, Destroy, Hide, Delete}, {Destroy, Destroy, Delete}, {Show, Hide, Show, Hide, Delete},
        {Hide, Delete}, {Destroy, Show, Delete}, {Show, Delete}};
    for (const auto& order : orders) {
        m_popup = std::make_unique<OpenPopup>(m_window);
        fill();
        for (Step step : order) {
            if (step == Show)
                m_popup->show();
            else if (step == Hide)
                m_popup->hide();
            else if (step == Destroy)
                m_popup->destroy();
            else
                m_popup.reset();
            toolkit::settle();
            if (step != Show) {
                EXPECT_EQ(toolkit::topPopup(m_window), nullptr);
            }
        }
        journal::clear();
        toolkit::advance(3);
        EXPECT_FALSE(journal::has("T tick"));
    }
}

TEST_F(ANetworkPopup, OutlivesItsWindow)
{
    fill();
    m_popup->show();
    toolkit::settle();
    evas_object_del(m_window);
    toolkit::settle();
    toolkit::advance(2);
    m_popup->setTitle("late");
    m_popup->setFocusOnButton2(true);
    m_popup->bindFocusOnButton();
    m_popup->ShowToolTip();
    m_popup->HideToolTip();
    m_popup->addButton("late", "", true, "", "");
    m_popup->createContentArea(m_popup->m_content, 10, 10);
    m_popup->setMessage("a", "b", "c", true);
    m_popup->show();
    m_popup->hide();
    m_popup->RemoveToolTip();
    m_popup->destroy();
    EXPECT_TRUE(journal::has("T tick"));
}

TEST_F(ANetworkPopup, NeedsNoParent)
{
    m_popup = std::make_unique<OpenPopup>(nullptr);
    EXPECT_EQ(m_popup->m_popup, nullptr);
    fill();
    m_popup->createCentreButton("OK", "", true, "");
    m_popup->bindFocusOnButton();
    m_popup->setFocusOnButton1(true);
    m_popup->setFocusOnButton2(true);
    m_popup->setMessage("a", "b", "c", false);
    m_popup->setCustomMessage("a", "part", true);
    m_popup->createOneBtnpopup(nullptr, "default");
    m_popup->m_SetBtnCommon(nullptr, "", "");
    EXPECT_EQ(m_popup->widget_min_set(nullptr, nullptr, 1, 1), nullptr);
    m_popup->show();
    m_popup->hide();
    EXPECT_EQ(m_popup->m_buttonCount, 0);
    TesselUI::CDimBase(nullptr).Show();
    EXPECT_TRUE(journal::has("E  Parent is NULL, Can not show dim base"));
}

TEST_F(ANetworkPopup, BringsItsBackdropAndItsTable)
{
    TesselUI::CDimBase backdrop(m_window);
    backdrop.Hide();
    EXPECT_FALSE(journal::has("I  Delete Evas Base"));
    backdrop.Show();
    EXPECT_TRUE(toolkit::showsGroup(m_window, "dim"));
    backdrop.Hide();
    toolkit::settle();
    EXPECT_FALSE(toolkit::showsGroup(m_window, "dim"));

    Evas_Object* inner = evas_object_rectangle_add(evas_object_evas_get(m_window));
    Evas_Object* table = m_popup->widget_min_set(m_window, inner, 120, 34);
    evas_object_show(table);
    toolkit::settle();
    int width = 0;
    int height = 0;
    evas_object_size_hint_min_get(table, &width, &height);
    EXPECT_EQ(width, 120);
    EXPECT_EQ(height, 34);
    m_popup->createOneBtnpopup(m_window, "default");
    EXPECT_STREQ(elm_object_widget_type_get(m_popup->m_popup), "Elm_Popup");
}

} // namespace
