#include "settings/WholeFile.h"

#include "settings/FileDescriptor.h"
#include "settings/Folders.h"

#include <cerrno>
#include <cstdio>
#include <ctime>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <set>
#include <sys/stat.h>

namespace orbis {

namespace {

// Half-written files lie in a folder of their own, so that a watch on the folder above sees nothing of a
// write but the rename that ends it.
constexpr char kDraftFolder[] = "/.tmp";
constexpr time_t kStaleSeconds = 60;
constexpr mode_t kPermissionBits = 07777;

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};

bool synchronise(int descriptor)
{
    // Some file systems have nothing to synchronise for a folder and say so with EINVAL.
    return fsync(descriptor) == 0 || errno == EINVAL;
}

bool synchroniseFolder(const std::string& folder)
{
    const FileDescriptor descriptor(open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return descriptor && synchronise(descriptor.get());
}

/// New folders are durable once the folders that hold them are.
void synchroniseFoldersAbove(std::string folder)
{
    for (size_t end = folder.rfind('/'); end != std::string::npos && end > 0; end = folder.rfind('/')) {
        folder.resize(end);
        synchroniseFolder(folder);
    }
}

/// The draft folder gets the mode of the folder it serves: whoever may write there must be able to write
/// here too.
bool makeDraftFolder(const std::string& folder, Durability durability)
{
    struct stat status = {};
    if (stat(folder.c_str(), &status) != 0) {
        if (!makeFolders(folder) || stat(folder.c_str(), &status) != 0)
            return false;
        if (durability == Durability::Durable)
            synchroniseFoldersAbove(folder);
    }
    const std::string drafts = folder + kDraftFolder;
    if (mkdir(drafts.c_str(), status.st_mode & kPermissionBits) != 0)
        return errno == EEXIST;
    return chmod(drafts.c_str(), status.st_mode & kPermissionBits) == 0;
}

/// Removes what writers that were killed left behind.
void sweepDrafts(const std::string& folder)
{
    static std::set<std::string> s_swept;
    if (!s_swept.insert(folder).second)
        return;
    const std::unique_ptr<DIR, CloseFolder> drafts(opendir((folder + kDraftFolder).c_str()));
    if (!drafts)
        return;
    const time_t now = time(nullptr);
    while (const dirent* entry = readdir(drafts.get())) {
        struct stat status = {};
        if (fstatat(dirfd(drafts.get()), entry->d_name, &status, AT_SYMLINK_NOFOLLOW) == 0
            && S_ISREG(status.st_mode) && now - status.st_mtime > kStaleSeconds)
            unlinkat(dirfd(drafts.get()), entry->d_name, 0);
    }
}

bool writeAll(int descriptor, std::string_view contents)
{
    while (!contents.empty()) {
        const ssize_t written = write(descriptor, contents.data(), contents.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written < 0)
            return false;
        contents.remove_prefix(static_cast<size_t>(written));
    }
    return true;
}

/// A file of its own below the draft folder; gone with its owner unless it was moved to its place.
class Draft {
public:
    explicit Draft(const std::string& folder)
    {
        static unsigned s_count = 0;
        constexpr mode_t kMode = 0644;
        constexpr int kFlags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
        do { // a name can be taken: by a process of another PID namespace, or one that died
            m_path = folder + kDraftFolder + '/' + std::to_string(getpid()) + '-' + std::to_string(s_count++);
            m_descriptor = FileDescriptor(open(m_path.c_str(), kFlags, kMode));
        } while (!m_descriptor && errno == EEXIST);
    }
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft()
    {
        const int error = errno;
        if (m_descriptor && !m_moved)
            unlink(m_path.c_str());
        errno = error;
    }

    explicit operator bool() const { return static_cast<bool>(m_descriptor); }

    bool fill(std::string_view contents, Durability durability)
    {
        return writeAll(m_descriptor.get(), contents)
            && (durability == Durability::Volatile || synchronise(m_descriptor.get()));
    }

    bool moveTo(const std::string& path)
    {
        m_moved = rename(m_path.c_str(), path.c_str()) == 0;
        return m_moved;
    }

private:
    std::string m_path;
    FileDescriptor m_descriptor;
    bool m_moved = false;
};

bool replaceOnce(
    const std::string& folder, const std::string& name, std::string_view contents, Durability durability)
{
    Draft draft(folder);
    return draft && draft.fill(contents, durability) && draft.moveTo(folder + '/' + name);
}

} // namespace

bool replaceFile(
    const std::string& folder, const std::string& name, std::string_view contents, Durability durability)
{
    sweepDrafts(folder);
    // Missing folders are made where they are missed: at the first write, and when somebody removed them
    // in the middle of one. A draft can also be swept from under a live writer when the clock is set.
    constexpr int kRetries = 3;
    bool replaced = replaceOnce(folder, name, contents, durability);
    for (int retry = 0; !replaced && errno == ENOENT && retry < kRetries; ++retry)
        replaced = makeDraftFolder(folder, durability) && replaceOnce(folder, name, contents, durability);
    return replaced && (durability == Durability::Volatile || synchroniseFolder(folder));
}

bool removeFile(const std::string& folder, const std::string& name, Durability durability)
{
    if (unlink((folder + '/' + name).c_str()) != 0)
        return false;
    return durability == Durability::Volatile || synchroniseFolder(folder);
}

std::optional<std::string> readFile(const std::string& path, size_t limit)
{
    const FileDescriptor descriptor(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_CLOEXEC));
    struct stat status = {};
    if (!descriptor || fstat(descriptor.get(), &status) != 0)
        return std::nullopt;
    if (!S_ISREG(status.st_mode) || static_cast<size_t>(status.st_size) > limit) {
        errno = S_ISREG(status.st_mode) ? EFBIG : EINVAL;
        return std::nullopt;
    }
    std::string contents(static_cast<size_t>(status.st_size), '\0');
    size_t filled = 0;
    while (filled < contents.size()) {
        const ssize_t count = read(descriptor.get(), contents.data() + filled, contents.size() - filled);
        if (count < 0 && errno != EINTR)
            return std::nullopt;
        if (count == 0)
            break; // somebody cut the file short
        filled += count > 0 ? static_cast<size_t>(count) : 0;
    }
    contents.resize(filled);
    return contents;
}

} // namespace orbis
