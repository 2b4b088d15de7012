#include "Processes.h"
#include "StoreFixture.h"

#include "dlog.h"
#include "wizard.h"

#include <stdexcept>
#include <sys/stat.h>
#include <sys/time.h>

class TheWizard : public StoreFixture {
protected:
    ~TheWizard() override { unsetenv("ORBIS_WIZARD"); }

    int run(const std::string& script) const
    {
        const std::string path = m_folder + "/wizard";
        writeFile(path, "#!/bin/sh\n" + script);
        chmod(path.c_str(), 0755);
        return runProgram(path);
    }

    static int runProgram(const std::string& path)
    {
        setenv("ORBIS_WIZARD", path.c_str(), 1);
        Words words {"caller", "type=A B", "uri="};
        char* arguments[] = {words[0].data(), words[1].data(), words[2].data()};
        return Wizard::StartWizardApp(3, arguments, "org.app", nullptr); // no null behind the last argument
    }
};

TEST_F(TheWizard, GetsTheArgumentsAndGivesItsStatus)
{
    EXPECT_EQ(run("printf '%s|' $# \"$@\" > '" + m_folder + "/seen'; exit 7"), 7);
    EXPECT_EQ(readFile(m_folder + "/seen"), "2|type=A B|uri=|");
    EXPECT_EQ(run("kill -TERM $$"), 128 + SIGTERM);
    testing::internal::CaptureStderr();
    EXPECT_EQ(runProgram(m_folder + "/absent"), 127);
    EXPECT_NE(testing::internal::GetCapturedStderr().find(m_folder + "/absent"), std::string::npos);
}

TEST_F(TheWizard, GetsTheSignalsAndSaysWhatBecomesOfThem)
{
    // Its own end on each, told apart from an end by the signal itself.
    const std::string script = "trap 'exit 11' TERM; trap 'exit 12' INT; trap 'exit 13' HUP; echo > '"
        + m_folder + "/ready'; while :; do sleep 0.05; done";
    const std::pair<int, int> cases[] = {{SIGTERM, 11}, {SIGINT, 12}, {SIGHUP, 13}};
    for (const auto& [number, status] : cases) {
        unlink((m_folder + "/ready").c_str());
        Child caller([&] { return run(script); });
        ASSERT_TRUE(runUntil([&] { return access((m_folder + "/ready").c_str(), F_OK) == 0; }));
        kill(caller.process(), number);
        ASSERT_TRUE(runUntil([&] { return caller.wait(WNOHANG).has_value(); })) << "the wizard was not told";
        EXPECT_EQ(caller.wait(), status);
    }
}

TEST_F(TheWizard, BeginsWithWhatProgramsExpectOfSignals)
{
    dlog_print(DLOG_DEBUG, "test", "a line makes this process ignore the signal");
    signal(SIGPIPE, SIG_IGN);
    EXPECT_EQ(run("kill -PIPE $$; exit 0"), 128 + SIGPIPE) << "it inherits a caller's own ways";
    signal(SIGPIPE, SIG_DFL);
    struct sigaction own = {};
    struct sigaction after = {};
    sigaction(SIGTERM, nullptr, &own);
    EXPECT_EQ(run("grep -q '^SigBlk:.*[^0[:space:]]' /proc/self/status && exit 1; exit 0"), 0);
    sigaction(SIGTERM, nullptr, &after);
    EXPECT_EQ(after.sa_sigaction, own.sa_sigaction) << "afterwards the signals are the caller's again";
}

TEST_F(TheWizard, IsWaitedForThroughSignals)
{
    struct sigaction before = {};
    struct sigaction interrupting = {};
    interrupting.sa_handler = [](int) {};
    sigaction(SIGALRM, &interrupting, &before);
    const itimerval often = {{0, 20000}, {0, 20000}};
    const itimerval never = {};
    setitimer(ITIMER_REAL, &often, nullptr);
    EXPECT_EQ(run("sleep 0.2; exit 3"), 3);
    setitimer(ITIMER_REAL, &never, nullptr);
    sigaction(SIGALRM, &before, nullptr);
}

TEST_F(TheWizard, RefusesInvalidArguments)
{
    char name[] = "caller";
    char* arguments[] = {name, nullptr};
    EXPECT_THROW(Wizard::StartWizardApp(0, arguments, "org.app", nullptr), std::invalid_argument);
    EXPECT_THROW(Wizard::StartWizardApp(1, nullptr, "org.app", nullptr), std::invalid_argument);
    EXPECT_THROW(Wizard::StartWizardApp(2, arguments, "org.app", nullptr), std::invalid_argument);
    EXPECT_THROW(Wizard::StartWizardApp(1, arguments, nullptr, nullptr), std::invalid_argument);
    EXPECT_THROW(Wizard::StartWizardApp(1, arguments, "", nullptr), std::invalid_argument);
}
