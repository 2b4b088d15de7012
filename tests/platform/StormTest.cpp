#include "Processes.h"
#include "StoreFixture.h"

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace {

constexpr int kWriters = 4;
constexpr int kWritesEach = 1500;

/// A text that tells whether it is whole: its length, then one letter as often.
std::string wholeText(size_t length)
{
    return std::to_string(length) + ':' + std::string(length, static_cast<char>('a' + length % 26));
}

bool isWhole(const std::string& value)
{
    return value.find(':') < 5 && value == wholeText(std::strtoul(value.c_str(), nullptr, 10));
}

std::string someText(int number)
{
    return wholeText(1 + static_cast<size_t>(number) * 37 % 8000);
}

int writeMany(int writer)
{
    int failures = 0;
    for (int i = 0; i < kWritesEach; ++i) {
        const char* key = i % 2 ? "db/storm" : "memory/storm";
        failures += vconf_set_str(key, someText(writer * kWritesEach + i).c_str()) != VCONF_OK;
    }
    return failures == 0 ? 0 : 1;
}

/// Watches a key and checks each value that it is told of.
struct Checker {
    explicit Checker(const char* watchedKey)
        : key(watchedKey)
        , watch(watchedKey, [this] {
            last = text(key);
            bad += !last || !isWhole(*last);
        })
    {
    }
    bool isUpToDate() const { return last && last == text(key); }

    std::string key;
    std::optional<std::string> last;
    int bad = 0;
    Watch watch;
};

} // namespace

class AStorm : public StoreFixture { };

TEST_F(AStorm, OfWritersShowsNoHalfValueAndDeliversTheLast)
{
    Checker db("db/storm");
    Checker memory("memory/storm");
    std::vector<std::unique_ptr<Child>> writers;
    for (int i = 0; i < kWriters; ++i)
        writers.push_back(std::make_unique<Child>([i] { return writeMany(i); }));

    for (const auto& writer : writers) {
        EXPECT_TRUE(runUntil([&] { return writer->wait(WNOHANG).has_value(); }, 120));
        EXPECT_EQ(writer->wait(WNOHANG), 0);
    }
    EXPECT_TRUE(runUntil([&] { return db.isUpToDate() && memory.isUpToDate(); }));
    EXPECT_EQ(db.bad + memory.bad, 0);
}

TEST_F(AStorm, DuringASleepOfTheWatcherLosesNothing)
{
    const int writes = std::stoi(readFile("/proc/sys/fs/inotify/max_queued_events")) + 100;
    if (writes > 100000)
        GTEST_SKIP() << "the event queue holds too much to be filled here";
    const auto watch = tool({"watch", "memory/first", "memory/second", "memory/quiet"});
    ASSERT_TRUE(listens(*watch, "memory/first"));
    watch->signal(SIGSTOP);
    for (int i = 0; i < writes; ++i)
        vconf_set_int(i % 2 ? "memory/first" : "memory/second", i);
    vconf_set_str("memory/first", "last");
    vconf_set_str("memory/second", "last");
    vconf_set_str("memory/quiet", "last"); // its only event is dropped
    watch->signal(SIGCONT);
    for (const char* last : {"memory/first last", "memory/second last", "memory/quiet last"}) {
        EXPECT_TRUE(tv::waitUntil([&] {
            const auto& lines = watch->output();
            return std::find(lines.begin(), lines.end(), last) != lines.end();
        })) << last;
    }
}
