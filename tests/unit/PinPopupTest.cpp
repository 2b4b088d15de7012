/// The PIN and information popup in its six contents, up to its end.
#include "PinPopup.h"
#include "Fixtures.h"
#include "NetUtilAccessibility.h"
#include "vconf.h"

namespace {

using namespace TesselUI;
using toolkit::PopupRecord;

constexpr const char* kReady = "memory/menu/network/tessel_ocf_ready";
constexpr const char* kStartMode = "db/menu/network/tessel_startmode";

constexpr auto kGuideStyle = static_cast<Elm_Flux_Popup_Style>(1);

class OpenPinPopup : public PinPopup {
public:
    using PinPopup::m_content;
    using PinPopup::m_timer;
    using PinPopup::PinPopup;
};

/// What a content shows, and how it ends.
struct Face {
    TSPOPUP_TYPE type;
    const char* titleId;
    const char* textId; ///< of its first text
    int width, height; ///< of the content, pixels
    int lastTick; ///< the one that asks for the stop; 0 for none
    bool lowers; ///< whether its end takes the window off the screen
};

constexpr Face kFaces[] = {
    {TS_POPUP_PIN, "SID_PIN", "TV_SID_ENTER_PIN_UR_PH", 808, 224, 61, false},
    {TS_POPUP_WIFI_FAILED, "COM_SID_INFORMATION", "TV_SID_SETUP_PH_FAIL_SETUP_MANUALLY", 808, 96, 11, true},
    {TS_POPUP_TNC, "COM_TV_SID_TESSEL", "TV_SID_TESSEL_CADEC_SETTING_UP_TV_MOBILE_TERMS_AND_CONDITIONS", 808,
        144, 601, true},
    {TS_POPUP_AP_LIST, "COM_TV_SID_TESSEL", "TV_SID_TESSEL_CADEC_SETUP_VIA_MOBILE", 808, 112, 601, false},
    {TS_POPUP_SSO_FAILED, "COM_SID_INFORMATION", "TV_SID_SETUP_PH_FAIL_SETUP_MANUALLY", 808, 96, 11, true},
    {TS_POPUP_GUIDE, "TV_SID_TESSEL_CADEC_SETTING_UP_UR_TV_VIA_UR_PH",
        "TV_SID_TESSEL_CAN_SET_NETWORK_NORVALE_ACCOUNT_PHONE", 1208, 504, 0, false},
};

class APinPopup : public ManagerTest {
protected:
    void TearDown() override
    {
        m_popup.reset();
        ManagerTest::TearDown();
        delaccessObject();
    }

    /// Makes the popup, fills in a PIN and a name, and shows it.
    const PopupRecord* open(TSPOPUP_TYPE type)
    {
        m_popup.reset();
        evas_object_show(m_window);
        toolkit::focusWindow(m_window);
        const auto style = type == TS_POPUP_GUIDE ? kGuideStyle : ELM_FLUX_POPUP_STYLE_DEFAULT;
        m_popup = std::make_unique<OpenPinPopup>(m_window, type, m_manager.get(), style);
        std::string pin = "0042";
        std::string phone = "Anna";
        m_popup->setMesg(pin, phone);
        m_popup->show();
        toolkit::settle();
        return toolkit::topPopup(m_window);
    }

    std::unique_ptr<OpenPinPopup> m_popup;
};

TEST_F(APinPopup, ShowsEachContentAndGivesUpOnTheTickAfterItsCountdown)
{
    for (const Face& face : kFaces) {
        SCOPED_TRACE(face.titleId);
        vconf_unset(kReady);
        vconf_unset(kStartMode);
        const PopupRecord* record = open(face.type);
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(toolkit::titleOf(*record), text(face.titleId));
        // The first text of a PIN goes on with the phone's name.
        EXPECT_EQ(toolkit::textsOf(m_window).at(0).find(text(face.textId)), 0U);
        EXPECT_EQ(elm_object_focused_object_get(m_window), record->buttons[0]);
        const auto content = toolkit::boxOf(m_popup->m_content);
        EXPECT_EQ(std::pair(content.width, content.height), std::pair(face.width, face.height));

        journal::clear();
        toolkit::advance((face.lastTick ? face.lastTick : 700) - 1);
        toolkit::advance(0.5);
        EXPECT_FALSE(journal::has("I PBC Timer expires"));
        EXPECT_EQ(setting(kStartMode), "none");
        toolkit::advance(6);
        EXPECT_EQ(journal::count("I PBC Timer expires"), face.lastTick ? 1 : 0) << "late, or more than once";
        EXPECT_EQ(setting(kStartMode), face.lastTick ? "5" : "none");
        EXPECT_EQ(setting(kReady), face.type == TS_POPUP_PIN ? "1" : "none");
        EXPECT_EQ(m_popup->m_timer, nullptr);
        EXPECT_FALSE(journal::has("T exit")) << "giving up leaves the end to the daemon";
        EXPECT_FALSE(journal::has("T lower"));
        EXPECT_NE(toolkit::topPopup(m_window), nullptr) << "it stays on the screen";
        m_popup.reset();
        EXPECT_EQ(journal::count("T lower"), face.lowers ? 1 : 0);
    }
}

TEST_F(APinPopup, AlignsATextOfSeveralLinesToItsLanguagesSide)
{
    const auto alignment = [this](TSPOPUP_TYPE type) {
        open(type);
        const auto boxes = toolkit::shown<toolkit::TextboxRecord>(m_window);
        const auto filled =
            std::find_if(boxes.begin(), boxes.end(), [](auto* box) { return !box->text.empty(); });
        return filled == boxes.end() ? -1 : static_cast<int>((*filled)->align);
    };
    const std::pair<const char*, int> languages[] = {{"en_US", 10}, {"fa_IR", 11}, {"ar_EG", 11}};
    for (const auto& [language, side] : languages) {
        vconf_set_str("db/menu_widget/language", language);
        EXPECT_EQ(alignment(TS_POPUP_TNC), side) << language;
        EXPECT_EQ(alignment(TS_POPUP_AP_LIST), 3) << "one line is centred in " << language;
    }
}

TEST_F(APinPopup, TellsItsContentOfHighContrast)
{
    for (int contrast : {0, 1}) {
        vconf_set_int("db/menu/system/accessibility/highcontrast", contrast);
        m_popup = std::make_unique<OpenPinPopup>(m_window, TS_POPUP_GUIDE, m_manager.get(), kGuideStyle);
        toolkit::settle(); // the widgets have told themselves when they were made
        journal::clear();
        const auto onSignal = [](void*, Evas_Object*, const char*, const char*) { journal::note("HC"); };
        elm_object_signal_callback_add(m_popup->m_content, "HC", "", onSignal, nullptr);
        m_popup->show();
        toolkit::settle();
        EXPECT_EQ(journal::count("T HC"), contrast);
        m_popup.reset();
    }
}

TEST_F(APinPopup, TakesTheGuidesHintAlongShownOrNot)
{
    toolkit::settle();
    const size_t before = toolkit::objects(m_window).size();
    for (bool shown : {true, false}) {
        open(TS_POPUP_GUIDE);
        if (shown)
            toolkit::advance(1, 0.1);
        toolkit::settle();
        EXPECT_EQ(toolkit::shownGroup(m_window, "elm/flux/tooltip/2") != nullptr, shown);
        m_popup.reset();
        toolkit::settle();
        EXPECT_FALSE(toolkit::shownGroup(m_window, "elm/flux/tooltip/2"));
        EXPECT_EQ(toolkit::objects(m_window).size(), before) << "something of the popup is left";
        journal::clear();
        toolkit::advance(3);
        EXPECT_FALSE(journal::has("I ToolTimerCB")) << "the timer of the hint outlived its popup";
    }
}

TEST_F(APinPopup, PutsALostFocusBackWhileItCounts)
{
    const PopupRecord* record = open(TS_POPUP_PIN);
    ASSERT_NE(record, nullptr);
    Evas_Object* elsewhere = elm_button_add(m_window);
    evas_object_show(elsewhere);
    elm_object_focus_set(elsewhere, EINA_TRUE);
    toolkit::advance(2);
    EXPECT_EQ(elm_object_focused_object_get(m_window), record->buttons[0]);
    EXPECT_EQ(journal::count("I [Focus is not in button Set Focus"), 1);

    toolkit::advance(60);
    ASSERT_TRUE(journal::has("I PBC Timer expires"));
    elm_object_focus_set(elsewhere, EINA_TRUE);
    toolkit::advance(3);
    EXPECT_EQ(elm_object_focused_object_get(m_window), elsewhere) << "after it gave up it lets go";
}

} // namespace
