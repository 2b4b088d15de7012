/// Launched from a menu, the program hands over to the set-up wizard.
#include "TvTest.h"

#include <algorithm>
#include <csignal>

namespace {

namespace fs = std::filesystem;

class AMenuLaunch : public tv::TvTest {
protected:
    /// Puts a wizard in place that writes down its arguments and ends with 7.
    void SetUp() override
    {
        const fs::path wizard = box.folders.root() / "wizard";
        tv::writeFile(wizard, "#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + arguments().string() + "'\nexit 7\n");
        fs::permissions(wizard, fs::perms::owner_all);
        box.setVariable("ORBIS_WIZARD", wizard.string());
    }

    fs::path arguments() const { return box.folders.root() / "wizard.arguments"; }

    bool wizardGot(const std::string& argument) const
    {
        const auto all = tv::readLines(arguments());
        return std::find(all.begin(), all.end(), argument) != all.end();
    }
};

TEST_F(AMenuLaunch, RunsTheWizardAndEndsWithItsStatus)
{
    const std::vector<std::vector<std::string>> launches {
        {"origin=menu"},
        {"LAUNCH_MODE=popup", "origin=menu"},
        {"LAUNCH_MODE=POPUP ", "origin=menu"},
        {"LAUNCH_MODE=", "origin=menu"},
    };
    for (const auto& launch : launches) {
        SCOPED_TRACE(launch.front());
        fs::remove(arguments());
        box.program = box.launch(launch);
        EXPECT_TRUE(box.program->endsWith(7));
        for (const std::string& parameter : launch)
            EXPECT_TRUE(wizardGot(parameter)) << parameter;
        EXPECT_TRUE(wizardGot("type=TESSEL_CONNECT"));
        EXPECT_TRUE(wizardGot("uri=/usr/apps/org.orbis.tessel-UI/config/Tessel_connect.json"));
        EXPECT_TRUE(box.program->logged("Tessel UI Launched from menu"));
        EXPECT_FALSE(box.program->logged("In CTesselUI::OnCreate"));
        EXPECT_EQ(box.program->logged("get data failed."), launch.size() == 1);
    }
    EXPECT_TRUE(box.daemon->calls().empty()) << "the daemon is not told of a menu launch";
}

TEST_F(AMenuLaunch, PassesSignalsOnToTheWizard)
{
    const fs::path wizard = box.folders.root() / "wizard";
    tv::writeFile(wizard,
        "#!/bin/sh\ntrap 'exit 9' TERM INT HUP\n: > '" + arguments().string()
            + "'\nwhile :; do sleep 0.05; done\n");
    for (int signal : {SIGTERM, SIGINT, SIGHUP}) {
        SCOPED_TRACE(signal);
        fs::remove(arguments());
        box.program = box.launch({"origin=menu"});
        ASSERT_TRUE(tv::waitUntil([&] { return fs::exists(arguments()); }));
        box.program->signal(signal);
        EXPECT_TRUE(box.program->endsWith(9));
    }
}

} // namespace
