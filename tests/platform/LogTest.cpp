// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Processes.h"
#include "StoreFixture.h"

#include "dlog.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/un.h>

namespace {

enum Kind {
    Pieces, ///< each write arrives as one
    Stream,
    SmallPipe,
};

/// What standard error is from now on, for a part that runs apart().
class Reader {
public:
    explicit Reader(Kind kind)
    {
        const int type = kind == Pieces ? SOCK_DGRAM : SOCK_STREAM;
        const int room = 1 << 20;
        int ends[2] = {-1, -1};
        EXPECT_EQ(kind == SmallPipe ? pipe(ends) : socketpair(AF_UNIX, type, 0, ends), 0);
        fcntl(ends[1], F_SETPIPE_SZ, 4096);
        if (kind == Pieces)
            setsockopt(ends[1], SOL_SOCKET, SO_SNDBUF, &room, sizeof room);
        dup2(ends[1], STDERR_FILENO);
        close(ends[1]);
        fcntl(ends[0], F_SETFL, O_NONBLOCK);
        m_end = ends[0];
    }
    /// @return the next piece, or all that there is
    std::string next() const
    {
        std::string bytes(1 << 20, '\0');
        const ssize_t size = read(m_end, bytes.data(), bytes.size());
        bytes.resize(size > 0 ? static_cast<size_t>(size) : 0);
        return bytes;
    }
    void end() const { close(m_end); }

private:
    int m_end;
};

/// Writes lines until some are dropped, takes what there is, and writes on until one gets through.
void expectWholeLinesAndTheNumberOfTheOthers(const Reader& reader, const std::string& text, int lines)
{
    std::string expected;
    int lost = 0;
    for (int i = 0; i < lines; ++i) {
        const std::string line = std::to_string(i) + text;
        if (dlog_print(DLOG_INFO, "tag", "%s", line.c_str()) == -EAGAIN)
            ++lost;
        else
            expected += "I/tag: " + line + '\n';
    }
    EXPECT_GT(lost, 0);
    std::string taken = reader.next();
    for (; dlog_print(DLOG_ERROR, "tag", "again") == -EAGAIN && lost < 10000; ++lost)
        taken += reader.next();
    for (std::string more = reader.next(); !more.empty(); more = reader.next())
        taken += more;
    expected += "W/tag: " + std::to_string(lost) + " log lines were lost: nobody took them\nE/tag: again\n";
    EXPECT_TRUE(taken == expected) << taken.substr(0, 500) << "\ninstead of\n" << expected.substr(0, 500);
}

int bindAt(int type, sockaddr_un& address, const char* path)
{
    address.sun_family = AF_UNIX;
    std::strncpy(address.sun_path, path, sizeof address.sun_path - 1);
    const int descriptor = socket(AF_UNIX, type, 0);
    EXPECT_EQ(bind(descriptor, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    return descriptor;
}

/// Plays the journal, which standard error then leads to. @return where its records arrive
int becomeJournal()
{
    enterBox();
    EXPECT_EQ(mount("tmpfs", "/run", "tmpfs", 0, nullptr), 0);
    std::filesystem::create_directories("/run/systemd/journal");
    sockaddr_un address = {};
    const int records = bindAt(SOCK_DGRAM, address, "/run/systemd/journal/socket");
    const int stream = bindAt(SOCK_STREAM, address, "/run/systemd/journal/stdout");
    EXPECT_EQ(listen(stream, 1), 0);
    const int client = socket(AF_UNIX, SOCK_STREAM, 0);
    EXPECT_EQ(connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address), 0);
    dup2(client, STDERR_FILENO);
    return records;
}

std::string recordAt(int records)
{
    char bytes[4096] = {};
    const ssize_t count = recv(records, bytes, sizeof bytes, MSG_DONTWAIT);
    return {bytes, count > 0 ? static_cast<size_t>(count) : 0};
}

/// @return what is in the file that a record consists of
std::string fileAt(int records)
{
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
    msghdr message = {};
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    if (recvmsg(records, &message, MSG_DONTWAIT) != 0 || !CMSG_FIRSTHDR(&message))
        return {};
    int file = -1;
    std::memcpy(&file, CMSG_DATA(CMSG_FIRSTHDR(&message)), sizeof file);
    return readFile("/proc/self/fd/" + std::to_string(file));
}

} // namespace

TEST(ALogLine, IsWrittenInOnePieceAndForgedByNothingInItsMessage)
{
    apart([] {
        const Reader pieces(Pieces);
        const std::string longText(100000, 'x');
        errno = ENOENT;
        EXPECT_EQ(dlog_print(DLOG_DEBUG, "tag", "%s=%d", "value", 5), 15);
        EXPECT_EQ(errno, ENOENT);
        dlog_print(DLOG_INFO, nullptr, "in\nside\n");
        dlog_print(DLOG_WARN, "tag", "%s", longText.c_str());
        EXPECT_EQ(dlog_print(DLOG_INFO, "tag", nullptr), -EINVAL);
        EXPECT_EQ(dlog_print(static_cast<log_priority>(7), "tag", "x"), -EINVAL);
        EXPECT_EQ(pieces.next(), "D/tag: value=5\n");
        EXPECT_EQ(pieces.next(), "I/: in\\nside\n\n");
        EXPECT_EQ(pieces.next(), "W/tag: " + longText + '\n');
        EXPECT_EQ(pieces.next(), "");
        const std::pair<const char*, const char*> cases[] = {
            {"\nE/tessel-ui: forged", "\\nE/tessel-ui: forged"},
            {"end\n\n", "end\\n\\n"},
            {"\x1b[2J\x07\t\r\x7f\x01", "\\x1b[2J\\x07\\t\\r\\x7f\\x01"},
            {"\u0080\u0085\u009b\u00a0", "\\u0080\\u0085\\u009b\u00a0"},
            {"\u2027\u2028\u2029\u202a", "\u2027\\u2028\\u2029\u202a"},
            {"\xff\x9b\xe2\x80", "\\xff\\x9b\\xe2\\x80"},
            {"\xc0\x8a\xe0\x80\x8a\xed\xa0\x80\xf4\x90\x80\x80",
                "\\xc0\\x8a\\xe0\\x80\\x8a\\xed\\xa0\\x80\\xf4\\x90\\x80\\x80"},
            {"Gr\u00fc\u00dfe \u6f22 \U0001f600 \\n", "Gr\u00fc\u00dfe \u6f22 \U0001f600 \\n"},
        };
        for (const auto& [message, line] : cases) {
            dlog_print(DLOG_INFO, "tag", "[%s]\n\n", message);
            EXPECT_EQ(pieces.next(), std::string("I/tag: [") + line + "]\n\n\n");
        }
        dlog_print(DLOG_INFO, "tag", "%s", "end\n");
        EXPECT_EQ(pieces.next(), "I/tag: end\\n\n") << "no line end of the format's";
        dlog_print(DLOG_INFO, "tag", "a%cb", '\0');
        EXPECT_EQ(pieces.next(), "I/tag: a\\x00b\n");
    });
}

TEST(ALogLine, IsDroppedAndCountedWhereNobodyTakesIt)
{
    const struct {
        Kind kind;
        size_t length;
        int lines;
        bool mayOpenIt = true; ///< once more, to write there without waiting
    } cases[] = {
        {SmallPipe, 5, 1000},
        {SmallPipe, 3000, 5},
        {SmallPipe, 3000, 5, false},
        {SmallPipe, 20000, 2}, // a part of the first is taken, and has to be finished
        {Stream, 3000, 1000},
    };
    for (const auto& one : cases) {
        apart([&] {
            const Reader reader(one.kind);
            const int flags = fcntl(STDERR_FILENO, F_GETFL);
            const rlimit none = {3, 3};
            if (!one.mayOpenIt)
                setrlimit(RLIMIT_NOFILE, &none);
            for (int round = 0; round < 2; ++round)
                expectWholeLinesAndTheNumberOfTheOthers(reader, std::string(one.length, 'x'), one.lines);
            EXPECT_EQ(fcntl(STDERR_FILENO, F_GETFL), flags) << "which other processes share";
            reader.end();
            EXPECT_EQ(dlog_print(DLOG_INFO, "tag", "lost"), -EPIPE);
        });
    }
}

TEST(ALogLine, GoesToTheJournalWhenStandardErrorIsTheJournals)
{
    if (!allowsBoxes())
        GTEST_SKIP() << "no mounts of a test's own on this machine";
    apart([] {
        const int records = becomeJournal();
        dlog_print(DLOG_WARN, "the-tag", "%s\n", "two\nlines");
        // The journal's form of a field that may hold line ends: its length in eight bytes, then its bytes.
        EXPECT_EQ(recordAt(records),
            "PRIORITY=4\nSYSLOG_IDENTIFIER=the-tag\nMESSAGE\n" + std::string("\x0B\0\0\0\0\0\0\0", 8)
                + "two\\nlines\n\n");
        const std::string longText(4 << 20, 'x');
        dlog_print(DLOG_ERROR, "the-tag", "%s", longText.c_str());
        EXPECT_TRUE(fileAt(records) == "PRIORITY=3\nSYSLOG_IDENTIFIER=the-tag\nMESSAGE=" + longText + '\n');

        // Nobody takes the records off the socket.
        while (dlog_print(DLOG_INFO, "the-tag", "taken") > 0) { }
        EXPECT_EQ(dlog_print(DLOG_INFO, "the-tag", "lost"), -EAGAIN);
        while (!recordAt(records).empty()) { }
        dlog_print(DLOG_INFO, "the-tag", "again");
        EXPECT_NE(recordAt(records).find("MESSAGE=2 log lines were lost"), std::string::npos);
        EXPECT_NE(recordAt(records).find("MESSAGE=again"), std::string::npos);
    });
}
