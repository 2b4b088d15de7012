#include "app/ResourceFile.h"

#include "settings/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace orbis {

std::optional<std::string> readResource(const std::string& path, size_t limit)
{
    // A pipe that nobody writes to must not hold the program up.
    const FileDescriptor file {open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY)};
    struct stat status { };
    if (!file || fstat(file.get(), &status) != 0)
        return std::nullopt;
    if (!S_ISREG(status.st_mode) || static_cast<size_t>(status.st_size) > limit) {
        errno = S_ISREG(status.st_mode) ? EFBIG : EINVAL;
        return std::nullopt;
    }
    std::string bytes(static_cast<size_t>(status.st_size), '\0');
    size_t taken = 0;
    while (taken < bytes.size()) {
        const ssize_t count = read(file.get(), &bytes[taken], bytes.size() - taken);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return std::nullopt;
        if (count == 0)
            break; // it has become shorter
        taken += static_cast<size_t>(count);
    }
    bytes.resize(taken);
    return bytes;
}

} // namespace orbis
