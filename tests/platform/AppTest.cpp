/// What an application may rely on, seen by a small one (AppProbe.cpp) on a canvas in memory.
#include "StoreFixture.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>

namespace {

namespace fs = std::filesystem;

class AnApplicationsRun : public StoreFixture {
protected:
    /// Runs the probe to its end. @param variables  set in its environment; without "=" it does not get them
    Words run(Words tasks, const Words& variables = {})
    {
        // A toolkit that is started twice keeps what the first start made.
        Words environment {"ELM_DISPLAY=buffer", "ELM_ENGINE=buffer", "EINA_LOG_LEVEL=0",
            "EINA_LOG_BACKTRACE=-1", "ASAN_OPTIONS=detect_leaks=0"};
        for (const std::string& variable : m_folders.environment()) {
            const std::string name = variable.substr(0, variable.find('='));
            const auto isThis = [&](const std::string& other) {
                return other.substr(0, other.find('=')) == name;
            };
            if (std::none_of(variables.begin(), variables.end(), isThis))
                environment.push_back(variable);
        }
        for (const std::string& variable : variables) {
            if (variable.find('=') != std::string::npos)
                environment.push_back(variable);
        }
        tasks.insert(tasks.begin(), APP_PROBE);
        const tv::Process probe(tasks, environment);
        EXPECT_EQ(probe.waitForExit(), 0);
        m_errors = probe.errors();
        return probe.output();
    }

    Words m_errors;
};

TEST_F(AnApplicationsRun, IsPausedAndResumedOnlyWhileItRunsAlsoTheSecondTime)
{
    EXPECT_EQ(run({"twice", "window"}),
        (Words {"create", "resume", "terminate", "result 0", "create", "resume", "terminate", "result 0"}));
    EXPECT_FALSE(fs::exists(fs::path(runtime()) / "apps" / "app-probe"));
    EXPECT_TRUE(fs::is_empty(fs::path(runtime()) / "app-control"));
}

TEST_F(AnApplicationsRun, GoesOnWhereNobodyHearsItComplain)
{
    const Words variables {"ORBIS_RUNTIME_DIR=/proc/none"}; // the first complaint comes before anything else
    EXPECT_EQ(run({"unheard"}, variables), (Words {"create", "terminate", "result 0"}));
}

TEST_F(AnApplicationsRun, HasItsTimersOnTimeWhenACallbackBlocked)
{
    constexpr int kDueMs = 800;
    constexpr int kLateMs = 200; // of the 500 that the callback takes
    int fired = 0;
    for (int attempt = 0; attempt < 3 && (fired == 0 || fired > kDueMs + kLateMs); ++attempt) {
        const Words told = run({"timer"});
        ASSERT_EQ(told.size(), 4U);
        fired = std::atoi(told[1].c_str());
    }
    EXPECT_GE(fired, kDueMs - 10);
    EXPECT_LE(fired, kDueMs + kLateMs);
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
        {{"HOME=/nowhere", "XDG_RUNTIME_DIR"}, {"HOME=/nowhere", "XDG_RUNTIME_DIR=none"}},
        {{"HOME", "XDG_RUNTIME_DIR"}, {"HOME=", "XDG_RUNTIME_DIR=none"}},
        {{"HOME=/proc", "XDG_RUNTIME_DIR", "ORBIS_RUNTIME_DIR=/proc/none"},
            {"HOME=/proc", "XDG_RUNTIME_DIR=none"}},
    };
    for (const auto& [variables, told] : cases) {
        EXPECT_EQ(run({"environment", "window"}, variables),
            (Words {"create", told[0], told[1], "resume", "terminate", "result 0"}));
        EXPECT_EQ(temporary(), before);
    }
    const std::string problem = "app-probe cannot tell whether it runs already: /proc/none";
    EXPECT_TRUE(std::any_of(m_errors.begin(), m_errors.end(), [&](const std::string& line) {
        return line.rfind(problem, 0) == 0;
    })) << "the last one had no runtime folder";
}

} // namespace
