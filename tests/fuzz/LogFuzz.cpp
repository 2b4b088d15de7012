/// One message makes one line of the log, which commands nothing.
#include "Fuzz.h"
#include "dlog.h"

#include <fcntl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace {

/// A datagram socket stands for standard error, so that each write arrives as one piece.
struct Line {
    Line()
    {
        const int room = 1 << 20;
        fuzz::demand(socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0, ends) == 0, "a socket");
        setsockopt(ends[1], SOL_SOCKET, SO_SNDBUF, &room, sizeof room);
    }

    const int report = fcntl(STDERR_FILENO, F_DUPFD_CLOEXEC, 3);
    int ends[2] = {-1, -1};
};

template <typename Write>
std::string written(const Write& write)
{
    static const Line s_line;
    static char bytes[1 << 20];
    dup2(s_line.ends[1], STDERR_FILENO);
    const int result = write();
    dup2(s_line.report, STDERR_FILENO);
    const ssize_t size = recv(s_line.ends[0], bytes, sizeof bytes, MSG_DONTWAIT);
    fuzz::demand(size > 0 && size == result, "a line is written");
    fuzz::demand(recv(s_line.ends[0], bytes + size, 1, MSG_DONTWAIT) < 0, "and nothing else");
    return {bytes, static_cast<size_t>(size)};
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
