// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "settings/FolderEvents.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/inotify.h>
#include <sys/stat.h>

namespace orbis::settings {

namespace {

namespace fs = std::filesystem;

constexpr unsigned kContents =
    IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_CLOSE_WRITE | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr unsigned kNames =
    IN_CREATE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE | IN_ATTRIB | IN_MOVE_SELF | IN_ONLYDIR;
constexpr unsigned kPlace = IN_MOVE_SELF | IN_ONLYDIR;

/// Links that lead to links, and nowhere; the kernel follows 40.
constexpr int kMostLinks = 8;

/// @return topmost first, the folder's parent last
std::vector<std::string> ancestorsOf(const std::string& folder)
{
    std::vector<std::string> ancestors {folder[0] == '/' ? "/" : "."};
    for (size_t end = folder.find('/', 1); end != std::string::npos; end = folder.find('/', end + 1))
        ancestors.push_back(folder.substr(0, end));
    return ancestors;
}

std::string nameOf(const std::string& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// A name that is empty is no place to wait for.
std::string withoutEmptyNames(const std::string& path)
{
    std::string result;
    for (const char letter : path) {
        if (letter != '/' || result.empty() || result.back() != '/')
            result += letter;
    }
    return result;
}

bool isLink(const std::string& path)
{
    struct stat status = {};
    return lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

/// @return what the link leads to, whether it is there or not
std::string targetOf(const std::string& link)
{
    std::error_code ignored;
    const fs::path target = fs::read_symlink(link, ignored);
    return withoutEmptyNames((fs::path(link).parent_path() / target).lexically_normal().string());
}

bool isMissing(int error)
{
    return error == ENOENT || error == ENOTDIR;
}

/// @return whether files in the folder can be reached, even though their names may not be read
bool canBeSearched(const std::string& folder)
{
    return faccessat(AT_FDCWD, folder.c_str(), X_OK, AT_EACCESS) == 0;
}

} // namespace

FolderEvents::FolderEvents(const std::string& folder)
    : m_folder(withoutEmptyNames(folder))
{
}

/// @return 0 or the error
int FolderEvents::add(const std::string& path, unsigned events, const std::string& next)
{
    const int watch = inotify_add_watch(m_inotify.get(), path.c_str(), events);
    if (watch < 0)
        return errno;
    // Two paths can lead to one folder; the events asked for last would take the place of the others.
    unsigned all = events;
    for (const Place& place : m_places) {
        if (place.watch == watch)
            all |= place.events;
    }
    m_places.push_back({watch, all, next});
    return all == events || inotify_add_watch(m_inotify.get(), path.c_str(), all) >= 0 ? 0 : errno;
}

/// @param folder  whose coming is awaited in the folders above it
/// @return 0 or what keeps the coming of the next folder from being noticed
int FolderEvents::addAncestors(const std::string& folder, bool withNames, int linksLeft)
{
    const std::vector<std::string> ancestors = ancestorsOf(folder);
    int worst = 0;
    for (size_t i = 0; i < ancestors.size(); ++i) {
        const bool isParent = i + 1 == ancestors.size();
        const std::string& next = isParent ? folder : ancestors[i + 1];
        const bool names = withNames || isParent || isLink(next);
        const int error = add(ancestors[i], names ? kNames : kPlace, nameOf(next));
        if (error == 0)
            worst = worst == EACCES ? 0 : worst; // nothing above can bring a folder that is there
        else if (error == EACCES && !(withNames && canBeSearched(ancestors[i])))
            continue; // its moves are noticed below, the leave to enter it above
        else if (!isMissing(error))
            worst = error;
        std::error_code ignored;
        if (!withNames || !isLink(next) || linksLeft == 0 || fs::exists(next, ignored))
            continue;
        if (const int inTheWay = addAncestors(targetOf(next), true, linksLeft - 1); inTheWay != 0)
            worst = inTheWay;
    }
    return worst;
}

// Of the folders above, only the parent and those that hold a link tell of the names in them (the others may
// be busy places): the folder's own end is reported late while another process holds one of its files, and
// that a link leads elsewhere is reported nowhere else. When the folder is missing all of them do, since any
// of them may come next.
void FolderEvents::lookOnce(bool withNames)
{
    m_places.clear();
    m_error = addAncestors(m_folder, withNames, kMostLinks);
    const int error = add(m_folder, kContents, {});
    m_current = error == 0 ? m_places.back().watch : -1;
    if (error != 0 && !isMissing(error) && !(error == EACCES && !canBeSearched(m_folder)))
        m_error = error;
}

// Adding a watch again changes nothing as long as the path leads to the same folder, so one way serves
// the first time and every later look. From the top down: a folder is watched before the next one is
// looked up in it, so that no replacement slips through between.
bool FolderEvents::follow()
{
    if (!m_inotify)
        m_inotify = files::FileDescriptor(inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (!m_inotify) {
        m_error = errno;
        return false;
    }
    constexpr int kPasses = 8;
    const int before = m_current;
    std::vector<Place> old;
    bool withNames = false;
    for (int pass = 0; pass < kPasses; ++pass) {
        old.insert(old.end(), m_places.begin(), m_places.end());
        lookOnce(withNames);
        const bool found = m_current >= 0;
        if (found != withNames)
            break;
        withNames = !found;
    }
    forget(old);
    return m_current != before;
}

/// Ends the watches that are not needed any more.
void FolderEvents::forget(const std::vector<Place>& old) const
{
    for (const Place& place : old) {
        if (std::none_of(m_places.begin(), m_places.end(),
                [&](const Place& kept) { return kept.watch == place.watch; }))
            inotify_rm_watch(m_inotify.get(), place.watch);
    }
}

void FolderEvents::sort(const inotify_event& event, FolderChange& change) const
{
    if ((event.mask & IN_Q_OVERFLOW) != 0)
        change.everything = true;
    // What comes from a watch that has ended was looked at when it ended.
    for (const Place& place : m_places) {
        if (place.watch != event.wd)
            continue;
        if (event.len == 0)
            change.everything = true; // something happened to the folder itself
        else if (place.next.empty())
            change.names.insert(event.name);
        else if (place.next == event.name)
            change.everything = true;
    }
}

FolderChange FolderEvents::take()
{
    constexpr int kMostReads = 64; // under a storm of events the loop gets its turn
    alignas(inotify_event) std::array<char, 65536> events = {};
    FolderChange change;
    for (int i = 0; i < kMostReads; ++i) {
        const ssize_t count = read(m_inotify.get(), events.data(), events.size());
        if (count <= 0)
            break;
        for (size_t at = 0; at < static_cast<size_t>(count);) {
            const auto* event = reinterpret_cast<const inotify_event*>(events.data() + at);
            sort(*event, change);
            at += sizeof(inotify_event) + event->len;
        }
    }
    return change;
}

} // namespace orbis::settings
