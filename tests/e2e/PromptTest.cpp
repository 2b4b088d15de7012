/// The simulator's prompt on a real terminal.
#include "PrivateBus.h"
#include "TvBox.h"

#include <cstdlib>
#include <fcntl.h>
#include <pty.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>

namespace {

class APrompt : public testing::Test {
protected:
    void SetUp() override
    {
        std::vector<std::string> environment = m_folders.environment();
        environment.push_back("DBUS_SYSTEM_BUS_ADDRESS=" + m_bus.address());
        environment.emplace_back("TERM=xterm");
        std::vector<char*> pointers;
        for (std::string& variable : environment)
            pointers.push_back(variable.data());
        pointers.push_back(nullptr);
        const std::string program = tv::TvBox::binary("tessel-daemon-sim");
        m_pid = forkpty(&m_terminal, nullptr, nullptr, nullptr);
        if (m_pid == 0) {
            execle(program.c_str(), program.c_str(), nullptr, pointers.data());
            _exit(127);
        }
        m_inside = open(ptsname(m_terminal), O_RDWR | O_NOCTTY);
        fcntl(m_terminal, F_SETFL, O_NONBLOCK);
        ASSERT_TRUE(shows("> "));
    }

    void TearDown() override
    {
        if (!m_status)
            kill(m_pid, SIGKILL);
        hasEnded();
        close(m_inside);
        close(m_terminal);
    }

    void type(const std::string& keys) const
    {
        ASSERT_EQ(write(m_terminal, keys.data(), keys.size()), static_cast<ssize_t>(keys.size()));
    }

    /// Success when the text appears behind what was looked for before.
    testing::AssertionResult shows(const std::string& text)
    {
        const bool shown = tv::waitUntil([&] {
            char bytes[4096];
            for (ssize_t count; (count = read(m_terminal, bytes, sizeof bytes)) > 0;)
                m_screen.append(bytes, static_cast<size_t>(count));
            return m_screen.find(text, m_seen) != std::string::npos;
        });
        if (!shown)
            return testing::AssertionFailure() << m_screen.substr(m_seen);
        m_seen = m_screen.find(text, m_seen) + text.size();
        return testing::AssertionSuccess();
    }

    bool hasReadAll() const
    {
        int waiting = 0;
        return ioctl(m_inside, FIONREAD, &waiting) == 0 && waiting == 0;
    }

    bool hasEnded()
    {
        int status = 0;
        const bool ended = tv::waitUntil([&] { return waitpid(m_pid, &status, WNOHANG) != 0; });
        m_status = ended && WIFEXITED(status) ? WEXITSTATUS(status) : -1;
        return ended;
    }

    const tv::PrivateBus m_bus;
    const tv::Folders m_folders;
    int m_terminal = -1;
    int m_inside = -1; ///< the terminal as the simulator has it
    int m_pid = -1;
    std::string m_screen;
    size_t m_seen = 0;
    std::optional<int> m_status;
};

TEST_F(APrompt, CompletesRepeatsAndNeverHoldsTheRest)
{
    // The program is not there, but the simulator says what it would have asked.
    type("ShowP\tAnna 1\n");
    EXPECT_TRUE(shows("\r\nrequest ShowPinPopup \"Anna\" \"1\""));
    type("\x1b[A\n");
    EXPECT_TRUE(shows("\r\nrequest ShowPinPopup \"Anna\" \"1\"")) << "Up does not repeat";
    type("set s\tdb/menu_w\tde_DE\n");
    EXPECT_TRUE(shows("\r\nset db/menu_widget/language de_DE"));
    type("scenario cancel-at-\t");
    EXPECT_TRUE(shows("cancel-at-terms"));

    // Half a key is no reason to wait for the rest of it.
    type("\x1b");
    ASSERT_TRUE(tv::waitUntil([this] { return hasReadAll(); }));
    kill(m_pid, SIGTERM);
    EXPECT_TRUE(hasEnded()) << "the prompt holds the main loop";
    EXPECT_EQ(m_status, 0);
    termios mode {};
    EXPECT_EQ(tcgetattr(m_inside, &mode), 0);
    EXPECT_TRUE(mode.c_lflag & ICANON && mode.c_lflag & ECHO)
        << "the terminal is left as it was for the prompt";
}

} // namespace
