/// How the program comes up, what it tells the rest of the TV, and how it ends.
#include "TvTest.h"

#include <csignal>

namespace {

using tv::waitUntil;

class TheProgram : public tv::TvTest {
protected:
    std::string entry() const { return box.folders.appStatus(tv::kPackage).value_or("none"); }
    std::string entryOf(int status) const
    {
        return std::to_string(box.program->pid()) + " " + std::to_string(status) + "\n";
    }
};

TEST_F(TheProgram, ComesUpInOrderAndTellsTheDaemonOnce)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.program->waitForLog("End m_OnBusAcquired"));

    EXPECT_TRUE(box.program->logsInOrder({
        "Tessel UI Main start",
        "[Input Param] => POPUP",
        "[Input Param] => POPUP",
        "Tessel UI Main before loop",
        "[Input Param] => POPUP",
        "In CTesselUI::OnCreate",
        "In CTesselUI::Instance created Successfully",
        "Inside registerTesselVconf",
        "Success to register VCONF_KEY_MOBILEOOBE callback",
        "Success to register DEVICE_OWNED_VCONF callback",
        "Success to register VCONFKEY_TESSEL_STARTMODE",
        "In CreateWin",
        "(TSPKGNAME = org.orbis.tessel-UI, TSLOCALEDIR = *",
        "Portrait Mode = 0",
        "Entry",
        "ENTRY",
        "Start CTesselUIDbus::Create",
        "End CTesselUIDbus::Create",
        "Start ReconnectDbus",
        "End ReconnectDbus",
        "Start m_OnBusAcquired",
        "Object registered Successfully",
        "DBus server started = [true]",
        "Proxy Not NUll",
        "result:0",
        "End m_OnBusAcquired",
    }));
    EXPECT_TRUE(box.program->logged("In CTesselUI ::On Service "));
    EXPECT_EQ(box.daemon->calls(), std::vector<std::string> {"ServerStarted(true)"});
    EXPECT_TRUE(box.screenIsPlain()) << "nothing was asked for yet";
}

TEST_F(TheProgram, SpeaksEnglishUntilALanguageIsChosen)
{
    ASSERT_TRUE(box.settings.remove(tv::kLanguage));
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    EXPECT_TRUE(box.program->logged("Text in Pin Popup is -> [*"));
    EXPECT_FALSE(box.program->logged("Text in Pin Popup is -> [TV_SID_*")) << "the viewer sees message ids";
}

TEST_F(TheProgram, EndsOnlyWhenTheStartModeIs100)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
    for (int mode : {5, 0, 99, -100})
        ASSERT_TRUE(box.setStartMode(mode));
    EXPECT_FALSE(box.program->logged("Exiting APP"));

    EXPECT_TRUE(box.setStartMode(100));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_TRUE(box.program->logsInOrder({
        "Exiting APP",
        "In CTesselUI::OnTerminate",
        "Inside deRegisterTesselVconf",
        "Success to register VCONF_KEY_MOBILEOOBE ignore",
        "Success to register DEVICE_OWNED_VCONF callback",
        "Success to Deregister VCONFKEY_TESSEL_STARTMODE callback",
        "In CTesselUI::Main after loop",
    }));
    EXPECT_EQ(box.daemon->calls().size(), 1U) << "an end that the daemon asked for is no stop by the viewer";
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
    EXPECT_TRUE(box.screenIsPlain());
}

TEST_F(TheProgram, EndsTheOrderlyWayOnEverySignalThatAsksForIt)
{
    for (int signal : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(signal);
        ASSERT_TRUE(box.start());
        ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
        box.program->signal(signal);
        EXPECT_TRUE(box.program->endsWith(0));
        EXPECT_TRUE(box.program->logsInOrder({"In CTesselUI::OnTerminate", "In CTesselUI::Main after loop"}));
        EXPECT_TRUE(box.screenIsPlain());
        box.program.reset();
    }
}

TEST_F(TheProgram, KeepsItsStatusEntryWhileItRunsAndTakesOverThatOfARunThatDied)
{
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(waitUntil([&] { return entry() != "none"; }));
    box.program->signal(SIGKILL);
    ASSERT_TRUE(box.program->endsWith(128 + SIGKILL));

    ASSERT_TRUE(box.start());
    ASSERT_TRUE(waitUntil([&] { return entry() != "none"; }));

    constexpr int kFocus = 2;
    constexpr int kBackground = 4;
    ASSERT_TRUE(box.show("ShowTnCPopup"));
    EXPECT_TRUE(waitUntil([&] { return entry() == entryOf(kFocus); })) << entry();
    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(waitUntil([&] { return entry() == entryOf(kBackground); })) << entry();

    ASSERT_TRUE(box.setStartMode(100));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_EQ(entry(), "none");
}

} // namespace
