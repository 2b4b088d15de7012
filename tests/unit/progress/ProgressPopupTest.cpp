/// What the popups of the network test and of the sign-in have in common.
#include "NetworkTestPopup.h"
#include "PopupTest.h"
#include "SSOLoginPopup.h"
#include "Tessel_Conn_Comm_Func.h"

#include <glib.h>

namespace {

using namespace TesselUI;
using toolkit::PopupRecord;
using toolkit::settle;
using toolkit::strength;
using Texts = std::vector<std::string>;

template <typename Popup>
class AProgressPopup : public PopupTest<Popup> {
protected:
    static constexpr bool kIsSignIn = std::is_same_v<Popup, CSSOPopup>;

    void make(const std::string& phone = "Anna's phone", const std::string& name = "Attic & Garden")
    {
        this->m_popup.reset();
        this->m_popup = std::make_unique<Popup>(this->m_window, phone, name);
        this->m_popup->show();
        settle();
    }

    void ask()
    {
        Popup::cancelBtnCB(this->m_popup.get(), nullptr, nullptr);
        settle();
    }

    /// The popups on the screen, lowest first.
    std::vector<PopupRecord*> popups() { return toolkit::shown<PopupRecord>(this->m_window); }
};

using Both = testing::Types<CNetwokTestPopup, CSSOPopup>;
TYPED_TEST_SUITE(AProgressPopup, Both);

TYPED_TEST(AProgressPopup, KeepsAnOlderQuestionAndTheButtonThatHadTheKeysForWhenTheNewerIsAnswered)
{
    this->make();
    std::vector<Evas_Object*> hadKeys {this->popups()[0]->buttons[0]};
    for (size_t slot : {1, 0, 1}) {
        this->ask();
        hadKeys.push_back(this->popups().back()->buttons.at(slot));
        elm_object_focus_set(hadKeys.back(), EINA_TRUE);
        settle();
    }
    EXPECT_EQ(taken(elm_access_info_get(this->popups().back()->buttons[0], ELM_ACCESS_INFO)),
        "Cancel," + text("TV_SID_NOT_ABLE_USE_INFO_RECEIVED_PHONE") + ",Yes");
    for (; hadKeys.size() > 1; hadKeys.pop_back()) {
        ASSERT_EQ(this->popups().size(), hadKeys.size());
        EXPECT_EQ(this->focused(), hadKeys.back()) << this->focusedLabel() << " has the keys";
        const PopupRecord* top = this->popups().back();
        EXPECT_EQ(toolkit::labelsOf(*top), (Texts {text("SID_YES"), text("SID_NO")}));
        elm_object_focus_set(top->buttons[0], EINA_TRUE);
        toolkit::press(this->m_window, "Right");
        EXPECT_EQ(this->focused(), top->buttons[1]) << "the keys are not in the topmost question";
        toolkit::press(this->m_window, "Return");
    }
    EXPECT_EQ(this->focused(), this->popups()[0]->buttons[0]);
    EXPECT_EQ(this->focusedLabel(), text("SID_CANCEL"));
    TypeParam::noBtnCb(this->m_popup.get(), nullptr, nullptr); // a click that comes late
    EXPECT_EQ(this->popups().size(), 1U);

    this->ask();
    this->ask();
    this->m_popup.reset();
    settle();
    EXPECT_EQ(this->left(), 0) << "a question outlives its popup";
    EXPECT_EQ(this->focused(), nullptr);
}

TYPED_TEST(AProgressPopup, ShowsEmptyNamesAndCutsLongOnesAtACharacter)
{
    this->make("", "");
    const Texts empty = this->kIsSignIn
        ? Texts {"<font=NorvaleSans-500 color=#29C5FF>Norvale account: \u2068\u2069</font>"}
        : Texts {"Received from \u2068&#x200e;&#x200f;\u2069. Connecting your TV to this network:",
            "Wi-Fi network: \u2068<font=Kivo400 color=#2eb0c8 ></font>\u2069"};
    EXPECT_EQ(toolkit::textsOf(this->m_window), empty);

    const std::string phoneSign = "\xF0\x9F\x93\xB1";
    for (size_t length = 244; length < 256; ++length) { // around what a name may have
        std::string name(length % phoneSign.size(), 'x');
        while (name.size() < length)
            name += phoneSign;
        this->make(name, name);
        for (const std::string& one : toolkit::textsOf(this->m_window))
            EXPECT_TRUE(g_utf8_validate(one.c_str(), -1, nullptr)) << length << ": " << one;
    }
}

TYPED_TEST(AProgressPopup, DimsThePictureOnceAndItselfBehindTheQuestion)
{
    this->make();
    const Evas_Object* popup = this->popups()[0]->object;
    EXPECT_TRUE(toolkit::shownGroup(this->m_window, "elm/flux/dim/window"));
    EXPECT_EQ(strength(popup, "dim"), 0) << "dimmed twice";
    const Evas_Object* backdrop = toolkit::shownGroup(this->m_window, "dim");
    ASSERT_EQ(backdrop != nullptr, !this->kIsSignIn) << "the popup's own backdrop";
    if (backdrop) {
        EXPECT_EQ(toolkit::boxOf(backdrop), toolkit::boxOf(this->m_window));
        EXPECT_EQ(strength(backdrop, "dim"), 0) << "dimmed twice";
    }
    this->ask();
    EXPECT_GT(strength(this->popups()[1]->object, "dim"), 0)
        << "the popup below is as bright as the question";
    EXPECT_EQ(strength(popup, "half") > 0, this->kIsSignIn);
    TypeParam::noBtnCb(this->m_popup.get(), nullptr, nullptr);
    settle();
    EXPECT_EQ(strength(popup, "half"), 0);

    this->m_popup.reset();
    settle();
    EXPECT_FALSE(toolkit::shownGroup(this->m_window, "elm/flux/dim/window"));
}

TYPED_TEST(AProgressPopup, MayBeDeletedInTheClicksOfItsButtons)
{
    this->make();
    this->deleteInClickOf(this->popups()[0]->buttons[0]);
    toolkit::press(this->m_window, "Return");
    EXPECT_TRUE(journal::has("I clicked on cancelBtnCB"));
    EXPECT_EQ(this->left(), 0);

    this->make();
    this->ask();
    this->ask();
    this->deleteInClickOf(this->popups()[2]->buttons[1]);
    toolkit::press(this->m_window, "Right");
    toolkit::press(this->m_window, "Return");
    EXPECT_TRUE(journal::has("I clicked on NoBtnCB"));
    EXPECT_EQ(this->m_popup, nullptr);
    EXPECT_EQ(this->left(), 0);
}

using ASignInPopup = AProgressPopup<CSSOPopup>;

TEST_F(ASignInPopup, IsThePopupTypeWhileItExistsAndLowersTheWindowAtItsEnd)
{
    make("Anna's phone", "anna@example.com");
    EXPECT_EQ(get_tessel_popup_type(), 3);
    EXPECT_EQ(journal::missing({"D SSO Popup create new", "I __SetTextMobileName pcMobileName[Anna's phone]",
                  "I TTS Text = Set up with your phone, Received from \u2068&#x202d;Anna's phone\u2069. "
                  "Signing in to this account:, Norvale account: \u2068anna@example.com\u2069"}),
        "");
    journal::clear();
    m_popup.reset();
    EXPECT_EQ(get_tessel_popup_type(), -1);
    EXPECT_EQ(journal::missing({"I Focus has been set set lower app.", "T lower"}), "");
    settle();
    EXPECT_FALSE(evas_object_visible_get(m_window));

    const CSSOPopup nowhere(nullptr, "Anna's phone", "anna@example.com");
    EXPECT_EQ(get_tessel_popup_type(), -1) << "nothing was built";
}

} // namespace
