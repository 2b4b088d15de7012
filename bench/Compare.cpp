// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The program beside a plain popup and a notification daemon, in turns on one display.
#include "Commands.h"
#include "Figures.h"
#include "Peers.h"
#include "ProcessFigures.h"
#include "Screen.h"

#include <cstdio>

namespace bench {

namespace {

constexpr double kQuiet = 0.35; ///< nothing that moves pauses for so long, seconds
constexpr double kGone = 0.25;
constexpr int kWarmUps = 3;
constexpr double kMilli = 1e3;

struct Contestant {
    Peer& peer;
    Window window = 0;
    std::vector<int> probed {}; ///< rows of the window
    std::vector<unsigned> complete {}; ///< their pixels when all is drawn
    Figures launch {}, launchProcessor {}, launchWaits {};
    Figures reply {}, picture {}, processor {}, faults {};
    double memory = 0;
    double wakeUps = 0; ///< a second, with the popup up
    double wakeUpsHidden = 0;
};

void measureLaunch(Contestant& one, int runs)
{
    for (int i = 0; i < runs; ++i) {
        one.launch.add(one.peer.start() * kMilli);
        const ProcessFigures launched = figuresOf(one.peer.process());
        one.launchProcessor.add(launched.processorSeconds * kMilli);
        one.launchWaits.add(static_cast<double>(launched.wakeUps));
        one.peer.stop();
    }
    one.peer.start();
}

void warmUp(Contestant& one, Screen& screen)
{
    for (int i = 0; i < kWarmUps; ++i) {
        one.peer.show();
        screen.observe(1.0);
        one.window = screen.windowOf(one.peer.process(), one.peer.windowClass());
        if (i == kWarmUps - 1) {
            one.probed = screen.busiestRows(one.window);
            one.complete = screen.rows(one.window, one.probed);
        }
        one.peer.hide();
        screen.observe(kGone);
    }
    if (one.complete.empty())
        fail(one.peer.title() + " shows no window");
}

void measurePicture(Contestant& one, Screen& screen)
{
    const double start = now();
    one.peer.sendShow();
    bool isComplete = false;
    const auto drawn = screen.observe(3.0, [&](const Drawn&) {
        isComplete = screen.rows(one.window, one.probed) == one.complete;
        return isComplete;
    });
    if (isComplete)
        one.picture.add((drawn.back().time - start) * kMilli);
    screen.settle(kQuiet);
    one.peer.hide();
    screen.observe(kGone);
}

void measureRound(Contestant& one, Screen& screen)
{
    screen.watch(one.window);
    const ProcessFigures before = figuresOf(one.peer.process());
    one.reply.add(one.peer.show() * kMilli);
    screen.settle(kQuiet);
    one.peer.hide();
    screen.observe(kGone);
    const ProcessFigures after = figuresOf(one.peer.process());
    one.processor.add((after.processorSeconds - before.processorSeconds) * kMilli);
    one.faults.add(static_cast<double>(after.pageFaults - before.pageFaults));
    measurePicture(one, screen);
}

void measureRest(Contestant& one, Screen& screen, int runs)
{
    const double seconds = std::min(5, runs);
    one.wakeUpsHidden = wakeUpsASecond(one.peer.process(), seconds);
    const double hidden = proportionalMiB(one.peer.process());
    one.peer.show();
    screen.observe(1.0);
    one.memory = std::max(hidden, proportionalMiB(one.peer.process()));
    one.wakeUps = wakeUpsASecond(one.peer.process(), seconds);
    one.peer.hide();
}

void printRow(const char* what, const char* unit, const std::vector<Contestant>& all,
    const std::function<const Figures&(const Contestant&)>& figures)
{
    printf("| %s, %s |", what, unit);
    for (const Contestant& one : all) {
        if (figures(one).empty())
            printf(" |");
        else
            printf(" %.1f (%.1f) |", figures(one).median(), figures(one).quantile(0.95));
    }
    printf(" %.2f |\n", figures(all.back()).median() / std::max(1e-9, figures(all.front()).median()));
}

void printNumbers(const char* what, const std::vector<Contestant>& all,
    const std::function<double(const Contestant&)>& number)
{
    printf("| %s |", what);
    for (const Contestant& one : all)
        printf(" %.1f |", number(one));
    if (number(all.front()) >= 0.5)
        printf(" %.2f |\n", number(all.back()) / number(all.front()));
    else
        printf(" |\n");
}

void print(const std::vector<Contestant>& all, const Screen& screen, int runs)
{
    printf("%dx%d, medians of %d (95th percentile)\n\n|", screen.width(), screen.height(), runs);
    for (const Contestant& one : all)
        printf(" | %s", one.peer.title().c_str());
    printf(" | times plain |\n| --- | --- | --- | --- | --- |\n");
    printRow(
        "request to reply", "ms", all, [](const Contestant& one) -> const Figures& { return one.reply; });
    printRow("request to first complete picture", "ms", all,
        [](const Contestant& one) -> const Figures& { return one.picture; });
    printRow("processor time of one popup shown and hidden", "ms", all,
        [](const Contestant& one) -> const Figures& { return one.processor; });
    printRow("page faults of it", "number", all,
        [](const Contestant& one) -> const Figures& { return one.faults; });
    printRow("launch until it can be used", "ms", all,
        [](const Contestant& one) -> const Figures& { return one.launch; });
    printRow("processor time of it", "ms", all,
        [](const Contestant& one) -> const Figures& { return one.launchProcessor; });
    printRow("waits of its threads", "number", all,
        [](const Contestant& one) -> const Figures& { return one.launchWaits; });
    printNumbers(
        "memory (PSS), popup up or hidden, MiB", all, [](const Contestant& one) { return one.memory; });
    printNumbers("wake-ups a second, popup up", all, [](const Contestant& one) { return one.wakeUps; });
    printNumbers("wake-ups a second, hidden", all, [](const Contestant& one) { return one.wakeUpsHidden; });
}

} // namespace

int compare(const Settings& settings)
{
    Bus bus;
    Screen screen;
    const auto plain = makePlain(bus, settings.binaries);
    const auto notifications = makeNotifications(bus);
    TesselPeer tessel(bus, settings.binaries);
    std::vector<Contestant> all {{*plain}, {*notifications}, {*tessel}};
    for (Contestant& one : all) {
        measureLaunch(one, settings.runs);
        warmUp(one, screen);
    }
    for (int round = 0; round < settings.runs; ++round) {
        for (Contestant& one : all)
            measureRound(one, screen);
    }
    for (Contestant& one : all) {
        if (one.picture.empty())
            fail(one.peer.title() + " was never drawn whole");
    }
    for (Contestant& one : all)
        measureRest(one, screen, settings.runs);
    print(all, screen, settings.runs);
    return 0;
}

} // namespace bench
