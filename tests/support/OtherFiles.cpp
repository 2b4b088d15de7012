/// Lets a program find other files than those that it was built to read. To be preloaded: a path below
/// OTHER_FILES_OF is looked for below OTHER_FILES instead, whoever in the program asks for it.
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <dlfcn.h>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::string elsewhere(const char* path)
{
    static const char* const s_from = getenv("OTHER_FILES_OF");
    static const char* const s_to = getenv("OTHER_FILES");
    const std::string asked = path;
    const std::string from = std::string(s_from ? s_from : "") + "/";
    return s_to && asked.rfind(from, 0) == 0 ? s_to + asked.substr(from.size() - 1) : asked;
}

template <typename Function>
Function* next(const char* name)
{
    return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

} // namespace

#define EXPORT extern "C" __attribute__((visibility("default")))

#define OPEN(NAME)                                                                                           \
    EXPORT int NAME(const char* path, int flags, ...)                                                        \
    {                                                                                                        \
        va_list rest;                                                                                        \
        va_start(rest, flags);                                                                               \
        const mode_t mode = flags & (O_CREAT | O_TMPFILE) ? va_arg(rest, mode_t) : 0;                        \
        va_end(rest);                                                                                        \
        return next<int(const char*, int, ...)>(#NAME)(elsewhere(path).c_str(), flags, mode);                \
    }
OPEN(open)
OPEN(open64)

/// What open() is in a program whose calls the compiler has checked.
EXPORT int __open_2(const char* path, int flags) // NOLINT(bugprone-reserved-identifier)
{
    return next<int(const char*, int)>("__open_2")(elsewhere(path).c_str(), flags);
}

#define STAT(NAME, RECORD)                                                                                   \
    EXPORT int NAME(const char* path, RECORD* record)                                                        \
    {                                                                                                        \
        return next<int(const char*, RECORD*)>(#NAME)(elsewhere(path).c_str(), record);                      \
    }
STAT(stat, struct stat)
STAT(stat64, struct stat64)
STAT(lstat, struct stat)
STAT(lstat64, struct stat64)

EXPORT int access(const char* path, int mode)
{
    return next<int(const char*, int)>("access")(elsewhere(path).c_str(), mode);
}

EXPORT FILE* fopen64(const char* path, const char* mode)
{
    return next<FILE*(const char*, const char*)>("fopen64")(elsewhere(path).c_str(), mode);
}

/// The C library opens catalogues by itself.
EXPORT char* bindtextdomain(const char* domain, const char* folder)
{
    return next<char*(const char*, const char*)>("bindtextdomain")(
        domain, folder ? elsewhere(folder).c_str() : nullptr);
}
