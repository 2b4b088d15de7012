/// The network test's own: its timer and its text helpers.
#include "NetworkTestPopup.h"
#include "PopupTest.h"

namespace {

using namespace TesselUI;

constexpr const char* kTick = "I [Focus is not in Close Button],Set Focus";

class ANetworkTestPopup : public PopupTest<CNetwokTestPopup> {
protected:
    void make()
    {
        m_popup = std::make_unique<CNetwokTestPopup>(m_window, "Anna's phone", "Attic");
        m_popup->show();
    }
};

TEST_F(ANetworkTestPopup, LooksAfterItsFocusTwentyTimesAndChangesNothing)
{
    make();
    m_popup.reset();
    toolkit::advance(0.5, 0.1);
    EXPECT_EQ(journal::count(kTick), 0) << "the timer goes on without the popup";
    journal::clear();
    make();
    toolkit::settle();
    EXPECT_EQ(focused(), toolkit::topPopup(m_window)->buttons[0]) << "the keys wait for the timer";
    Evas_Object* other = popup({"OK"});
    show(other);
    for (const auto& [seconds, ticks] : {std::pair(1.9, 19), {0.1, 20}, {10.0, 20}}) {
        toolkit::advance(seconds, 0.1);
        EXPECT_EQ(journal::count(kTick), ticks);
        EXPECT_EQ(focused(), button(other, 0)) << "the timer takes the keys";
    }
    EXPECT_EQ(CNetwokTestPopup::focusTimerExpired(nullptr), ECORE_CALLBACK_RENEW);
    m_popup.reset(); // the timer is gone already
    evas_object_del(other);
    EXPECT_EQ(journal::missing({"I START", "I AP Name :: Attic", "", "I END", "I END", "I END", kTick,
                  "I START", "D Deleted NW_Test_Popup", "", "I END"}),
        "");
    EXPECT_EQ(journal::count("I START"), 2);
    EXPECT_EQ(journal::count("I END"), 4);
}

TEST_F(ANetworkTestPopup, EscapesAmpersandsAndMarksTheDirection)
{
    const std::pair<std::string, std::string> escapes[] = {{"", ""}, {"a&b&&", "a&amp;b&amp;&amp;"},
        {"&amp;", "&amp;amp;"}, {"<b>&lt;", "<b>&amp;lt;"}, {"\xFF\xC3&", "\xFF\xC3&amp;"}};
    for (auto [plain, escaped] : escapes)
        EXPECT_EQ(taken(CNetwokTestPopup::func(plain.data())), escaped);
    std::string name = "Anna";
    EXPECT_EQ(taken(CNetwokTestPopup::addLTRMarker(name.data())), "&#x200e;Anna&#x200f;");
    std::string longName(1000, 'a');
    EXPECT_EQ(taken(CNetwokTestPopup::addLTRMarker(longName.data())), "&#x200e;" + std::string(246, 'a'));
    EXPECT_EQ(CNetwokTestPopup::func(nullptr), nullptr);
    EXPECT_EQ(CNetwokTestPopup::addLTRMarker(nullptr), nullptr);
    EXPECT_EQ(CNetwokTestPopup::power(7, 0), 1);
    EXPECT_EQ(CNetwokTestPopup::power(-3, 3), -27);
    EXPECT_EQ(CNetwokTestPopup::power(2, 40), 0) << "a product too large must not end the program";
}

} // namespace
