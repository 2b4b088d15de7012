// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What an application may rely on, seen by a small one (conformance/Application.cpp).
#include "Process.h"
#include "StoreFixture.h"

#include <algorithm>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

class AnApplicationsRun : public StoreFixture {
protected:
    /// Runs the probe to its end. @param options  of env, for its environment
    Words run(const Words& tasks, const Words& options = {})
    {
        // A toolkit that is started twice keeps what the first start made.
        Words command {"env", "ELM_DISPLAY=buffer", "ELM_ENGINE=buffer", "EINA_LOG_LEVEL=0",
            "EINA_LOG_BACKTRACE=-1", "ASAN_OPTIONS=detect_leaks=0"};
        command.insert(command.begin() + 1, options.begin(), options.end());
        command.insert(command.end(), {APPLICATION, "--application"});
        command.insert(command.end(), tasks.begin(), tasks.end());
        const tv::Process probe(command, m_folders.environment());
        EXPECT_EQ(probe.waitForExit(), 0);
        m_errors = testing::PrintToString(probe.errors());
        return probe.output();
    }

    std::string m_errors;
};

TEST_F(AnApplicationsRun, IsPausedAndResumedOnlyWhileItRunsAlsoTheSecondTime)
{
    EXPECT_EQ(run({"twice"}),
        (Words {"create", "resume", "app_control", "terminate", "result 0", "create", "resume", "app_control",
            "terminate", "result 0"}));
    EXPECT_FALSE(fs::exists(fs::path(runtime()) / "apps" / "orbis-conformance"));
    EXPECT_TRUE(fs::is_empty(fs::path(runtime()) / "app-control"));
}

TEST_F(AnApplicationsRun, NeedsNoHomeChangesNoneAndLeavesNothing)
{
    const auto temporary = [] {
        const auto names = namesIn(fs::temp_directory_path());
        return std::count_if(
            names.begin(), names.end(), [](const std::string& name) { return name.rfind("orbis", 0) == 0; });
    };
    const auto before = temporary();
    const std::pair<Words, Words> cases[] = {
        {{"HOME=/proc", "XDG_RUNTIME_DIR=/proc"}, {"HOME=/proc", "XDG_RUNTIME_DIR=/proc"}},
        {{"-u", "XDG_RUNTIME_DIR", "HOME=/nowhere"}, {"HOME=/nowhere", "XDG_RUNTIME_DIR=none"}},
        {{"-u", "XDG_RUNTIME_DIR", "-u", "HOME"}, {"HOME=", "XDG_RUNTIME_DIR=none"}},
        {{"-u", "XDG_RUNTIME_DIR", "HOME=/proc", "ORBIS_RUNTIME_DIR=/proc/none"},
            {"HOME=/proc", "XDG_RUNTIME_DIR=none"}},
    };
    for (const auto& [options, told] : cases) {
        const Words expected {"create", told[0], told[1], "resume", "app_control", "terminate", "result 0"};
        EXPECT_EQ(run({"environment"}, options), expected);
        EXPECT_EQ(temporary(), before);
    }
    EXPECT_NE(
        m_errors.find("orbis-conformance cannot tell whether it runs already: /proc/none"), std::string::npos)
        << "the last one had no runtime folder";
    EXPECT_EQ(run({"unheard"}, {"ORBIS_RUNTIME_DIR=/proc/none"}),
        (Words {"create", "resume", "app_control", "terminate", "result 0"}))
        << "where nobody hears it complain";
}

} // namespace
