/// What the monkey does to the world around the program.
#include "World.h"

#include <filesystem>
#include <sys/mount.h>

namespace monkey {

namespace {

constexpr const char* kGone = ".gone";

} // namespace

void World::answer(const std::string& how)
{
    if (!box.daemon || !box.daemon->running())
        return;
    box.daemon->behave(how);
    m_daemonIsWilling = how == tv::kWilling || (m_daemonIsWilling && how == tv::kRefusing);
}

void World::removeDaemon()
{
    box.daemon.reset();
}

/// One that has left the bus in the midst of an answer counts as gone, too.
void World::bringDaemon()
{
    if (!m_busIsUp)
        return;
    box.bringDaemon();
    m_daemonIsWilling = true;
}

void World::killBus()
{
    if (!m_busIsUp)
        return;
    box.daemon.reset();
    m_bus.kill();
    m_busIsUp = false;
}

void World::bringBus()
{
    if (m_busIsUp)
        return;
    m_bus.restart();
    m_busIsUp = true;
    bringDaemon();
    if (!isRunning() || m_mayEnd)
        return;
    const bool isBack =
        tv::waitUntil([this] { return !isRunning() || box.daemon->findsUi(box.program->pid()); });
    if (!isBack)
        throw Fault("the bus is back, and the program does not come back to it");
}

void World::removeFolder(const std::string& name)
{
    const std::filesystem::path folder = box.folders.root() / name;
    std::error_code ignored;
    std::filesystem::remove_all(folder.string() + kGone, ignored);
    std::filesystem::rename(folder, folder.string() + kGone, ignored);
    m_folderWasGone = true;
}

/// By a mount, because root may write whatever the permissions say; others may not mount.
void World::lockFolder()
{
    const std::filesystem::path folder = box.folders.state();
    if (mount(folder.c_str(), folder.c_str(), nullptr, MS_BIND, nullptr) == 0)
        mount(nullptr, folder.c_str(), nullptr, MS_BIND | MS_REMOUNT | MS_RDONLY, nullptr);
    else
        std::filesystem::permissions(folder / "db", std::filesystem::perms {0555});
    m_folderWasGone = true;
}

void World::bringFolders()
{
    while (umount2(box.folders.state().c_str(), MNT_DETACH) == 0) { }
    std::error_code missing;
    std::filesystem::permissions(box.folders.state() / "db", std::filesystem::perms {0755}, missing);
    for (const auto& folder : {box.folders.state(), box.folders.runtime()}) {
        std::error_code ignored;
        const std::filesystem::path gone = folder.string() + kGone;
        if (!std::filesystem::exists(gone))
            continue;
        std::filesystem::remove_all(folder, ignored);
        std::filesystem::rename(gone, folder, ignored);
    }
}

void World::resizeScreen(int width, int height)
{
    if (m_screen == tv::Geometry {0, 0, width, height})
        return;
    display.resize(width, height);
    m_screen = {0, 0, width, height};
}

void World::stopManager()
{
    display.stopManager();
    m_managerIsUp = false;
}

void World::bringManager()
{
    if (!m_managerIsUp)
        display.startManager();
    m_managerIsUp = true;
}

} // namespace monkey
