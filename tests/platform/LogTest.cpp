#include "Processes.h"

#include "dlog.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>

namespace {

/// What standard error is while this lives; read on demand.
class StandardError {
public:
    enum Kind {
        Pieces, ///< each write arrives as one
        Stream,
        SmallPipe,
    };
    explicit StandardError(Kind kind)
        : m_saved(dup(STDERR_FILENO))
    {
        const int type = kind == Pieces ? SOCK_DGRAM : SOCK_STREAM;
        const int room = 1 << 20;
        EXPECT_EQ(kind == SmallPipe ? pipe(m_ends) : socketpair(AF_UNIX, type, 0, m_ends), 0);
        if (kind == SmallPipe)
            fcntl(m_ends[1], F_SETPIPE_SZ, 4096);
        else if (kind == Pieces)
            setsockopt(m_ends[1], SOL_SOCKET, SO_SNDBUF, &room, sizeof room);
        dup2(m_ends[1], STDERR_FILENO);
        close(m_ends[1]);
        fcntl(m_ends[0], F_SETFL, O_NONBLOCK);
    }
    StandardError(const StandardError&) = delete;
    StandardError& operator=(const StandardError&) = delete;
    ~StandardError()
    {
        dup2(m_saved, STDERR_FILENO);
        close(m_saved);
        close(m_ends[0]);
    }
    /// @return the next piece, or all that there is
    std::string next() const
    {
        std::string bytes(1 << 20, '\0');
        const ssize_t size = read(m_ends[0], bytes.data(), bytes.size());
        bytes.resize(size > 0 ? static_cast<size_t>(size) : 0);
        return bytes;
    }

private:
    int m_saved;
    int m_ends[2] = {-1, -1};
};

int bindAt(int type, sockaddr_un& address, const char* path)
{
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
    text.resize(static_cast<size_t>(std::max<ssize_t>(pread(file, text.data(), text.size(), 0), 0)));
    return text == "PRIORITY=3\nSYSLOG_IDENTIFIER=the-tag\nMESSAGE=" + longText + '\n';
}

/// With nobody who takes the records off the socket.
bool waitsForNobody(int records)
{
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
    alarm(20); // a wait would last for good
    if (unshare(CLONE_NEWNS) != 0 && unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
        return kNotPossible;
    if (mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0
        || mount("tmpfs", "/run", "tmpfs", 0, nullptr) != 0)
        return kNotPossible;
    mkdir("/run/systemd", 0755);
    mkdir("/run/systemd/journal", 0755);
    sockaddr_un address = {};
    const int records = bindAt(SOCK_DGRAM, address, "/run/systemd/journal/socket");
    const int stream = bindAt(SOCK_STREAM, address, "/run/systemd/journal/stdout");
    const int client = socket(AF_UNIX, SOCK_STREAM, 0);
    if (listen(stream, 1) != 0 || connect(client, reinterpret_cast<sockaddr*>(&address), sizeof address) != 0)
        return kWrong;
    dup2(client, STDERR_FILENO);
    const bool isRight = takesEndsAlong(records) && takesLongOnesAsFiles(records) && waitsForNobody(records);
    return isRight ? kRight : kWrong;
}

/// @return how many lines were dropped; the others are added to @p expected
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

/// @return 0 when nothing but whole lines came, and the number of the others, twice
int losesLinesOnly(StandardError::Kind kind, const std::string& text, int lines)
{
    alarm(20);
    const StandardError reader(kind);
    const int flags = fcntl(STDERR_FILENO, F_GETFL);
    for (int round = 0; round < 2; ++round) {
        std::string expected;
        const int lost = fill(text, lines, expected);
        std::string taken = reader.next();
        dlog_print(DLOG_ERROR, "tag", "again");
        taken += reader.next();
        expected +=
            "W/tag: " + std::to_string(lost) + " log lines were lost: nobody took them\nE/tag: again\n";
        if (lost == 0 || taken.substr(0, expected.size()) != expected)
            return 1;
    }
    return fcntl(STDERR_FILENO, F_GETFL) == flags ? 0 : 2;
}

int losesLinesWithoutDescriptors(const std::string& text)
{
    alarm(20);
    const StandardError reader(StandardError::SmallPipe);
    const rlimit none = {3, 3}; // the pipe cannot be opened once more
    setrlimit(RLIMIT_NOFILE, &none);
    std::string expected;
    return fill(text, 5, expected) > 0 && reader.next() == expected ? 0 : 1;
}

int finishesAPartFirst()
{
    alarm(20);
    const StandardError reader(StandardError::SmallPipe);
    const std::string longText(20000, 'y');
    if (dlog_print(DLOG_INFO, "tag", "%s", longText.c_str()) <= 0
        || dlog_print(DLOG_INFO, "tag", "lost") != -EAGAIN)
        return 1;
    std::string taken;
    for (int i = 0; i < 10; ++i) {
        taken += reader.next();
        dlog_print(DLOG_INFO, "tag", "next");
    }
    const std::string whole = "I/tag: " + longText + "\nW/tag: ";
    return taken.substr(0, whole.size()) == whole ? 0 : 2;
}

int losesALineWithoutAReader()
{
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0)
        return 1;
    dup2(ends[1], STDERR_FILENO);
    close(ends[0]);
    return dlog_print(DLOG_INFO, "tag", "lost") == -EPIPE ? 0 : 2;
}

} // namespace

TEST(ALogLine, IsWrittenInOnePieceAsItIs)
{
    const StandardError pieces(StandardError::Pieces);
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
    const StandardError pieces(StandardError::Pieces);
    for (const auto& [message, line] : cases) {
        dlog_print(DLOG_INFO, "tag", "[%s]\n\n", message);
        EXPECT_EQ(pieces.next(), std::string("I/tag: [") + line + "]\n\n\n");
    }
    dlog_print(DLOG_INFO, "tag", "%s", "end\n");
    EXPECT_EQ(pieces.next(), "I/tag: end\\n\n") << "no line end of the format's";
    dlog_print(DLOG_INFO, "tag", "a%cb", '\0');
    EXPECT_EQ(pieces.next(), "I/tag: a\\x00b\n");
}

TEST(ALogLine, IsDroppedAndCountedWhereNobodyTakesIt)
{
    const std::string longText(3000, 'x');
    using Kind = StandardError::Kind;
    EXPECT_EQ(Child([&] { return losesLinesOnly(Kind::SmallPipe, "short", 1000); }).wait(), 0);
    EXPECT_EQ(Child([&] { return losesLinesOnly(Kind::SmallPipe, longText, 5); }).wait(), 0);
    EXPECT_EQ(Child([&] { return losesLinesOnly(Kind::Stream, longText, 1000); }).wait(), 0);
    EXPECT_EQ(Child([&] { return losesLinesWithoutDescriptors(longText); }).wait(), 0);
    EXPECT_EQ(Child(finishesAPartFirst).wait(), 0);
    EXPECT_EQ(Child(losesALineWithoutAReader).wait(), 0);
}

TEST(ALogLine, GoesToTheJournalWhenStandardErrorIsTheJournals)
{
    const auto result = Child(logToJournal).wait();
    if (result == kNotPossible)
        GTEST_SKIP() << "no mount namespace may be made here";
    EXPECT_EQ(result, kRight);
}
