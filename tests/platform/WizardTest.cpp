// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "StoreFixture.h"

#include "dlog.h"
#include "wizard.h"

#include <sys/stat.h>

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
