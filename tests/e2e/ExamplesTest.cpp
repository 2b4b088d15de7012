// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The daemons that the documents show work as they stand, whichever side comes first.
#include "Cards.h"
#include "TvTest.h"

#include <algorithm>
#include <cstdlib>

namespace {

struct Example {
    const char* name;
    std::vector<std::string> command;
    bool isFirst; ///< before the program
    std::string byViewer; ///< what it prints of a stop
    std::string gaveUp;
};

std::ostream& operator<<(std::ostream& stream, const Example& example)
{
    return stream << example.name;
}

class AnExampleDaemon : public tv::TvTest, public testing::WithParamInterface<Example> {
protected:
    void SetUp() override
    {
        box.daemon.reset();
        // Where the settings tool is installed.
        box.setVariable("PATH", BIN_DIR ":" + std::string(std::getenv("PATH")));
    }

    /// Starts both. Success when the daemon's PIN is on the screen.
    testing::AssertionResult start()
    {
        box.reset();
        if (!GetParam().isFirst) {
            box.program = box.launch();
            if (auto failed = box.program->waitForLog("DBUS call failed: *"); !failed)
                return failed << " with no daemon to tell";
        }
        auto command = GetParam().command;
        command.insert(command.end(), {"Anna's phone", "0427"});
        m_daemon = std::make_unique<tv::Process>(command, box.environment());
        if (GetParam().isFirst) {
            if (!tv::waitUntil([&] { return ownsItsName(); }))
                return testing::AssertionFailure() << "it does not come to the bus";
            box.program = box.launch();
        }
        return box.shows({tv::pinCard("Anna's phone", "0427")});
    }
    /// Success when both ended as they should, after the daemon had printed this.
    testing::AssertionResult ended(const std::string& line) const
    {
        if (auto program = box.program->endsWith(0); !program)
            return program;
        const auto status = m_daemon->waitForExit();
        const auto& lines = m_daemon->output();
        return testing::AssertionResult(status == 0 && std::count(lines.begin(), lines.end(), line) == 1)
            << testing::PrintToString(lines) << testing::PrintToString(m_daemon->errors());
    }
    bool ownsItsName() const
    {
        const auto answer = tv::outputOf(
            {"gdbus", "call", "--address", bus().address(), "--dest", "org.freedesktop.DBus", "--object-path",
                "/org/freedesktop/DBus", "--method", "org.freedesktop.DBus.NameHasOwner", kDaemonName},
            box.environment());
        return answer && answer->find("true") != std::string::npos;
    }

    static constexpr const char* kDaemonName = "com.norvale.orbis.tessel.daemon";
    std::unique_ptr<tv::Process> m_daemon;
};

TEST_P(AnExampleDaemon, ShowsAPinHearsTheStopAndSendsAPopupThatGaveUpHome)
{
    ASSERT_TRUE(start());
    EXPECT_TRUE(box.press({"Return"}));
    EXPECT_TRUE(ended(GetParam().byViewer));

    ASSERT_TRUE(start());
    // What the program tells on the 61st second, which nobody waits for here.
    tv::outputOf({"gdbus", "call", "--address", bus().address(), "--dest", kDaemonName, "--object-path",
                     "/com/norvale/orbis/tessel/daemon", "--method", std::string(kDaemonName) + ".StopTessel",
                     "false", "false"},
        box.environment());
    EXPECT_TRUE(ended(GetParam().gaveUp));
    EXPECT_EQ(box.settings.getInt(tv::kStartMode), 100);
}

INSTANTIATE_TEST_SUITE_P(Written, AnExampleDaemon,
    testing::Values(Example {"inPython", {EXAMPLES "/daemon.py"}, true, "StopTessel True False",
                        "StopTessel False False"},
        Example {"inC", {EXAMPLE_DAEMON}, false, "StopTessel (true, false)", "StopTessel (false, false)"}),
    [](const auto& example) { return std::string(example.param.name); });

} // namespace
