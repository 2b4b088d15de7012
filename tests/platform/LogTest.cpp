#include "Processes.h"

#include "dlog.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
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

std::string recordAt(int records)
{
    char bytes[4096] = {};
    const ssize_t count = recv(records, bytes, sizeof bytes - 1, MSG_DONTWAIT);
    return {bytes, count > 0 ? static_cast<size_t>(count) : 0};
}

bool takesEndsAlong(int records)
{
    dlog_print(DLOG_WARN, "the-tag", "%s\n", "two\nlines");
    // The journal's form of a field that may hold line ends: its length in eight bytes, then its bytes.
    return recordAt(records)
        == "PRIORITY=4\nSYSLOG_IDENTIFIER=the-tag\nMESSAGE\n" + std::string("\x0B\0\0\0\0\0\0\0", 8)
        + "two\\nlines\n\n";
}

bool takesLongOnesAsFiles(int records)
{
    const std::string longText(4 << 20, 'x');
    dlog_print(DLOG_ERROR, "the-tag", "%s", longText.c_str());
    alignas(cmsghdr) char control[CMSG_SPACE(sizeof(int))] = {};
    msghdr message = {};
    message.msg_control = control;
    message.msg_controllen = sizeof control;
    if (recvmsg(records, &message, MSG_DONTWAIT) != 0 || !CMSG_FIRSTHDR(&message))
        return false;
    int file = -1;
    std::memcpy(&file, CMSG_DATA(CMSG_FIRSTHDR(&message)), sizeof file);
    std::string text(longText.size() + 1000, '\0');
    const ssize_t size = pread(file, text.data(), text.size(), 0);
    text.resize(size > 0 ? static_cast<size_t>(size) : 0);
    return text == "PRIORITY=3\nSYSLOG_IDENTIFIER=the-tag\nMESSAGE=" + longText + '\n';
}

/// With nobody who takes the records off the socket.
bool waitsForNobody(int records)
{
    alarm(10); // a wait would last for good
    int taken = 0;
    while (dlog_print(DLOG_INFO, "the-tag", "%d", taken) > 0)
        ++taken;
    if (taken == 0 || dlog_print(DLOG_INFO, "the-tag", "lost") != -EAGAIN)
        return false;
    while (!recordAt(records).empty()) { }
    dlog_print(DLOG_INFO, "the-tag", "again");
    return recordAt(records).find("MESSAGE=2 log lines were lost") != std::string::npos
        && recordAt(records).find("MESSAGE=again") != std::string::npos;
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
    const bool isRight = takesEndsAlong(records) && takesLongOnesAsFiles(records) && waitsForNobody(records);
    return isRight ? kRight : kWrong;
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
    EXPECT_EQ(pieces.next(), "I/: in\\nside\n\n");
    EXPECT_EQ(pieces.next(), "W/tag: " + longText + '\n');
    EXPECT_EQ(pieces.next(), "E/tag: \n");
    EXPECT_EQ(pieces.next(), "");
}

TEST(ALogLine, IsForgedByNothingInItsMessage)
{
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
    const Pieces pieces;
    for (const auto& [message, line] : cases) {
        dlog_print(DLOG_INFO, "tag", "%s", message);
        EXPECT_EQ(pieces.next(), std::string("I/tag: ") + line + '\n');
        dlog_print(DLOG_INFO, "tag", "[%s]\n\n", message);
        EXPECT_EQ(pieces.next(), std::string("I/tag: [") + line + "]\n\n\n");
    }
    dlog_print(DLOG_INFO, "tag", "a%cb", '\0');
    EXPECT_EQ(pieces.next(), "I/tag: a\\x00b\n");
}

/// Standard error is a small pipe, or a pair of sockets, that is read on demand while this lives.
class Reader {
public:
    explicit Reader(bool isSocket = false)
        : m_saved(dup(STDERR_FILENO))
    {
        EXPECT_EQ(isSocket ? socketpair(AF_UNIX, SOCK_STREAM, 0, m_ends) : pipe(m_ends), 0);
        if (!isSocket)
            fcntl(m_ends[1], F_SETPIPE_SZ, 4096);
        dup2(m_ends[1], STDERR_FILENO);
        close(m_ends[1]);
        fcntl(m_ends[0], F_SETFL, O_NONBLOCK);
    }
    ~Reader()
    {
        dup2(m_saved, STDERR_FILENO);
        close(m_saved);
        close(m_ends[0]);
    }
    std::string taken() const
    {
        std::string all;
        char bytes[4096];
        for (ssize_t size = 0; (size = read(m_ends[0], bytes, sizeof bytes)) > 0;)
            all.append(bytes, static_cast<size_t>(size));
        return all;
    }

private:
    int m_saved;
    int m_ends[2] = {-1, -1};
};

/// @return how many lines were dropped once the reader has stopped for so long
int fill(const std::string& text, int lines, std::string& expected)
{
    int lost = 0;
    for (int i = 0; i < lines; ++i) {
        const std::string line = std::to_string(i) + text;
        if (dlog_print(DLOG_INFO, "tag", "%s", line.c_str()) == -EAGAIN)
            ++lost;
        else
            expected += "I/tag: " + line + '\n';
    }
    return lost;
}

/// @param text  of each line @return whether nothing but whole lines came, and the number of the others
int losesLinesOnly(bool isSocket, const std::string& text, int lines)
{
    alarm(20); // a wait would last for good
    const Reader reader(isSocket);
    const int flags = fcntl(STDERR_FILENO, F_GETFL);
    for (int round = 0; round < 2; ++round) {
        std::string expected;
        const int lost = fill(text, lines, expected);
        std::string taken = reader.taken();
        dlog_print(DLOG_ERROR, "tag", "again");
        taken += reader.taken();
        const std::string note =
            "W/tag: " + std::to_string(lost) + " log lines were lost: nobody took them\nE/tag: again\n";
        if (lost == 0 || taken.substr(0, expected.size()) != expected
            || taken.substr(expected.size(), note.size()) != note)
            return 1;
    }
    return fcntl(STDERR_FILENO, F_GETFL) == flags ? 0 : 2;
}

TEST(ALogLine, IsDroppedAndCountedWhereNobodyTakesIt)
{
    const std::string longText(3000, 'x');
    EXPECT_EQ(Child([&] { return losesLinesOnly(false, "short", 1000); }).wait(), 0);
    EXPECT_EQ(Child([&] { return losesLinesOnly(false, longText, 5); }).wait(), 0);
    EXPECT_EQ(Child([&] { return losesLinesOnly(true, longText, 1000); }).wait(), 0);
    Child withoutDescriptors([&] {
        const Reader reader;
        const rlimit none = {3, 3};
        setrlimit(RLIMIT_NOFILE, &none);
        alarm(10);
        std::string expected;
        const int lost = fill(longText, 5, expected);
        return lost > 0 && reader.taken() == expected ? 0 : 1;
    });
    EXPECT_EQ(withoutDescriptors.wait(), 0) << "the pipe cannot be opened once more";
}

TEST(ALogLine, LongerThanAPipeIsFinishedBeforeTheNext)
{
    Child child([] {
        alarm(20);
        const Reader reader;
        const std::string longText(20000, 'y');
        if (dlog_print(DLOG_INFO, "tag", "%s", longText.c_str()) <= 0
            || dlog_print(DLOG_INFO, "tag", "lost") != -EAGAIN)
            return 1;
        std::string taken;
        for (int i = 0; i < 10; ++i) {
            taken += reader.taken();
            dlog_print(DLOG_INFO, "tag", "next");
        }
        const std::string whole = "I/tag: " + longText + "\nW/tag: ";
        return taken.substr(0, whole.size()) == whole ? 0 : 2;
    });
    EXPECT_EQ(child.wait(), 0);
}

TEST(ALogLine, StaysWholeBesideThoseOfOtherProcesses)
{
    int ends[2] = {-1, -1};
    ASSERT_EQ(pipe(ends), 0);
    fcntl(ends[1], F_SETPIPE_SZ, 4096);
    const auto writing = [&](char letter) {
        return [=] {
            dup2(ends[1], STDERR_FILENO);
            const std::string text(700, letter);
            for (int i = 0; i < 2000; ++i)
                dlog_print(DLOG_INFO, "tag", "%s", text.c_str());
            return 0;
        };
    };
    Child one(writing('a'));
    Child other(writing('b'));
    close(ends[1]);
    FILE* input = fdopen(ends[0], "r");
    char line[2000];
    int lines = 0;
    while (fgets(line, sizeof line, input)) {
        const std::string text = line;
        const bool isWhole = text == "I/tag: " + std::string(700, 'a') + '\n'
            || text == "I/tag: " + std::string(700, 'b') + '\n'
            || (text.rfind("W/tag: ", 0) == 0 && text.find("were lost: nobody took them\n") != text.npos);
        ASSERT_TRUE(isWhole) << text;
        ++lines;
    }
    fclose(input);
    EXPECT_GT(lines, 100);
    EXPECT_EQ(one.wait() + other.wait(), 0);
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
