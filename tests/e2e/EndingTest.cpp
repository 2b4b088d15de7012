// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The program ends when it is asked to, whatever it waits for, and when its screen is taken away; each time
/// with nothing left behind.
#include "Cards.h"
#include "TvTest.h"
#include "Weston.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using tv::waitUntil;
using Names = std::vector<std::string>;

constexpr int kDisplayLost = 3;

#ifdef __SANITIZE_ADDRESS__
constexpr bool kIsTimed = false; // the search for leaks comes after the end, and takes longer than it
#else
constexpr bool kIsTimed = true;
#endif

class AnEnd : public tv::TvTest {
protected:
    /// @return the files that are there only while the program runs
    Names traces() const
    {
        Names found;
        for (const char* folder : {"apps", "app-control"}) {
            std::error_code ignored;
            for (const auto& entry : fs::directory_iterator(box.folders.runtime() / folder, ignored)) {
                if (!entry.is_directory() || !fs::is_empty(entry.path())) // where drafts are written
                    found.push_back(entry.path().string());
            }
        }
        return found;
    }
};

class AnEndAskedFor : public AnEnd {
protected:
    /// Sends every signal at one moment.
    void expectEnds(const std::function<bool()>& bringAbout)
    {
        std::chrono::duration<double> quickest {1e9};
        for (int signal : {SIGTERM, SIGINT, SIGHUP}) {
            SCOPED_TRACE(signal);
            box.daemon->forget();
            ASSERT_TRUE(bringAbout());
            ASSERT_NE(traces(), Names {}) << "it has not begun";
            const auto begin = std::chrono::steady_clock::now();
            box.program->signal(signal);
            EXPECT_TRUE(box.program->endsWith(0));
            const std::chrono::duration<double> took = std::chrono::steady_clock::now() - begin;
            EXPECT_TRUE(!kIsTimed || took.count() < 3)
                << took.count() << " s; the limit for a process that a busy machine keeps from working";
            quickest = std::min(quickest, took);
            display().signal(SIGCONT);
            bus().goOn();
            box.daemon->behave(tv::kWilling);
            EXPECT_EQ(traces(), Names {});
        }
        EXPECT_TRUE(!kIsTimed || quickest.count() < 1) << quickest.count() << " s";
    }

    /// Launches the program. @return whether it comes to where it asks for its display
    bool launch()
    {
        box.program = box.launch();
        return waitUntil([&] { return !traces().empty(); });
    }
};

TEST_F(AnEndAskedFor, ComesInOrderWhereNothingIsInItsWay)
{
    expectEnds([&] { return box.start() && box.show(tv::kPinRequest); });
    EXPECT_TRUE(box.program->logsInOrder({"In CTesselUI::OnTerminate", "In CTesselUI::Main after loop"}));
    EXPECT_TRUE(box.screenIsPlain());
}

TEST_F(AnEndAskedFor, ComesWhileTheDisplayIsStalled)
{
    expectEnds([&] {
        display().signal(SIGSTOP);
        return launch()
            && tv::stays([&] { return !box.program->logged("Portrait Mode = 0"); }, tv::Milliseconds(500));
    });
    expectEnds([&] {
        const bool isUp = box.start() && box.request("ShowTnCPopup");
        display().signal(SIGSTOP);
        return isUp;
    });
    display().kill(); // its window manager has missed things
}

TEST_F(AnEndAskedFor, ComesWhileTheBusIsSilent)
{
    expectEnds([&] {
        bus().stall();
        return launch() && box.program->waitForLog("Portrait Mode = 0");
    });
    expectEnds([&] {
        const bool isUp = box.start() && box.show(tv::kPinRequest);
        bus().stall();
        return isUp;
    });
}

TEST_F(AnEndAskedFor, ComesWhileAFileIsAPipeThatNobodyFills)
{
    const fs::path pipe = box.folders.root() / "fonts.conf";
    ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
    box.setVariable("FONTCONFIG_FILE", pipe.string());
    int end = -1;
    expectEnds([&] {
        close(end);
        // It can be opened as soon as somebody waits at the other end.
        return launch() && waitUntil([&] { return (end = open(pipe.c_str(), O_WRONLY | O_NONBLOCK)) >= 0; });
    });
    close(end);
}

TEST_F(AnEndAskedFor, ComesWhileTheDaemonIsSilent)
{
    expectEnds([&] {
        box.daemon->behave(tv::kSilent);
        return launch() && box.daemon->receives("ServerStarted true");
    });
    expectEnds([&] {
        const bool isUp = box.start() && box.show("ShowFailedPopup", {"pin"});
        box.daemon->behave(tv::kSilent);
        display().key("Return");
        return isUp && box.daemon->receives("StopTessel true false");
    });
}

class ALostScreen : public AnEnd {
protected:
    /// @param isOrderly  whether the loop can still run
    void expectLoss(bool isOrderly)
    {
        EXPECT_TRUE(box.program->endsWith(kDisplayLost));
        EXPECT_EQ(traces(), Names {});
        EXPECT_EQ(box.program->logged("In CTesselUI::OnTerminate"), isOrderly);
        EXPECT_EQ(box.program->lines("org.orbis.tessel-UI: ").size(), 1U) << "one message says why";
    }
};

TEST_F(ALostScreen, EndsTheProgramWithAndWithoutAPopup)
{
    std::string window;
    struct {
        const char* what;
        std::function<void()> lose;
        bool isOrderly;
    } const losses[] = {
        {"window", [&] { display().destroyWindow(window); }, true},
        {"connection", [&] { display().disconnect(window); }, false},
        {"display", [] { display().kill(); }, false},
    };
    for (const auto& [what, lose, isOrderly] : losses) {
        for (bool withPopup : {true, false}) {
            SCOPED_TRACE(std::string(what) + (withPopup ? " with a popup" : ""));
            ASSERT_TRUE(box.startAgain());
            ASSERT_TRUE(box.request("ShowTnCPopup"));
            ASSERT_TRUE(
                waitUntil([&] { return !(window = display().windowOf(box.program->pid())).empty(); }));
            if (!withPopup) {
                ASSERT_TRUE(box.request("HidePopup"));
                ASSERT_TRUE(box.screenIsPlain());
            }
            lose();
            expectLoss(isOrderly);
            if (!display().isUp()) {
                display().start();
                box.setVariable("DISPLAY", display().name());
            }
            EXPECT_TRUE(box.screenIsPlain());
        }
    }
}

TEST_F(ALostScreen, IsAlsoACompositorThatGoes)
{
    for (const char* method : {"ShowTnCPopup", "HidePopup"}) {
        SCOPED_TRACE(method);
        const tv::Weston weston(box, 0);
        ASSERT_TRUE(box.start());
        ASSERT_TRUE(box.request(method));
        weston.process().signal(SIGKILL);
        weston.process().waitForExit();
        expectLoss(true);
    }
}

} // namespace
