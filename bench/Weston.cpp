// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The program beside a plain popup as clients of a Wayland compositor, as far as their protocol tells.
#include "Commands.h"
#include "Figures.h"
#include "Peers.h"
#include "ProcessFigures.h"
#include "Trace.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <utility>

#include <unistd.h>

namespace bench {

namespace {

constexpr double kQuiet = 0.4; ///< nothing that moves pauses for so long, seconds
constexpr double kStands = 0.7; ///< longer than what moves when it comes up
constexpr double kGone = 0.3;
constexpr double kLongest = 5;
constexpr double kMilli = 1e3;
constexpr int kWarmUps = 1;

struct Client {
    Peer& peer;
    Figures reply {}, committed {}, taken {}, still {}, pictures {}, processor {}, faults {};
    double memory = 0;
    double wakeUps = 0;
    double wakeUpsHidden = 0;
};

void passTime(double seconds)
{
    const double end = now() + seconds;
    waitUntil([end] { return now() >= end; }, "time passes");
}

/// @param mustDraw  a busy machine may take longer than that while for the first
/// @return the pictures until there is none for a while
const std::vector<Picture>& settle(Trace& trace, bool mustDraw)
{
    const double limit = now() + kLongest;
    double quietUntil = now() + kQuiet;
    size_t count = 0;
    while (now() < limit && (now() < quietUntil || (mustDraw && count == 0))) {
        passTime(kQuiet / 10);
        if (const size_t present = trace.read().size(); std::exchange(count, present) != present)
            quietUntil = now() + kQuiet;
    }
    return trace.read();
}

void measurePicture(Client& one, Trace& trace, bool counts)
{
    trace.skip();
    const double start = traceTime();
    one.peer.sendShow();
    const auto& pictures = settle(trace, true);
    if (pictures.empty())
        fail(one.peer.title() + " draws nothing");
    if (counts) {
        one.committed.add(traceSpan(start, pictures.front().committed));
        one.still.add(traceSpan(start, pictures.back().committed));
        one.pictures.add(static_cast<double>(pictures.size()));
        if (pictures.front().taken >= 0)
            one.taken.add(traceSpan(start, pictures.front().taken));
    }
    one.peer.hide();
    settle(trace, false);
}

void measureCosts(Client& one)
{
    const ProcessFigures before = figuresOf(one.peer.process());
    one.reply.add(one.peer.show() * kMilli);
    passTime(kStands);
    one.peer.hide();
    passTime(kGone);
    const ProcessFigures after = figuresOf(one.peer.process());
    one.processor.add((after.processorSeconds - before.processorSeconds) * kMilli);
    one.faults.add(static_cast<double>(after.pageFaults - before.pageFaults));
}

/// Writing the trace costs time of its own: the rest is measured without.
void measureTrace(Client& one, int runs, const std::string& file)
{
    setenv("WAYLAND_DEBUG", "client", 1);
    one.peer.keepErrors(file);
    one.peer.start();
    Trace trace(file);
    for (int i = -kWarmUps; i < runs; ++i)
        measurePicture(one, trace, i >= 0);
    one.peer.stop();
    one.peer.keepErrors("");
    unsetenv("WAYLAND_DEBUG");
}

void measureRest(Client& one, int runs)
{
    const double seconds = std::min(5, runs);
    one.wakeUpsHidden = wakeUpsASecond(one.peer.process(), seconds);
    const double hidden = proportionalMiB(one.peer.process());
    one.peer.show();
    passTime(kStands);
    one.memory = std::max(hidden, proportionalMiB(one.peer.process()));
    one.wakeUps = wakeUpsASecond(one.peer.process(), seconds);
    one.peer.hide();
}

void printRow(const char* what, const std::vector<Client>& all, const Figures Client::*figures)
{
    printf("| %s |", what);
    for (const Client& one : all)
        printf(" %.1f (%.1f) |", (one.*figures).median(), (one.*figures).quantile(0.95));
    printf(" %.2f |\n", (all.back().*figures).median() / std::max(1e-9, (all.front().*figures).median()));
}

void printNumbers(const char* what, const std::vector<Client>& all, double Client::*number, bool compared)
{
    printf("| %s |", what);
    for (const Client& one : all)
        printf(" %.1f |", one.*number);
    if (compared)
        printf(" %.2f", all.back().*number / std::max(1e-9, all.front().*number));
    printf(" |\n");
}

void print(const std::vector<Client>& all, int runs)
{
    printf("Medians of %d (95th percentile)\n\n|", runs);
    for (const Client& one : all)
        printf(" | %s", one.peer.title().c_str());
    printf(" | times plain |\n| --- | --- | --- | --- |\n");
    printRow("request to reply, ms", all, &Client::reply);
    printRow("request to the first picture's commit, ms", all, &Client::committed);
    printRow("request to that picture's frame callback, ms", all, &Client::taken);
    printRow("request to the last picture's commit, ms", all, &Client::still);
    printRow("pictures until then", all, &Client::pictures);
    printRow("processor time of one popup shown and hidden, ms", all, &Client::processor);
    printRow("page faults of it, number", all, &Client::faults);
    printNumbers("memory (PSS), popup up or hidden, MiB", all, &Client::memory, true);
    printNumbers("wake-ups a second, popup up", all, &Client::wakeUps, false);
    printNumbers("wake-ups a second, hidden", all, &Client::wakeUpsHidden, false);
}

} // namespace

int weston(const Settings& settings)
{
    Bus bus;
    setenv("ELM_DISPLAY", "wl", 1);
    const auto plain = makePlain(bus, settings.binaries);
    TesselPeer tessel(bus, settings.binaries);
    std::vector<Client> all {{*plain}, {*tessel}};
    const std::string file =
        std::filesystem::temp_directory_path() / ("tessel-bench." + std::to_string(getpid()));
    for (Client& one : all) {
        measureTrace(one, settings.runs, file);
        one.peer.start();
    }
    std::filesystem::remove(file);
    for (int round = -kWarmUps; round < settings.runs; ++round) {
        for (Client& one : all) {
            if (round == 0)
                one.reply = one.processor = one.faults = {};
            measureCosts(one);
        }
    }
    for (Client& one : all)
        measureRest(one, settings.runs);
    print(all, settings.runs);
    return 0;
}

} // namespace bench
