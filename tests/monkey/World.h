// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The TV that the monkey plays with, and what must be true of it after every step.
#ifndef TESSEL_TESTS_WORLD_H
#define TESSEL_TESTS_WORLD_H

#include "TvBox.h"

#include <set>
#include <stdexcept>

namespace monkey {

using Arguments = std::vector<std::string>;

/// What must not happen did.
class Fault : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

class World {
public:
    World();
    ~World() { changeFolders({"back"}); }

    /// Starts the program when none runs, in surroundings that were mended before. @throws Fault
    void makeReady();
    /// @throws Fault unless the program lives, answers and shows what it may, or has ended as it may
    void check();

    /// From now on the program may end, with status 0.
    void mayEnd() { m_mayEnd = true; }
    /// Waits for an end that was asked for. @throws Fault when it does not come
    void mustEnd(const char* reason);
    /// Sends a request so many times at once. @throws Fault when one is not answered with 0 though nothing
    /// stands in the way
    void request(const std::string& method, const Arguments& texts, size_t times);
    /// Starts the program once more; whichever process serves afterwards is the program.
    /// @throws Fault when none does
    void launch(const Arguments& nothing = {});

    // Steps of a trace, with their arguments: numbers are milliseconds, "back" makes whole what "gone" broke.

    /// Sets how the daemon answers.
    void answer(const Arguments& how);
    void changeDaemon(const Arguments& how);
    /// Takes the bus away for a while, and brings it back: what a step leaves broken would hide what the next
    /// ones do. @throws Fault when the program does not come back to it
    void interruptBus(const Arguments& duration);
    /// Takes the folder of that name away; "locked" leaves them, but nobody can write to the settings that
    /// last.
    void changeFolders(const Arguments& how);
    void resizeScreen(const Arguments& size);
    void changeWindowManager(const Arguments& how);
    /// Stops the program and lets it go on.
    void pause(const Arguments& duration);
    /// 100 must end it.
    void writeStartMode(const Arguments& mode);
    void endBySignal(const Arguments& number);
    /// Asks it to end, by a "signal" or the start mode, and launches it a little later.
    void endAndLaunch(const Arguments& wayAndDelay);

    /// Ends the program as the machine does that goes off. @throws Fault
    void end();

    bool isRunning() const { return box.program && box.program->running(); }
    size_t starts() const { return m_starts; }

private:
    bool waitForProgram(const std::function<bool()>& condition);
    void checkLiving();
    void checkStatus() const;
    void checkEnd();
    std::string whatIsWrongWith(const tv::Screen& screen) const;

    tv::PrivateBus m_bus;

public:
    tv::Display display;
    tv::TvBox box {m_bus, display};

private:
    tv::Geometry m_screen = tv::Display::kScreen;
    bool m_managerIsUp = true;
    std::set<std::string> m_disturbed; ///< the daemon, by how it answers; the folders, since a start
    bool m_mayEnd = false;
    size_t m_starts = 0;
};

} // namespace monkey

#endif
