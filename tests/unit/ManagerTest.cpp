/// What the manager's operations do to the window and tell the platform.
#include "Fixtures.h"
#include "UIManager.h"

namespace {

using TesselUI::UIManager;

using TheManager = ManagerTest;

TEST_F(TheManager, LowersTheWindowWhereAStageBeginsOrEndsAndMarksTheMomentThatTimedPopupsAppear)
{
    letTheGuideBeShown();
    struct Step {
        const char* name;
        int (*show)(UIManager& manager, std::string& text);
        bool lowers;
        bool lowersAtItsEnd; ///< when the next popup takes its place
        std::vector<std::string> markers;
    };
    const Step steps[] = {
        {"pin", [](UIManager& m, std::string& s) { return m.showPinPopup(s, s); }, false, false, {}},
        {"terms", [](UIManager& m, std::string&) { return m.showTncPopup(); }, true, true, {}},
        {"networks", [](UIManager& m, std::string&) { return m.showApListPopup(); }, false, false, {}},
        {"owned", [](UIManager& m, std::string&) { return m.showAfterPairingPopup(); }, true, true, {}},
        {"test", [](UIManager& m, std::string& s) { return m.showNetworkTestPopup(s, s); }, false, false,
            {"TesselUI :[UI]=>Network Test Popup Appear"}},
        {"sign-in", [](UIManager& m, std::string& s) { return m.showSSOLoginPopup(s, s); }, false, true, {}},
        {"no sign-in",
            [](UIManager& m, std::string&) {
                std::string step = "sso";
                return m.showFailedPopup(step);
            },
            true, true, {}},
        {"no network", [](UIManager& m, std::string& s) { return m.showFailedPopup(s); }, false, true, {}},
        {"guide", [](UIManager& m, std::string& s) { return m.showGuidePopup(s); }, true, false,
            {"TesselUI :[UI] Popup Appeared"}},
        {"nothing", [](UIManager& m, std::string&) { return m.hidePopup(); }, true, false, {}},
    };
    // What a popup does at its beginning and at its end is its own: each is once before and once behind
    // others.
    std::string text = "Anna";
    bool lowersAtItsEnd = false;
    for (const Step& step : steps) {
        SCOPED_TRACE(step.name);
        journal::clear();
        toolkit::s_markers.clear();
        EXPECT_EQ(step.show(*m_manager, text), 0);
        EXPECT_EQ(journal::count("T lower"), (step.lowers ? 1 : 0) + (lowersAtItsEnd ? 1 : 0));
        EXPECT_EQ(toolkit::s_markers, step.markers);
        lowersAtItsEnd = step.lowersAtItsEnd;
    }
}

} // namespace
