/// The TV that the monkey plays with, and what must be true of it after every step.
#ifndef TESSEL_TESTS_WORLD_H
#define TESSEL_TESTS_WORLD_H

#include "Step.h"
#include "TvBox.h"

#include <stdexcept>

namespace monkey {

/// What must not happen did.
class Fault : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

class World {
public:
    World();
    ~World() { bringFolders(); }
    World(const World&) = delete;
    World& operator=(const World&) = delete;

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
    void launch();

    /// Sets how the daemon answers.
    void answer(const std::string& how);
    void removeDaemon();
    void bringDaemon();
    void killBus();
    void bringBus();
    void removeFolder(const std::string& name);
    /// Nobody can write to the settings that last, until they are brought back.
    void lockFolder();
    void bringFolders();
    void resizeScreen(int width, int height);
    void stopManager();
    void bringManager();

    bool isRunning() const { return box.program && box.program->running(); }
    size_t mostMemory() const { return m_mostMemory; } ///< kB, of any program so far
    size_t starts() const { return m_starts; }

private:
    void readReports();
    void checkLiving();
    void checkResources();
    void checkStatus();
    void checkEnd();
    std::string whatIsWrongWith(const tv::Screen& screen) const;
    bool isUndisturbed() const { return m_busIsUp && m_daemonIsWilling && !m_folderWasGone; }

    tv::PrivateBus m_bus;

public:
    tv::Display display;
    tv::TvBox box {m_bus, display};

private:
    tv::Geometry m_screen = tv::Display::kScreen;
    bool m_busIsUp = true;
    bool m_managerIsUp = true;
    bool m_daemonIsWilling = true;
    bool m_folderWasGone = false; ///< since the program's start
    bool m_mayEnd = false;
    size_t m_linesRead = 0; ///< of the program's standard error
    size_t m_mostMemory = 0;
    size_t m_starts = 0;
};

} // namespace monkey

#endif
