#include "Processes.h"

#include "dlog.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

namespace {

/// Standard error is a datagram socket while this lives: each write() arrives as one piece.
class Pieces {
public:
    Pieces()
        : m_saved(dup(STDERR_FILENO))
    {
        EXPECT_EQ(socketpair(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0, m_ends), 0);
        const int room = 1 << 20;
        setsockopt(m_ends[1], SOL_SOCKET, SO_SNDBUF, &room, sizeof room);
        dup2(m_ends[1], STDERR_FILENO);
    }
    ~Pieces()
    {
        dup2(m_saved, STDERR_FILENO);
        close(m_saved);
        close(m_ends[0]);
        close(m_ends[1]);
    }
    std::string next() const
    {
        std::string piece(1 << 20, '\0');
        const ssize_t size = recv(m_ends[0], piece.data(), piece.size(), MSG_DONTWAIT);
        piece.resize(size > 0 ? static_cast<size_t>(size) : 0);
        return piece;
    }

private:
    int m_saved;
    int m_ends[2] = {-1, -1};
};

int bindAt(int type, const char* path)
{
    sockaddr_un address = {};
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
    const int descriptor = socket(AF_UNIX, type, 0);
    return bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address) == 0 ? descriptor : -1;
}

enum JournalResult { kRight, kWrong, kNotPossible };

/// In a view of the file system of its own, plays the journal and logs to it.
int logToJournal()
{
    if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return kNotPossible;
    if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
        || mount("tmpfs", "/run", "tmpfs", 0, nullptr) != 0)
        return kNotPossible;
    mkdir("/run/systemd", 0755);
    mkdir("/run/systemd/journal", 0755);
    const int stream = bindAt(SOCK_STREAM, "/run/systemd/journal/stdout");
    const int records = bindAt(SOCK_DGRAM, "/run/systemd/journal/socket");
    const int client = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address = {};
    socklen_t size = sizeof address;
    getsockname(stream, reinterpret_cast<sockaddr*>(&address), &size);
    if (listen(stream, 1) != 0 || connect(client, reinterpret_cast<sockaddr*>(&address), size) != 0)
        return kWrong;
    dup2(client, STDERR_FILENO);
    dlog_print(DLOG_WARN, "the-tag", "%s", "two\nlines");
    char bytes[4096] = {};
    const ssize_t count = recv(records, bytes, sizeof bytes - 1, MSG_DONTWAIT);
    const std::string record(bytes, count > 0 ? static_cast<size_t>(count) : 0);
    // The journal's form of a field that may hold line ends: its length in eight bytes, then its bytes.
    const std::string expected = "PRIORITY=4\nSYSLOG_IDENTIFIER=the-tag\nMESSAGE\n"
        + std::string("\x09\0\0\0\0\0\0\0", 8) + "two\nlines\n";
    if (record != expected)
        return kWrong;
    return kRight;
}

} // namespace

TEST(ALogLine, IsWrittenInOnePieceAsItIs)
{
    const Pieces pieces;
    const std::string longText(100000, 'x');
    errno = ENOENT;
    EXPECT_EQ(dlog_print(DLOG_DEBUG, "tag", "%s=%d", "value", 5), 15);
    EXPECT_EQ(errno, ENOENT);
    dlog_print(DLOG_INFO, nullptr, "in\nside\n");
    dlog_print(DLOG_WARN, "tag", "%s", longText.c_str());
    dlog_print(DLOG_ERROR, "tag", "%s", "");
    EXPECT_EQ(dlog_print(DLOG_INFO, "tag", nullptr), -EINVAL);
    EXPECT_EQ(dlog_print(static_cast<log_priority>(7), "tag", "x"), -EINVAL);
    EXPECT_EQ(pieces.next(), "D/tag: value=5\n");
    EXPECT_EQ(pieces.next(), "I/: in\nside\n\n");
    EXPECT_EQ(pieces.next(), "W/tag: " + longText + '\n');
    EXPECT_EQ(pieces.next(), "E/tag: \n");
    EXPECT_EQ(pieces.next(), "");
}

TEST(ALogLine, WithoutAReaderCostsOnlyTheLine)
{
    Child child([] {
        int ends[2] = {-1, -1};
        if (pipe(ends) != 0)
            return 1;
        dup2(ends[1], STDERR_FILENO);
        close(ends[0]);
        return dlog_print(DLOG_INFO, "tag", "lost") == -EPIPE ? 0 : 2;
    });
    EXPECT_EQ(child.wait(), 0);
}

TEST(ALogLine, GoesToTheJournalWhenStandardErrorIsTheJournals)
{
    Child child(logToJournal);
    const int result = child.wait();
    if (result == kNotPossible)
        GTEST_SKIP() << "no mount namespace may be made here";
    EXPECT_EQ(result, kRight);
}
