// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// One message makes one line of the log, which commands nothing.
#include "Fuzz.h"
#include "dlog.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// @return what is written to standard error, for which a file stands
template <typename Write>
std::string written(const Write& write)
{
    static const int s_report = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
    static const int s_file = memfd_create("log", MFD_CLOEXEC);
    lseek(s_file, 0, SEEK_SET);
    fuzz::demand(ftruncate(s_file, 0) == 0, "room");
    dup2(s_file, STDERR_FILENO);
    const int result = write();
    dup2(s_report, STDERR_FILENO);
    static char s_bytes[1 << 20];
    const ssize_t size = pread(s_file, s_bytes, sizeof s_bytes, 0);
    fuzz::demand(size > 0 && size == result, "a line is written, and nothing else");
    return {s_bytes, static_cast<size_t>(size)};
}

bool isControl(std::string_view line, size_t i)
{
    const auto byte = [&](size_t k) { return static_cast<unsigned char>(k < line.size() ? line[k] : 0); };
    return byte(i) < 0x20 || byte(i) == 0x7F || (byte(i) == 0xC2 && byte(i + 1) < 0xA0)
        || (byte(i) == 0xE2 && byte(i + 1) == 0x80 && (byte(i + 2) == 0xA8 || byte(i + 2) == 0xA9));
}

void check(const std::string& line, const std::string& begin, const std::string& end)
{
    fuzz::demand(line.size() >= begin.size() + end.size() && line.compare(0, begin.size(), begin) == 0
            && line.compare(line.size() - end.size(), end.size(), end) == 0,
        "the ends are the program's", line);
    for (size_t i = 0; i < line.size() - end.size(); ++i)
        fuzz::demand(!isControl(line, i), "no control characters", line);
    fuzz::demand(fuzz::isUtf8(line), "readable by everybody", line);
}

} // namespace

void fuzz::tryInput(Input& input)
{
    const std::string first = input.text();
    const std::string second = input.text();
    const char* one = first.c_str();
    const char* other = second.c_str();
    check(written([=] { return dlog_print(DLOG_INFO, "tag", "%s", one); }), "I/tag: ", "\n");
    check(written([=] { return dlog_print(DLOG_ERROR, "tag", "[%s] x\n\n", one); }), "E/tag: [", "] x\n\n\n");
    check(written([=] { return dlog_print(DLOG_DEBUG, other, "%s%s\n", one, other); }), "D/", "\n\n");
}
