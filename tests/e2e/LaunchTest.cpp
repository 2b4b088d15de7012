// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// How the program comes up, what it tells the rest of the TV, and how it ends; and launches from a menu, or
/// while it runs, starts or ends, after which exactly one process serves.
#include "Cards.h"
#include "TvTest.h"

#include <csignal>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using tv::Milliseconds;
using tv::waitUntil;
using Arguments = std::vector<std::string>;

class TheProgram : public tv::TvTest { };

TEST_F(TheProgram, ComesUpInOrderTellsItsStatusAndEndsAt100Only)
{
    const auto entry = [&] { return tv::readFile(box.folders.appStatus(tv::kPackage)); };
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(waitUntil([&] { return !entry().empty(); }));
    box.program->signal(SIGKILL); // its entry stays, and is taken over
    ASSERT_TRUE(box.program->endsWith(128 + SIGKILL));
    ASSERT_TRUE(box.settings.remove(tv::kLanguage)); // nobody has chosen one yet

    ASSERT_TRUE(box.startAgain());
    ASSERT_TRUE(box.program->waitForLog("End m_OnBusAcquired"));
    EXPECT_TRUE(box.program->logsInOrder({"Tessel UI Main start", "[Input Param] => POPUP",
        "[Input Param] => POPUP", "Tessel UI Main before loop", "[Input Param] => POPUP",
        "In CTesselUI::OnCreate", "In CTesselUI::Instance created Successfully", "Inside registerTesselVconf",
        "Success to register VCONF_KEY_MOBILEOOBE callback",
        "Success to register DEVICE_OWNED_VCONF callback", "Success to register VCONFKEY_TESSEL_STARTMODE",
        "In CreateWin", "(TSPKGNAME = org.orbis.tessel-UI, TSLOCALEDIR = *", "Portrait Mode = 0", "Entry",
        "ENTRY", "Start CTesselUIDbus::Create", "End CTesselUIDbus::Create", "Start ReconnectDbus",
        "End ReconnectDbus", "Start m_OnBusAcquired", "Object registered Successfully",
        "DBus server started = [true]", "Proxy Not NUll", "result:0", "End m_OnBusAcquired"}));
    EXPECT_TRUE(box.program->logged("In CTesselUI ::On Service "));
    EXPECT_TRUE(box.screenIsPlain()) << "nothing was asked for yet";

    const std::string pid = std::to_string(box.program->pid());
    ASSERT_TRUE(box.show(tv::kPinRequest)) << "the viewer sees message ids";
    EXPECT_TRUE(waitUntil([&] { return entry() == pid + " 2\n"; })) << entry() << " and not in front";
    ASSERT_TRUE(box.request("HidePopup"));
    EXPECT_TRUE(waitUntil([&] { return entry() == pid + " 4\n"; })) << entry() << " and not behind";
    ASSERT_TRUE(box.show(tv::kTermsRequest));
    for (int mode : {5, 0, 99, 101, -100})
        ASSERT_TRUE(box.setStartMode(mode));
    EXPECT_FALSE(box.program->logged("Exiting APP"));

    EXPECT_TRUE(box.ends());
    EXPECT_TRUE(box.program->logsInOrder({"Exiting APP", "In CTesselUI::OnTerminate",
        "Inside deRegisterTesselVconf", "Success to register VCONF_KEY_MOBILEOOBE ignore",
        "Success to register DEVICE_OWNED_VCONF callback",
        "Success to Deregister VCONFKEY_TESSEL_STARTMODE callback", "In CTesselUI::Main after loop"}));
    EXPECT_EQ(box.daemon->calls(), Arguments {"ServerStarted true"}) << "no stop by the viewer";
    EXPECT_EQ(box.program->complaints(), Arguments {});
    EXPECT_TRUE(box.screenIsPlain());
    EXPECT_EQ(entry(), "");
}

class ALaunch : public tv::TvTest {
protected:
    /// Launches once more, or takes one that waits. Success when exactly one of the two runs in the end, the
    /// daemon reaches it, and it is the program now.
    testing::AssertionResult oneServes(std::unique_ptr<tv::Program> second)
    {
        waitUntil([&] { return !second->running() || !box.program->running(); });
        if (second->running())
            std::swap(box.program, second);
        if (auto ended = second->endsWith(0); !ended && second->status() != 128 + SIGKILL)
            return ended << second->tail();
        if (!waitUntil([&] { return box.daemon->findsUi(box.program->pid()) || !box.program->running(); }))
            return testing::AssertionFailure() << "nobody serves";
        return box.request("ShowTnCPopup");
    }
    /// The same, of the program and one that is launched now that it was asked to end.
    testing::AssertionResult anotherServes()
    {
        const int first = box.program->pid();
        if (auto served = oneServes(box.launch()); !served)
            return served;
        return testing::AssertionResult(box.program->pid() != first)
            << "the first was asked to end, and took a launch";
    }
};

TEST_F(ALaunch, AtAnyMomentOfTheFirstLeavesExactlyOneThatServes)
{
    for (int delayMs : {0, 5, 15, 30, 60, 120}) {
        SCOPED_TRACE(delayMs);
        box.program = box.launch();
        tv::pass(Milliseconds(delayMs));
        ASSERT_TRUE(oneServes(box.launch()));
        // Also in the middle of its end.
        box.program->signal(SIGTERM);
        tv::pass(Milliseconds(delayMs));
        ASSERT_TRUE(anotherServes());
        // The daemon writes its 100 and launches again at once.
        ASSERT_TRUE(box.settings.setInt(tv::kStartMode, 100));
        ASSERT_TRUE(anotherServes());
        box.reset();
    }
}

TEST_F(ALaunch, WaitsForAFirstThatIsBlockedAndIsThenServed)
{
    box.daemon->behave(tv::kSilent);
    box.program = box.launch();
    ASSERT_TRUE(box.daemon->receives("ServerStarted true"));
    const auto second = box.launch();
    EXPECT_TRUE(tv::stays([&] { return second->running(); }, Milliseconds(700)))
        << "who can have answered it?";
    const size_t mark = box.program->mark();
    box.daemon->behave(tv::kWilling);
    EXPECT_TRUE(second->endsWith(0));
    EXPECT_TRUE(box.program->waitForLog("In CTesselUI ::On Service ", mark));

    // One that was stopped and goes on takes its launch; one that is killed in between serves nobody.
    for (int signal : {SIGCONT, SIGKILL}) {
        const int first = box.program->pid();
        box.program->signal(SIGSTOP);
        auto third = box.launch();
        EXPECT_TRUE(tv::stays([&] { return third->running(); }, Milliseconds(1300)));
        box.program->signal(signal);
        ASSERT_TRUE(oneServes(std::move(third)));
        EXPECT_EQ(box.program->pid() == first, signal == SIGCONT);
        // The next round kills it: not while the window manager takes its window.
        ASSERT_TRUE(waitUntil([&] { return display().visibleWindow(box.program->pid()).has_value(); }));
    }
}

TEST_F(ALaunch, ByAnotherUserIsDeniedWhileTheFirstRuns)
{
    if (getuid() != 0)
        GTEST_SKIP() << "only root can be another user";
    constexpr int kDenied = 4;
    for (const fs::path& folder : {box.folders.root(), box.folders.runtime(), box.folders.state()})
        fs::permissions(folder, fs::perms::owner_all | fs::perms::others_exec | fs::perms::others_read);
    ASSERT_TRUE(box.start());
    box.setRunner({"setpriv", "--reuid=65534", "--clear-groups"});
    const auto other = box.launch();
    EXPECT_TRUE(other->endsWith(kDenied)) << other->tail();
    EXPECT_FALSE(other->logged("In CTesselUI::OnCreate"));
    EXPECT_NE(other->tail().find("org.orbis.tessel-UI runs already"), std::string::npos) << other->tail();
    EXPECT_TRUE(box.show(tv::kTermsRequest));
}

class AMenuLaunch : public tv::TvTest { };

TEST_F(AMenuLaunch, RunsTheWizardAndEndsWithItsStatus)
{
    const fs::path wizard = box.folders.root() / "wizard";
    const fs::path record = box.folders.root() / "wizard.arguments";
    tv::writeFile(wizard,
        "#!/bin/sh\ntrap 'exit 9' TERM\nprintf '%s\\n' '' \"$@\" > " + record.string()
            + "\nwhile :; do sleep 0.05; done");
    fs::permissions(wizard, fs::perms::owner_all);
    box.setVariable("ORBIS_WIZARD", wizard.string());
    for (const char* mode : {"", "LAUNCH_MODE=popup", "LAUNCH_MODE=POPUP ", "LAUNCH_MODE="}) {
        SCOPED_TRACE(mode);
        fs::remove(record);
        Arguments launch {"origin=menu"};
        if (*mode)
            launch.emplace_back(mode);
        box.program = box.launch(launch);
        const std::string last = "\nuri=/usr/apps/org.orbis.tessel-UI/config/Tessel_connect.json\n";
        launch.emplace_back("type=TESSEL_CONNECT");
        ASSERT_TRUE(waitUntil([&] { return tv::readFile(record).find(last) != std::string::npos; }));
        for (const std::string& argument : launch)
            EXPECT_NE(tv::readFile(record).find("\n" + argument + "\n"), std::string::npos) << argument;
        box.program->signal(SIGTERM);
        EXPECT_TRUE(box.program->endsWith(9)) << "the signal is not passed on, or the status is another";
        EXPECT_TRUE(box.program->logged("Tessel UI Launched from menu"));
        EXPECT_FALSE(box.program->logged("In CTesselUI::OnCreate"));
        EXPECT_EQ(box.program->logged("get data failed."), !*mode);
    }
    EXPECT_TRUE(box.daemon->calls().empty()) << "the daemon is not told of a menu launch";
}

} // namespace
