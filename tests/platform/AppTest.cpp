/// What an application may rely on, seen by a small one (AppProbe.cpp) on a canvas in memory.
#include "StoreFixture.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;

class AnApplicationsRun : public StoreFixture {
protected:
    /// Runs the probe to its end. @param without  variables that it does not get
    Words run(Words tasks, const Words& variables = {}, const Words& without = {})
    {
        Words environment = variables;
        // A toolkit that is started twice keeps what the first start made.
        environment.emplace_back("ASAN_OPTIONS=detect_leaks=0");
        for (const char* variable :
            {"ELM_DISPLAY=buffer", "ELM_ENGINE=buffer", "EINA_LOG_LEVEL=0", "EINA_LOG_BACKTRACE=-1"})
            environment.emplace_back(variable);
        for (const std::string& variable : m_folders.environment()) {
            const std::string name = variable.substr(0, variable.find('=') + 1);
            const auto isThis = [&](const std::string& other) { return other.rfind(name, 0) == 0; };
            if (std::none_of(variables.begin(), variables.end(), isThis)
                && std::find(without.begin(), without.end(), name) == without.end())
                environment.push_back(variable);
        }
        tasks.insert(tasks.begin(), APP_PROBE);
        const tv::Process probe(tasks, environment);
        EXPECT_EQ(probe.waitForExit(tv::Milliseconds(20000)), 0);
        m_errors = probe.errors();
        return probe.output();
    }

    Words m_errors;
};

TEST_F(AnApplicationsRun, IsPausedAndResumedOnlyWhileItRuns)
{
    EXPECT_EQ(run({"window"}), (Words {"create", "resume", "terminate", "result 0"}));
}

TEST_F(AnApplicationsRun, CanRunTwiceInOneProcess)
{
    const Words once {"create", "resume", "terminate", "result 0"};
    Words twice = once;
    twice.insert(twice.end(), once.begin(), once.end());
    EXPECT_EQ(run({"twice", "window"}), twice);
    EXPECT_FALSE(fs::exists(fs::path(runtime()) / "apps" / "app-probe"));
    EXPECT_TRUE(fs::is_empty(fs::path(runtime()) / "app-control"));
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
        std::vector<std::string> found;
        for (const auto& entry : fs::directory_iterator(fs::temp_directory_path())) {
            if (entry.path().filename().string().rfind("orbis", 0) == 0)
                found.push_back(entry.path());
        }
        return found;
    };
    const auto before = temporary();
    struct {
        Words variables;
        Words without;
        Words told;
    } const cases[] = {
        {{"HOME=/proc", "XDG_RUNTIME_DIR=/proc"}, {}, {"HOME=/proc", "XDG_RUNTIME_DIR=/proc"}},
        {{"HOME=/proc"}, {"XDG_RUNTIME_DIR="}, {"HOME=/proc", "XDG_RUNTIME_DIR=none"}},
        {{"HOME=/nowhere"}, {"XDG_RUNTIME_DIR="}, {"HOME=/nowhere", "XDG_RUNTIME_DIR=none"}},
        {{}, {"HOME=", "XDG_RUNTIME_DIR="}, {"HOME=", "XDG_RUNTIME_DIR=none"}},
        {{"HOME=/proc", "ORBIS_RUNTIME_DIR=/proc/none"}, {"XDG_RUNTIME_DIR="},
            {"HOME=/proc", "XDG_RUNTIME_DIR=none"}},
    };
    for (const auto& [variables, without, told] : cases) {
        SCOPED_TRACE(told.front() + (variables.size() > 1 ? " " + variables.back() : ""));
        Words expected {"create"};
        expected.insert(expected.end(), told.begin(), told.end());
        for (const char* line : {"resume", "terminate", "result 0"})
            expected.emplace_back(line);
        EXPECT_EQ(run({"environment", "window"}, variables, without), expected);
        EXPECT_EQ(temporary(), before);
    }
    const bool isTold = std::any_of(m_errors.begin(), m_errors.end(), [](const std::string& line) {
        return line.rfind("app-probe cannot tell whether it runs already: /proc/none", 0) == 0;
    });
    EXPECT_TRUE(isTold) << "the last one had no runtime folder";
}

} // namespace
