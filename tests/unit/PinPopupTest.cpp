/// The PIN and information popup in its six contents, up to its end.
#include "PinPopup.h"
#include "Fixtures.h"
#include "NetUtilAccessibility.h"
#include "Util.h"
#include "vconf.h"

namespace {

using namespace TesselUI;
using toolkit::PopupRecord;
using Texts = std::vector<std::string>;

constexpr const char* kReady = "memory/menu/network/tessel_ocf_ready";
constexpr const char* kStartMode = "db/menu/network/tessel_startmode";

class OpenPinPopup : public PinPopup {
public:
    using PinPopup::m_buttons;
    using PinPopup::m_content;
    using PinPopup::m_popup;
    using PinPopup::m_timer;
    using PinPopup::m_tooltip;
    using PinPopup::PinPopup;
};

/// What a content shows. The composed texts of PIN and guide are checked by themselves.
struct Face {
    TSPOPUP_TYPE type;
    const char* titleId;
    const char* textId; ///< null for several texts
    Texts buttonIds;
    int width, height; ///< of the content, pixels
    int lastTick; ///< the one that asks for the stop; 0 for none
};

const Face kFaces[] = {
    {TS_POPUP_PIN, "SID_PIN", nullptr, {"SID_CANCEL"}, 808, 224, 61},
    {TS_POPUP_WIFI_FAILED, "COM_SID_INFORMATION", "TV_SID_SETUP_PH_FAIL_SETUP_MANUALLY", {"COM_SID_OK"}, 808,
        96, 11},
    {TS_POPUP_TNC, "COM_TV_SID_TESSEL", "TV_SID_TESSEL_CADEC_SETTING_UP_TV_MOBILE_TERMS_AND_CONDITIONS",
        {"SID_CANCEL"}, 808, 144, 601},
    {TS_POPUP_AP_LIST, "COM_TV_SID_TESSEL", "TV_SID_TESSEL_CADEC_SETUP_VIA_MOBILE", {"SID_CANCEL"}, 808, 112,
        601},
    {TS_POPUP_SSO_FAILED, "COM_SID_INFORMATION", "TV_SID_SETUP_PH_FAIL_SETUP_MANUALLY", {"COM_SID_OK"}, 808,
        96, 11},
    {TS_POPUP_GUIDE, "TV_SID_TESSEL_CADEC_SETTING_UP_UR_TV_VIA_UR_PH", nullptr,
        {"TV_SID_TESSEL_SETUP_IVA_PHONE", "TV_SID_TESSEL_CADEC_CONTINNE_WITH_TV_REMOTE"}, 1208, 504, 0},
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
    const PopupRecord* open(TSPOPUP_TYPE type, std::string pin = "0042", std::string phone = "Anna")
    {
        m_popup.reset();
        const auto style = static_cast<Elm_Flux_Popup_Style>(type == TS_POPUP_GUIDE ? 1 : 0);
        m_popup = std::make_unique<OpenPinPopup>(m_window, type, m_manager.get(), style);
        m_popup->setMesg(pin, phone);
        m_popup->show();
        toolkit::settle();
        return toolkit::topPopup(m_window);
    }

    /// @return the visible text box with this text, null when there is none
    const toolkit::TextboxRecord* boxWith(const std::string& text) const
    {
        for (const auto* box : toolkit::shown<toolkit::TextboxRecord>(m_window)) {
            if (box->text == text)
                return box;
        }
        return nullptr;
    }

    std::unique_ptr<OpenPinPopup> m_popup;
};

TEST_F(APinPopup, ShowsEachOfItsSixContents)
{
    for (const Face& face : kFaces) {
        SCOPED_TRACE(face.titleId);
        const PopupRecord* record = open(face.type);
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(toolkit::titleOf(*record), text(face.titleId));
        Texts labels;
        for (const std::string& id : face.buttonIds)
            labels.push_back(text(id.c_str()));
        EXPECT_EQ(toolkit::labelsOf(*record), labels);
        EXPECT_EQ(elm_object_focused_object_get(m_window), record->buttons[0]);
        const auto content = toolkit::boxOf(m_popup->m_content);
        EXPECT_EQ(content.width, face.width);
        EXPECT_EQ(content.height, face.height);
        EXPECT_EQ(record->style, face.type == TS_POPUP_GUIDE ? 1 : 0);
        if (face.textId) {
            EXPECT_EQ(toolkit::textsOf(m_window), Texts {text(face.textId)});
            EXPECT_EQ(getAccessibiltyObject()->text1, text(face.titleId) + "," + text(face.textId) + ",,");
        }
        EXPECT_EQ(
            getAccessibiltyObject()->text2, labels[0] + "," + (labels.size() > 1 ? labels[1] : "") + ",");
    }
}

TEST_F(APinPopup, ComposesTheSentencesOfPinAndGuide)
{
    ASSERT_NE(open(TS_POPUP_PIN), nullptr);
    std::string connected = text("TV_SID_TESSEL_MIX_CONNECTED_DEVICE");
    ASSERT_NE(connected.find("%1"), std::string::npos);
    connected.replace(connected.find("%1"), 2,
        "\xE2\x80\x8E"
        "Anna"
        "\xE2\x80\x8F");
    const std::string composed = text("TV_SID_ENTER_PIN_UR_PH") + "<br>" + connected;
    const std::string line = "<color=#29C5FF><align=center>0042</align></color>";
    EXPECT_TRUE(journal::has("I Set Meassge [0042] Mobile Name =  [Anna]"));
    EXPECT_TRUE(journal::has("I Text in Pin Popup is -> [" + composed + "]"));
    ASSERT_NE(boxWith(composed), nullptr);
    ASSERT_NE(boxWith(line), nullptr);
    EXPECT_EQ(boxWith(composed)->size, 11);
    EXPECT_EQ(boxWith(line)->size, 8);
    EXPECT_EQ(getAccessibiltyObject()->text1, text("SID_PIN") + "," + composed + "," + line + ",");

    vconf_set_str("memory/tessel/ble_tvname", "Living room TV");
    ASSERT_NE(open(TS_POPUP_GUIDE), nullptr);
    const std::string body = text("TV_SID_TESSEL_CAN_SET_NETWORK_NORVALE_ACCOUNT_PHONE");
    const std::string note = text("TV_SID_TESSEL_ONLY_SUPPORT_ZEPHRA");
    EXPECT_EQ(toolkit::textsOf(m_window), (Texts {body, note, "Living room TV"}));
    EXPECT_EQ(boxWith("Living room TV")->align, 8);
    EXPECT_EQ(boxWith("Living room TV")->rule, 1);
    EXPECT_FALSE(boxWith("Living room TV")->multiline);
    EXPECT_EQ(boxWith(note)->size, 13);
    const std::string title = text("TV_SID_TESSEL_CADEC_SETTING_UP_UR_TV_VIA_UR_PH");
    EXPECT_EQ(getAccessibiltyObject()->text1, title + "," + title + ", " + body + ", " + note + ",,");
    EXPECT_TRUE(journal::has("E Failed to get security key")) << "and goes on";
}

TEST_F(APinPopup, StartsWrappedTextsWhereTheLanguageDoes)
{
    const std::string terms = text("TV_SID_TESSEL_CADEC_SETTING_UP_TV_MOBILE_TERMS_AND_CONDITIONS");
    const std::string hint = text("TV_SID_TESSEL_CADEC_SETUP_VIA_MOBILE");
    for (const auto& [language, start] : {std::pair("en_US", 10), std::pair("ar_EG", 11)}) {
        vconf_set_str("db/menu_widget/language", language);
        open(TS_POPUP_TNC);
        ASSERT_NE(boxWith(terms), nullptr);
        EXPECT_EQ(boxWith(terms)->align, start) << language;
        open(TS_POPUP_AP_LIST);
        ASSERT_NE(boxWith(hint), nullptr);
        EXPECT_EQ(boxWith(hint)->align, 3) << "one line stays centred";
        open(TS_POPUP_PIN);
        for (const auto* box : toolkit::shown<toolkit::TextboxRecord>(m_window))
            EXPECT_EQ(box->align, 3);
    }
}

TEST_F(APinPopup, ShowsTheGuidesHintAfterHalfASecond)
{
    ASSERT_NE(open(TS_POPUP_GUIDE), nullptr);
    ASSERT_NE(m_popup->m_tooltip, nullptr);
    toolkit::advance(0.4, 0.1);
    EXPECT_FALSE(evas_object_visible_get(m_popup->m_tooltip));
    toolkit::advance(0.2, 0.1);
    EXPECT_TRUE(evas_object_visible_get(m_popup->m_tooltip));
    EXPECT_EQ(elm_object_part_text_get(m_popup->m_tooltip, "elm.text"), text("TV_SID_OOBE_CHECK_YOUR_PHONE"));
    EXPECT_EQ(toolkit::boxOf(m_popup->m_tooltip).width, 41 * 8);
    toolkit::advance(3);
    EXPECT_EQ(journal::count("I ToolTimerCB"), 1);

    open(TS_POPUP_GUIDE);
    m_popup.reset();
    toolkit::advance(3);
    EXPECT_EQ(journal::count("I ToolTimerCB"), 1) << "the timer outlived its popup";
}

TEST_F(APinPopup, GivesUpOnTheTickAfterItsCountdown)
{
    for (const Face& face : kFaces) {
        SCOPED_TRACE(face.titleId);
        ASSERT_NE(open(face.type), nullptr);
        vconf_unset(kReady);
        vconf_unset(kStartMode);
        journal::clear();
        const int ticks = face.lastTick ? face.lastTick : 700;
        toolkit::advance(ticks - 1);
        toolkit::advance(0.5);
        EXPECT_FALSE(journal::has("I PBC Timer expires"));
        EXPECT_EQ(setting(kStartMode), "none");
        toolkit::advance(5);
        EXPECT_EQ(journal::count("I PBC Timer expires"), face.lastTick ? 1 : 0);
        EXPECT_EQ(setting(kStartMode), face.lastTick ? "5" : "none");
        EXPECT_EQ(setting(kReady), face.type == TS_POPUP_PIN ? "1" : "none");
        EXPECT_EQ(journal::has("I ++PBC Timer Entered [" + std::to_string(face.lastTick - 1) + "]"),
            face.lastTick > 0);
        EXPECT_EQ(journal::count("I ++PBC Timer Entered [0]"), face.lastTick ? 1 : 0);
        EXPECT_EQ(m_popup->m_timer, nullptr);
        EXPECT_FALSE(journal::has("T exit")) << "giving up leaves the end to the daemon";
        EXPECT_FALSE(journal::has("T lower"));
        EXPECT_NE(toolkit::topPopup(m_window), nullptr) << "it stays on the screen";
    }
}

TEST_F(APinPopup, PutsALostFocusBackWhileItCounts)
{
    const PopupRecord* record = open(TS_POPUP_PIN);
    ASSERT_NE(record, nullptr);
    Evas_Object* elsewhere = elm_button_add(m_window);
    evas_object_show(elsewhere);
    toolkit::advance(1);
    EXPECT_FALSE(journal::has("I [Focus is not in button Set Focus"));
    elm_object_focus_set(elsewhere, EINA_TRUE);
    toolkit::settle();
    ASSERT_EQ(elm_object_focused_object_get(m_window), elsewhere);
    toolkit::advance(1);
    EXPECT_EQ(elm_object_focused_object_get(m_window), record->buttons[0]);
    EXPECT_EQ(journal::count("I [Focus is not in button Set Focus"), 1);

    toolkit::advance(60);
    ASSERT_TRUE(journal::has("I PBC Timer expires"));
    elm_object_focus_set(elsewhere, EINA_TRUE);
    toolkit::advance(3);
    EXPECT_EQ(elm_object_focused_object_get(m_window), elsewhere) << "after it gave up it lets go";
}

TEST_F(APinPopup, OnlyLogsKeysOnTheGuide)
{
    open(TS_POPUP_GUIDE);
    journal::clear();
    for (const char* key : {"Escape", "Menu", "XF86Back", "XF86Close"})
        toolkit::press(m_window, key);
    EXPECT_EQ(journal::count("I START"), 4);
    EXPECT_FALSE(journal::has("I Escape/r/Back key pressed "));
    EXPECT_EQ(
        journal::missing({"D Exit Key is Pressed,Exiting...", "D Return Key is Pressed,Exiting..."}), "");
    EXPECT_NE(toolkit::topPopup(m_window), nullptr);
}

TEST_F(APinPopup, LowersTheWindowWhenDeletedInThreeOfItsContents)
{
    for (const Face& face : kFaces) {
        open(face.type);
        journal::clear();
        m_popup.reset();
        const bool lowers = face.type == TS_POPUP_WIFI_FAILED || face.type == TS_POPUP_TNC
            || face.type == TS_POPUP_SSO_FAILED;
        EXPECT_EQ(journal::count("T lower"), lowers ? 1 : 0) << face.titleId;
        evas_object_show(m_window);
        toolkit::focusWindow(m_window);
    }
}

TEST_F(APinPopup, NeedsNeitherParentNorManagerNorWindow)
{
    for (const Face& face : kFaces) {
        PinPopup popup(nullptr, face.type, nullptr, ELM_FLUX_POPUP_STYLE_DEFAULT);
        popup.show();
        popup.t_OnTimeout(nullptr);
        popup.t_Button1Clicked();
        toolkit::settle();
        toolkit::advance(2);
        popup.t_CenterButtonClicked();
        popup.t_Button2Clicked();
    }
    PinPopup unknown(m_window, static_cast<TSPOPUP_TYPE>(7), nullptr, ELM_FLUX_POPUP_STYLE_DEFAULT);
    unknown.show();
    toolkit::settle();
    ASSERT_NE(toolkit::topPopup(m_window), nullptr);
    EXPECT_EQ(toolkit::labelsOf(*toolkit::topPopup(m_window)), Texts());
    journal::clear();
    toolkit::advance(121);
    EXPECT_EQ(journal::count("I PBC Timer expires"), 1);
    EXPECT_FALSE(journal::has("I [Focus is not in button Set Focus"));

    for (const Face& face : kFaces) {
        open(face.type);
        evas_object_del(m_window);
        toolkit::settle();
        toolkit::advance(2);
        m_popup->t_CenterButtonClicked();
        m_popup->show();
        m_popup.reset();
        toolkit::settle();
        m_manager = std::make_unique<UIManager>();
        m_manager->createWindow();
        m_window = toolkit::windows().front();
        evas_object_show(m_window);
        toolkit::focusWindow(m_window);
    }
}

} // namespace
