#include "settings/FolderWatch.h"

#include <Ecore.h>
#include <algorithm>
#include <array>
#include <sys/inotify.h>

namespace orbis {

namespace {

constexpr unsigned kContents =
    IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr unsigned kNames =
    IN_CREATE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ATTRIB | IN_MOVE_SELF | IN_ONLYDIR;
constexpr unsigned kPlace = IN_MOVE_SELF | IN_ONLYDIR;

std::vector<std::string> ancestorsOf(const std::string& folder)
{
    std::vector<std::string> ancestors {folder[0] == '/' ? "/" : "."};
    for (size_t end = folder.find('/', 1); end != std::string::npos; end = folder.find('/', end + 1))
        ancestors.push_back(folder.substr(0, end));
    return ancestors;
}

} // namespace

FolderWatch::FolderWatch(const std::string& folder, std::function<void()> changed)
    : m_folder(folder)
    , m_ancestors(ancestorsOf(folder))
    , m_changed(std::move(changed))
    , m_inotify(inotify_init1(IN_NONBLOCK | IN_CLOEXEC))
{
    // A watch that outlives the caller's use of Ecore must still find its handler alive.
    ecore_init();
}

FolderWatch::~FolderWatch()
{
    if (m_handler)
        ecore_main_fd_handler_del(m_handler);
    ecore_shutdown();
}

std::unique_ptr<FolderWatch> FolderWatch::create(const std::string& folder, std::function<void()> changed)
{
    std::unique_ptr<FolderWatch> watch(new FolderWatch(folder, std::move(changed)));
    if (!watch->m_inotify || !watch->follow())
        return nullptr;
    watch->m_handler = ecore_main_fd_handler_add(
        watch->m_inotify.get(), ECORE_FD_READ, on_ready, watch.get(), nullptr, nullptr);
    return watch->m_handler ? std::move(watch) : nullptr;
}

bool FolderWatch::add(const std::string& path, unsigned events, std::vector<int>& watches)
{
    const int watch = inotify_add_watch(m_inotify.get(), path.c_str(), events);
    if (watch >= 0)
        watches.push_back(watch);
    return watch >= 0;
}

// Adding a watch again changes nothing as long as the path leads to the same folder, so one way serves
// the first time and every later look. From the top down: a folder is watched before the next one is
// looked up in it, so that no replacement slips through between.
//
// Of the folders above, only the parent tells of the names in it (the others may be busy places), because
// the folder's own end is reported late while another process holds one of its files. When the folder is
// missing all of them do, since any of them may come next.
bool FolderWatch::follow()
{
    constexpr int kPasses = 8;
    std::vector<int> watches;
    bool found = false;
    bool missing = false;
    for (int pass = 0; pass < kPasses; ++pass) {
        watches.clear();
        for (const std::string& ancestor : m_ancestors)
            add(ancestor, missing || &ancestor == &m_ancestors.back() ? kNames : kPlace, watches);
        found = add(m_folder, kContents, watches);
        if (found != missing)
            break;
        missing = !found;
    }
    m_watches.swap(watches);
    for (const int old : watches) {
        if (std::find(m_watches.begin(), m_watches.end(), old) == m_watches.end())
            inotify_rm_watch(m_inotify.get(), old);
    }
    return found;
}

// What the events say is not looked at: some may have been dropped, and the state of the folder is what
// counts.
bool FolderWatch::drain()
{
    constexpr int kMostReads = 64; // under a storm of events the loop gets its turn
    std::array<char, 65536> events = {};
    bool any = false;
    for (int i = 0; i < kMostReads && read(m_inotify.get(), events.data(), events.size()) > 0; ++i)
        any = true;
    return any;
}

unsigned char FolderWatch::on_ready(void* data, Ecore_Fd_Handler*) noexcept
{
    auto* self = static_cast<FolderWatch*>(data);
    if (!self->drain())
        return ECORE_CALLBACK_RENEW;
    self->follow();
    const std::function<void()> changed = self->m_changed;
    changed(); // may destroy *self
    return ECORE_CALLBACK_RENEW;
}

} // namespace orbis
