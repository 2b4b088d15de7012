/// What happens, and in which order, when the viewer answers Yes.
#include "DaemonThread.h"
#include "Fixtures.h"
#include "TesselUI.h"
#include "vconf.h"

namespace {

using namespace TesselUI;
using Texts = std::vector<std::string>;

struct Question {
    const char* name;
    const char* key;
    const char* json; ///< null: the number 1
    Texts keys; ///< that answer it with Yes
    Texts lines; ///< of the answer itself
};

class AnsweredWithYes : public ApplicationTest, public testing::WithParamInterface<Question> { };

TEST_P(AnsweredWithYes, AsksForTheEndBeforeItTellsTheDaemon)
{
    const Question& question = GetParam();
    start();
    ASSERT_EQ(question.json ? vconf_set_str(question.key, question.json) : vconf_set_int(question.key, 1),
        VCONF_OK);
    ASSERT_TRUE(toolkit::runUntil([this] { return toolkit::topPopup(m_window) != nullptr; }));
    toolkit::settle();
    toolkit::press(m_window, "Return");
    // The daemon must not know yet; and the popups may go while they are in the middle of their click.
    toolkit::s_onExit = [this] {
        journal::note("told " + std::to_string(m_daemon->calls().size() - 1));
        vconf_set_str(TESSEL_VCONF, R"({"page":"success"})");
        CTesselUI::m_OnMethodPopup(nullptr, nullptr);
        EXPECT_EQ(toolkit::topPopup(m_window), nullptr);
    };
    for (const std::string& key : question.keys)
        toolkit::press(m_window, key.c_str());
    Texts order = question.lines;
    for (const char* line :
        {"T exit", "T told 0", "I Stop Tessel", "I Proxy Not NUll", "I result:0", "I Stopping Tessel"})
        order.emplace_back(line);
    EXPECT_EQ(journal::missing(order), "");
    EXPECT_EQ(m_daemon->calls(), (Texts {"ServerStarted(true)", "StopTessel(true, false)"}));
    EXPECT_EQ(setting("db/menu/network/tessel_startmode"), "5");
    EXPECT_EQ(setting("memory/menu/network/tessel_ocf_ready"), "none");
}

INSTANTIATE_TEST_SUITE_P(Popups, AnsweredWithYes,
    testing::Values(Question {"NetworkTest", TESSEL_VCONF, R"({"page":"wifi","ssid":"Attic"})", {"Return"},
                        {"I clicked on CloseBtnCB", "I Close Popups, stop Tessel, exit from App"}},
        Question {"SignIn", TESSEL_VCONF, R"({"page":"sso","account":"anna"})", {"Return"},
            {"I clicked on CloseBtnCB ", "I Close Popups, stop Tessel, exit from App"}},
        Question {"SettingScreen", DEVICE_OWNED_VCONF, nullptr, {"Left", "Return"}, {"I START"}}),
    [](const auto& question) { return question.param.name; });

} // namespace
