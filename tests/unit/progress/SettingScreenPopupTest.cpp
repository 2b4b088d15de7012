/// The popup over the settings screen, which asks its question in its own place.
#include "SettingScreenPopup.h"
#include "PopupTest.h"

namespace {

using namespace TesselUI;
using toolkit::settle;
using Texts = std::vector<std::string>;

class ASettingScreenPopup : public PopupTest<SettingScreenPopup> {
protected:
    void make()
    {
        m_popup = std::make_unique<SettingScreenPopup>(m_window, static_cast<Elm_Flux_Popup_Style>(0));
        EXPECT_EQ(toolkit::topPopup(m_window), nullptr) << "shown without being asked to";
        showIt();
    }
    void showIt()
    {
        m_popup->show();
        settle();
    }
    /// The text, the buttons, how many objects they and the popup are, and which button has the keys.
    std::string state()
    {
        std::string result;
        for (const std::string& one : toolkit::textsOf(m_window))
            result += one + " ";
        const auto* popup = toolkit::topPopup(m_window);
        for (const std::string& label : popup ? toolkit::labelsOf(*popup) : Texts {})
            result += "[" + label + "]";
        return result + " " + std::to_string(left()) + " " + focusedLabel();
    }
    static std::string informing()
    {
        return text("TV_SID_TESSEL_CADEC_SETTING_UP_UR_TV_VIA_UR_PH") + " [Cancel] 2 Cancel";
    }
    static std::string asking()
    {
        return text("TV_SID_NOT_ABLE_USE_INFO_RECEIVED_PHONE") + " [Yes][No] 3 No";
    }
    /// Clicks that come twice before the toolkit has seen to the first.
    void clickTwice(void (*onClicked)(void*, Evas_Object*, void*))
    {
        onClicked(m_popup.get(), nullptr, nullptr);
        onClicked(m_popup.get(), nullptr, nullptr);
        settle();
    }
};

TEST_F(ASettingScreenPopup, TurnsBackAndForthWithoutLeavingAButtonAlsoWhenShownAgain)
{
    make();
    EXPECT_EQ(journal::missing({"I START", "I START", "I END", "I w=101,h=28", "I START", "I END",
                  "D TTS DATA :  TTS1 = Setting up your TV with your phone, TTS2 = ,  TTS3 =  ", "I END"}),
        "");
    EXPECT_GT(toolkit::strength(toolkit::topPopup(m_window)->object, "dim"), 0)
        << "the picture is not dimmed";
    for (int round = 0; round < 2; ++round) {
        EXPECT_EQ(state(), informing());
        toolkit::press(m_window, "Return");
        EXPECT_EQ(state(), asking());
        toolkit::press(m_window, "Return");
    }
    clickTwice(SettingScreenPopup::m_OnCancelButtonClicked);
    EXPECT_EQ(state(), asking());
    clickTwice(SettingScreenPopup::m_OnNoButtonClicked);
    EXPECT_EQ(state(), informing());

    showIt();
    showIt();
    EXPECT_EQ(state(), informing());
    toolkit::press(m_window, "Return");
    showIt();
    toolkit::press(m_window, "Return");
    EXPECT_EQ(state(), asking()) << "the question of the first show is in the way";
}

TEST_F(ASettingScreenPopup, MayBeDeletedInItsOwnClick)
{
    make();
    toolkit::press(m_window, "Return");
    deleteInClickOf(toolkit::topPopup(m_window)->buttons[1]);
    toolkit::press(m_window, "Return");
    EXPECT_EQ(m_popup, nullptr);
    EXPECT_EQ(state(), " 0 none");
    EXPECT_EQ(journal::missing({"T lower", "I END", "I ~CNetworkPopup"}), "");
}

} // namespace
