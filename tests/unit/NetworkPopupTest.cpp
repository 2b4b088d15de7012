// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The base of the popups: its timer and its read-out record.
#include "NetworkPopup.h"
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

    using CNetworkPopup::m_timer;

    Eina_Bool t_OnTimeout(void*) override
    {
        journal::note("tick");
        return onTick();
    }

    std::function<Eina_Bool()> onTick = [] { return ECORE_CALLBACK_RENEW; };
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
    m_popup->setFocusOnButton1(true);
    EXPECT_EQ(std::string(record->text1), "Title," + std::string(993, 'x'));
}

TEST_F(ANetworkPopup, EndsItsTimerWhenTheTickSaysSoAndSurvivesWhatItDoes)
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
}

} // namespace
