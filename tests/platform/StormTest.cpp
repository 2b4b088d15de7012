#include "Processes.h"
#include "StoreFixture.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <filesystem>
#include <memory>
#include <random>
#include <unistd.h>

namespace {

constexpr int kWriters = 4;
constexpr int kWritesEach = 2500;

/// A text that tells whether it is whole: its length, then one letter as often.
std::string wholeText(int number)
{
    const int length = 1 + number * 37 % 8000;
    return std::to_string(length) + ':'
        + std::string(static_cast<size_t>(length), static_cast<char>('a' + number % 26));
}

bool isWhole(const std::string& value)
{
    const size_t colon = value.find(':');
    if (colon == std::string::npos || colon == 0 || colon > 4)
        return false;
    const std::string body = value.substr(colon + 1);
    return body.size() == std::stoul(value)
        && std::all_of(body.begin(), body.end(), [&](char c) { return c == body[0]; });
}

int writeMany(int writer)
{
    int failures = 0;
    for (int i = 0; i < kWritesEach; ++i)
        failures +=
            vconf_set_str(i % 2 ? "db/storm" : "memory/storm", wholeText(writer * kWritesEach + i).c_str())
            != VCONF_OK;
    return failures == 0 ? 0 : 1;
}

int writeForever()
{
    for (int i = 0;; ++i)
        vconf_set_str("db/killed", wholeText(i).c_str());
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
    Checker killed("db/killed");
    std::vector<std::unique_ptr<Child>> writers;
    for (int i = 0; i < kWriters; ++i)
        writers.push_back(std::make_unique<Child>([i] { return writeMany(i); }));

    std::mt19937 random(1);
    int kills = 0;
    const auto allEnded = [&] {
        return std::all_of(
            writers.begin(), writers.end(), [](auto& writer) { return writer->poll().has_value(); });
    };
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::minutes(2);
    while (!allEnded() && std::chrono::steady_clock::now() < deadline) {
        const Child victim(writeForever);
        const auto life = static_cast<double>(random() % 20000) / 1e6;
        runUntil([] { return false; }, life);
        victim.kill();
        ++kills;
    }
    for (const auto& writer : writers)
        EXPECT_EQ(writer->poll(), 0);
    EXPECT_TRUE(runUntil([&] { return db.isUpToDate() && memory.isUpToDate() && killed.isUpToDate(); }));
    EXPECT_EQ(db.bad + memory.bad + killed.bad, 0);
    EXPECT_GT(kills, 5);
    printf("%d kills, %d + %d + %d changes told\n", kills, db.watch.calls(), memory.watch.calls(),
        killed.watch.calls());
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
