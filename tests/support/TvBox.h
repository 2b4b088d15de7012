// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A whole TV in a box: bus, screen, settings, setup daemon and the program under test.
#ifndef TESSEL_TESTS_TV_BOX_H
#define TESSEL_TESTS_TV_BOX_H

#include "Daemon.h"
#include "Display.h"
#include "Folders.h"
#include "PrivateBus.h"
#include "Program.h"
#include "Screen.h"

#include <chrono>
#include <map>

namespace tv {

/// The settings and names that the program shares with the rest of the TV.
constexpr const char* kStartMode = "db/menu/network/tessel_startmode";
constexpr const char* kOwned = "memory/menu/network/tessel_ocf_device_owned";
constexpr const char* kRequest = "db/tessel/mobile_oobe";
constexpr const char* kReady = "memory/menu/network/tessel_ocf_ready";
constexpr const char* kWizardMode = "memory/wizard/wizard_mode";
constexpr const char* kLanguage = "db/menu_widget/language";
constexpr const char* kScreenReader = "db/menu/system/accessibility/screenreader";
constexpr const char* kHighContrast = "db/menu/system/accessibility/highcontrast";
constexpr const char* kPackage = "org.orbis.tessel-UI";

/// A request over the bus, and the popup that it brings.
struct ShownRequest {
    const char* method;
    std::vector<std::string> texts;
    Card card;
};

class TvBox {
public:
    /// The TV speaks English, and its wizard runs for the first time.
    /// @param bus      borrowed; where the daemon lives
    /// @param display  borrowed; must outlive the box
    TvBox(const PrivateBus& bus, const Display& display);

    /// @return the program's path among the binaries of the build; the variable TV_PROGRAMS names the folder
    ///         of another build's
    static std::string binary(const std::string& name);
    /// @return an environment in which the program finds this box
    std::vector<std::string> environment() const;
    /// Sets a variable of the box's own for the programs started from now on.
    void setVariable(const std::string& name, const std::string& value) { m_variables[name] = value; }
    /// The programs launched from now on are run by this command.
    void setRunner(const std::vector<std::string>& command) { m_runner = command; }
    /// @return whether a program can have mounts of its own
    static bool mayMount();
    /// The programs launched from now on see what this script of the shell mounts; nobody else does.
    void mountFirst(const std::string& script);

    /// Gives the programs launched from now on a wall clock of their own.
    void bringClock();
    /// Sets it ahead of the machine's, from one moment to the next.
    void setClock(std::chrono::seconds ahead) const;

    /// Starts a daemon in the place of the one that there is. @param options  of the simulator
    void bringDaemon(const std::vector<std::string>& options = {});
    /// Starts one more instance of the program.
    std::unique_ptr<Program> launch(const std::vector<std::string>& arguments = {"LAUNCH_MODE=POPUP"}) const;
    /// Starts the program and waits until the daemon can send it requests.
    testing::AssertionResult start();
    /// Ends the program and forgets what the set-up has changed.
    void reset();
    /// The same, and starts the program.
    testing::AssertionResult startAgain();
    /// Sends a request; success when it is answered with (i) 0.
    testing::AssertionResult request(const std::string& method, const std::vector<std::string>& texts = {});
    /// The same, and waits until its popup is on the screen, at rest, and has the keys.
    testing::AssertionResult show(const std::string& method, const std::vector<std::string>& texts = {});
    /// The same, and that it is the popup which the request brings.
    testing::AssertionResult show(const ShownRequest& request);
    /// @return what the program has on the screen, an empty one when it does not tell; it tells when it has
    /// dealt with all that had come before, keys too, and has drawn what that changed
    Screen screen() const { return askProbe(probeSocket()).value_or(Screen {}); }
    std::string probeSocket() const { return (folders.root() / "screen-probe").string(); }
    /// Success when, at last, the program shows exactly these popups, lowest first, with nothing left over,
    /// and has drawn them.
    testing::AssertionResult shows(const std::vector<Card>& cards) const;
    /// Presses and releases keys one after the other, as a viewer does who has seen what the one before did.
    /// Success when the program has dealt with them, or has ended.
    testing::AssertionResult press(const std::vector<std::string>& keys) const;
    /// Success when, at last, nothing of the program can be seen.
    testing::AssertionResult screenIsPlain() const;
    /// Writes the start-mode key; success when the program has dealt with it and, but for 100, runs on.
    testing::AssertionResult setStartMode(int value) const;
    /// Asks the program to end, through the start-mode key; success when it does as it should.
    testing::AssertionResult ends() const;
    /// @return what was read out, an utterance a line
    std::vector<std::string> utterances() const { return readLines(m_speechLog); }
    /// @return what the program's standard error ended with and what the daemon received
    std::string report() const;

    Folders folders;
    Settings settings;
    const Display& display;
    std::unique_ptr<Daemon> daemon;
    std::unique_ptr<Program> program; // goes first: it may be talking to the daemon

private:
    std::string m_busAddress;
    std::filesystem::path m_speechLog = folders.root() / "speech.log";
    std::filesystem::path m_clock = folders.root() / "clock";
    std::string m_preloaded; ///< into the program, separated by colons
    std::map<std::string, std::string> m_variables;
    std::vector<std::string> m_runner;
};

} // namespace tv

#endif
