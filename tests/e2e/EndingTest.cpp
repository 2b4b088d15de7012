/// The program ends when it is asked to, whatever it waits for, and when its screen is taken away; each time
/// with nothing left behind.
#include "SilentSocket.h"
#include "TvTest.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <iostream>

#include <fcntl.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using tv::Answer;
using tv::waitUntil;
using Seconds = std::chrono::duration<double>;

constexpr int kDisplayLost = 3;

class AnEnd : public tv::TvTest {
protected:
    void SetUp() override
    {
        box.daemon = std::make_unique<tv::Daemon>(m_bus.address());
        box.setVariable("DBUS_SYSTEM_BUS_ADDRESS", m_bus.address());
    }
    void TearDown() override
    {
        m_bus.goOn();
        TvTest::TearDown();
    }

    /// @return the files that are there only while the program runs
    std::vector<std::string> traces() const
    {
        std::vector<std::string> found;
        for (const char* folder : {"apps", "app-control"}) {
            std::error_code ignored;
            for (const auto& entry : fs::directory_iterator(box.folders.runtime() / folder, ignored)) {
                if (entry.is_directory() && fs::is_empty(entry.path()))
                    continue; // where drafts are written
                found.push_back(entry.path().string());
            }
        }
        return found;
    }

    /// @return how many lines the program itself, and not the libraries below it, said last
    size_t lastWords(const std::string& beginning) const
    {
        const auto& lines = box.program->errors();
        return static_cast<size_t>(std::count_if(lines.begin(), lines.end(),
            [&](const std::string& line) { return line.rfind(beginning, 0) == 0; }));
    }

    tv::PrivateBus m_bus; // its own, since it is stopped
};

class AnEndAskedFor : public AnEnd {
protected:
    /// Sends every signal at one moment.
    void expectEnds(const std::function<bool()>& bringAbout)
    {
        double quickest = 1e9;
        for (int signal : {SIGTERM, SIGINT, SIGHUP}) {
            SCOPED_TRACE(signal);
            ASSERT_TRUE(bringAbout());
            ASSERT_NE(traces(), std::vector<std::string> {}) << "it has not begun";
            const auto begin = std::chrono::steady_clock::now();
            box.program->signal(signal);
            EXPECT_TRUE(box.program->endsWith(0));
            const double took = Seconds(std::chrono::steady_clock::now() - begin).count();
            EXPECT_LT(took, 3.0) << "the limit for a process that a busy machine keeps from working";
            quickest = std::min(quickest, took);
            EXPECT_EQ(traces(), std::vector<std::string> {});
            EXPECT_TRUE(box.screenIsPlain());
            box.program.reset();
            m_bus.goOn();
            box.daemon->release();
            box.daemon->forget();
        }
        EXPECT_LT(quickest, 1.0);
        std::cout << "    " << quickest << " s\n";
    }

    bool isToldTo(const char* call) const
    {
        return waitUntil([&] { return box.daemon->received(call); });
    }

    void launch() { box.program = box.launch({"LAUNCH_MODE=POPUP"}); }
};

TEST_F(AnEndAskedFor, ComesWhileTheDisplayIsStalled)
{
    tv::Display screen;
    box.setVariable("DISPLAY", screen.name());
    expectEnds([&] {
        screen.signal(SIGSTOP);
        launch();
        return waitUntil([&] { return !traces().empty(); })
            && tv::stays([&] { return !box.program->logged("Portrait Mode = 0"); }, tv::Milliseconds(500));
    });
    expectEnds([&] {
        screen.signal(SIGCONT);
        if (!box.start() || !box.request("ShowTnCPopup"))
            return false;
        screen.signal(SIGSTOP);
        return true;
    });
    screen.signal(SIGCONT);
}

TEST_F(AnEndAskedFor, ComesWhileTheBusIsSilent)
{
    tv::SilentSocket silent(box.folders.root() / "silent");
    box.setVariable("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + silent.path().string());
    expectEnds([&] {
        launch();
        return silent.waitForNextGuest();
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
        launch();
        // It can be opened as soon as somebody waits at the other end.
        return waitUntil([&] { return (end = open(pipe.c_str(), O_WRONLY | O_NONBLOCK)) >= 0; });
    });
    close(end);
}

TEST_F(AnEndAskedFor, ComesWhileTheDaemonIsSilentAtTheStart)
{
    box.daemon->answer("ServerStarted", Answer::Held);
    expectEnds([&] {
        launch();
        return isToldTo("ServerStarted(true)");
    });
}

TEST_F(AnEndAskedFor, ComesWhileTheDaemonIsSilentAtAStop)
{
    box.daemon->answer("StopTessel", Answer::Held);
    expectEnds([&] {
        if (!box.start() || !box.show("ShowFailedPopup", {"pin"}))
            return false;
        display().key("Return");
        return isToldTo("StopTessel(true, false)");
    });
}

TEST_F(AnEndAskedFor, ComesWhileTheBusIsStalled)
{
    expectEnds([&] {
        if (!box.start() || !box.show("ShowPinPopup", {"Anna's phone", "0042"}))
            return false;
        m_bus.stall();
        return true;
    });
}

TEST_F(AnEnd, DoesNotWaitForAStalledBusEither)
{
    ASSERT_TRUE(box.start());
    m_bus.stall();
    const auto begin = std::chrono::steady_clock::now();
    ASSERT_TRUE(box.setStartMode(100));
    EXPECT_TRUE(box.program->endsWith(0));
    EXPECT_LT(Seconds(std::chrono::steady_clock::now() - begin).count(), 4.0) << "of 25";
    EXPECT_EQ(traces(), std::vector<std::string> {});
}

class ALostScreen : public AnEnd {
protected:
    void expectLoss()
    {
        EXPECT_TRUE(box.program->endsWith(kDisplayLost));
        EXPECT_EQ(traces(), std::vector<std::string> {});
        EXPECT_EQ(lastWords("org.orbis.tessel-UI: "), 1U) << "one message says why";
    }
};

TEST_F(ALostScreen, EndsTheProgramWithAndWithoutAPopup)
{
    for (bool withPopup : {true, false}) {
        SCOPED_TRACE(withPopup);
        tv::Display screen;
        box.setVariable("DISPLAY", screen.name());
        ASSERT_TRUE(box.start());
        if (withPopup) {
            ASSERT_TRUE(box.request("ShowPinPopup", {"Anna's phone", "0042"}));
            ASSERT_TRUE(waitUntil(
                [&] { return screen.visibleWindow(box.program->pid()) && screen.showsAnything(); }));
        }
        screen.kill();
        expectLoss();
    }
}

TEST_F(ALostScreen, IsAlsoAWindowThatSomebodyDestroys)
{
    for (bool withPopup : {true, false}) {
        SCOPED_TRACE(withPopup);
        ASSERT_TRUE(box.start());
        ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
        const std::string window = display().windowOf(box.program->pid());
        if (!withPopup) {
            ASSERT_TRUE(box.request("HidePopup"));
            ASSERT_TRUE(box.screenIsPlain());
        }
        display().destroyWindow(window);
        expectLoss();
        EXPECT_TRUE(box.program->logsInOrder({"In CTesselUI::OnTerminate"})) << "the loop still ran";
        EXPECT_TRUE(box.screenIsPlain());
    }
    ASSERT_TRUE(box.start());
    ASSERT_TRUE(box.show("ShowTnCPopup"));
    display().disconnect(display().windowOf(box.program->pid()));
    expectLoss();
}

TEST_F(ALostScreen, IsAlsoACompositorThatGoes)
{
    for (bool withPopup : {true, false}) {
        SCOPED_TRACE(withPopup);
        tv::Process compositor({"weston", "--backend=headless-backend.so", "--use-pixman", "--idle-time=0",
                                   "--no-config", "--socket=tv", "--width=1920", "--height=1080"},
            box.folders.environment());
        ASSERT_TRUE(waitUntil([&] { return fs::exists(box.folders.session() / "tv"); })) << "no compositor";
        box.setVariable("WAYLAND_DISPLAY", "tv");
        box.setVariable("ELM_DISPLAY", "wl");
        box.setVariable("DISPLAY", "");
        ASSERT_TRUE(box.start());
        ASSERT_TRUE(box.request(withPopup ? "ShowTnCPopup" : "HidePopup"));
        compositor.signal(SIGKILL);
        compositor.waitForExit();
        expectLoss();
        EXPECT_TRUE(box.program->logsInOrder({"In CTesselUI::OnTerminate"})) << "the loop still ran";
        fs::remove(box.folders.session() / "tv");
        fs::remove(box.folders.session() / "tv.lock");
    }
}

} // namespace
