/// Texts of phones and requests that are more than a name, and a log that nobody reads.
#include "Cards.h"
#include "TvTest.h"

#include <cstring>

#include <algorithm>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

class TextsFromOutside : public tv::TvTest {
protected:
    /// A pipe that a program which opens it waits at for good.
    std::string pipePath() const
    {
        std::string path = box.folders.root() / "pipe";
        EXPECT_EQ(mkfifo(path.c_str(), 0600), 0);
        return path;
    }
};

TEST_F(TextsFromOutside, OpenNoFileAndForgeNoLineOfTheLog)
{
    ASSERT_TRUE(box.start());
    const std::string name = "<font=Sans font_source=" + pipePath() + ">A</font>";
    for (const char* method : {"ShowPinPopup", tv::kNetworkTestRequest.method, tv::kSignInRequest.method})
        EXPECT_TRUE(box.show(method, {name, "<b " + name.substr(6)})) << method;

    const std::string forged = "Anna\nE/tessel-ui: forged \x1b[31m\r\u009b\u2028";
    EXPECT_TRUE(box.show("ShowPinPopup", {forged, "0042"}));
    ASSERT_TRUE(box.settings.setText(tv::kRequest, "{\"page\":\n\"pin\",\"mobilename\":\"A\\nE/forged\"}"));
    ASSERT_TRUE(box.program->waitForLog("Set Meassge [] Mobile Name =  [A\\nE/forged]"));
    EXPECT_TRUE(box.program->logged(
        "Set Meassge [0042] Mobile Name =  [Anna\\nE/tessel-ui: forged \\x1b[31m\\r\\u009b\\u2028]"));
    for (const std::string& line : box.program->errors()) {
        EXPECT_EQ(std::count_if(line.begin(), line.end(), [](char c) { return c >= 0 && c < ' '; }), 0)
            << line;
        EXPECT_NE(line.rfind("E/", 0), 0U) << line;
    }
    EXPECT_TRUE(box.setStartMode(100));
    EXPECT_TRUE(box.program->endsWith(0));
}

TEST_F(TextsFromOutside, AreServedAlsoWhenNobodyReadsTheLog)
{
    ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN"));
    const std::string path = pipePath();
    const int pipe = open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    const std::string line(99, '.');
    while (write(pipe, (line + '\n').c_str(), line.size() + 1) > 0) { }
    while (write(pipe, "\n", 1) > 0) { }
    box.setVariable("LOG_PIPE", path);
    // The screen probe is the program's, not the shell's.
    std::vector<std::string> environment = box.environment();
    for (std::string& variable : environment) {
        if (variable.rfind("LD_PRELOAD=", 0) == 0)
            variable.replace(0, strlen("LD_PRELOAD"), "PROBE");
    }
    box.program =
        std::make_unique<tv::Program>(std::vector<std::string> {"/bin/sh", "-c",
                                          "LD_PRELOAD=$PROBE exec \"$0\" LAUNCH_MODE=POPUP 2<>\"$LOG_PIPE\"",
                                          tv::TvBox::binary("tessel-ui")},
            environment);
    ASSERT_TRUE(tv::waitUntil(
        [&] { return !box.daemon->calls().empty() && box.daemon->findsUi(box.program->pid()); }));
    for (const tv::ShownRequest& request : tv::kRequests)
        ASSERT_TRUE(box.show(request.method, request.texts)) << request.method;
    std::string taken(1 << 20, '\0');
    taken.resize(static_cast<size_t>(std::max(read(pipe, taken.data(), taken.size()), ssize_t {0})));
    EXPECT_EQ(taken.find("tessel-ui"), std::string::npos) << "it was full";
    ASSERT_TRUE(box.request("HidePopup"));
    taken.assign(1 << 20, '\0');
    taken.resize(static_cast<size_t>(std::max(read(pipe, taken.data(), taken.size()), ssize_t {0})));
    EXPECT_NE(taken.find(" log lines were lost"), std::string::npos) << taken.substr(0, 200);
    while (write(pipe, "\n", 1) > 0) { }
    EXPECT_TRUE(box.settings.setInt(tv::kStartMode, 100));
    EXPECT_TRUE(box.program->endsWith(0));
    close(pipe);
}

} // namespace
