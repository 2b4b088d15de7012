/// What the manager's operations do to the window and tell the platform.
#include "Fixtures.h"
#include "UIManager.h"
#include "vconf.h"

namespace {

using TesselUI::UIManager;
using Texts = std::vector<std::string>;

class TheManager : public ManagerTest { };

TEST_F(TheManager, LowersTheWindowWhereAStageBeginsOrEnds)
{
    letTheGuideBeShown();
    struct Step {
        const char* name;
        int (*show)(UIManager& manager, std::string& text);
        bool lowers;
        bool lowersAtItsEnd; ///< when the next popup takes its place
    };
    const Step steps[] = {
        {"pin", [](UIManager& m, std::string& s) { return m.showPinPopup(s, s); }, false, false},
        {"terms", [](UIManager& m, std::string&) { return m.showTncPopup(); }, true, true},
        {"networks", [](UIManager& m, std::string&) { return m.showApListPopup(); }, false, false},
        {"owned", [](UIManager& m, std::string&) { return m.showAfterPairingPopup(); }, true, true},
        {"test", [](UIManager& m, std::string& s) { return m.showNetworkTestPopup(s, s); }, false, false},
        {"sign-in", [](UIManager& m, std::string& s) { return m.showSSOLoginPopup(s, s); }, false, true},
        {"no sign-in",
            [](UIManager& m, std::string&) {
                std::string step = "sso";
                return m.showFailedPopup(step);
            },
            true, true},
        {"no network", [](UIManager& m, std::string& s) { return m.showFailedPopup(s); }, false, true},
        {"guide", [](UIManager& m, std::string& s) { return m.showGuidePopup(s); }, true, false},
        {"nothing", [](UIManager& m, std::string&) { return m.hidePopup(); }, true, false},
    };
    std::string text = "Anna";
    for (const Step& step : steps) {
        for (const Step& next : steps) {
            EXPECT_EQ(step.show(*m_manager, text), 0);
            journal::clear();
            EXPECT_EQ(next.show(*m_manager, text), 0);
            EXPECT_EQ(journal::count("T lower"), (next.lowers ? 1 : 0) + (step.lowersAtItsEnd ? 1 : 0))
                << step.name << ", then " << next.name;
        }
    }
}

TEST_F(TheManager, MarksTheMomentThatItsTimedPopupsAppear)
{
    letTheGuideBeShown();
    std::string text = "Anna";
    toolkit::s_markers.clear();
    m_manager->showPinPopup(text, text);
    m_manager->showSSOLoginPopup(text, text);
    EXPECT_EQ(toolkit::s_markers, Texts {});
    m_manager->showGuidePopup(text);
    m_manager->showNetworkTestPopup(text, text);
    EXPECT_EQ(toolkit::s_markers,
        (Texts {"TesselUI :[UI] Popup Appeared", "TesselUI :[UI]=>Network Test Popup Appear"}));
}

} // namespace
