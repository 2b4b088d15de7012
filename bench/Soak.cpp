// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What many popups of all kinds leave behind.
#include "Commands.h"
#include "Peers.h"
#include "ProcessFigures.h"
#include "Screen.h"
#include "vconf.h"

#include <algorithm>
#include <cstdio>

namespace bench {

namespace {

constexpr int kMostFirst = 500; ///< after so many the toolkit has all that it keeps
constexpr const char* kRequestKey = "db/tessel/mobile_oobe";

struct State {
    double memory;
    double ownMemory;
    int descriptors;
    int threads;
    int resources; ///< of the X server
    double wakeUps; ///< a second, hidden: timers that were left running
};

/// One request, in turns over the bus and through the settings store, and what a viewer may do to it.
void show(int number, Peer& tessel, Screen& screen)
{
    const std::string phone = "Nova " + std::to_string(number % 100);
    const char* pages[] = {R"({"page":"pin","mobilename":"Nova","pin":"0427"})", R"({"page":"tnc"})",
        R"({"page":"wifi","mobilename":"Nova","ssid":"Home"})",
        R"({"page":"sso","mobilename":"Nova","account":"somebody@example.org"})", R"({"page":"disconnect"})"};
    constexpr int kKinds = 12;
    switch (number % kKinds) {
    case 0:
        tessel.call(tesselMethod("ShowPinPopup", g_variant_new("(ss)", phone.c_str(), "0427")));
        break;
    case 1:
        tessel.call(tesselMethod("ShowTnCPopup"));
        break;
    case 2:
        tessel.call(tesselMethod("ShowApListPopup"));
        break;
    case 3:
        tessel.call(tesselMethod("ShowFailedPopup", g_variant_new("(s)", "sso")));
        break;
    case 4:
    case 5:
        tessel.call(tesselMethod("ShowNetworkTest", g_variant_new("(ss)", phone.c_str(), "Home")));
        screen.observe(0.1);
        screen.press("Return"); // its confirmation
        break;
    case 6:
        tessel.call(
            tesselMethod("ShowSSOLoginPopup", g_variant_new("(ss)", phone.c_str(), "somebody@example.org")));
        screen.observe(0.1);
        screen.press("Return");
        screen.observe(0.05);
        screen.press("Left");
        screen.press("Right");
        break;
    default:
        vconf_set_str(kRequestKey, pages[number % 5]);
        break;
    }
    screen.observe(0.02);
    if (number % 3 == 0)
        tessel.hide();
}

State stateOf(Peer& tessel, Screen& screen)
{
    constexpr double kQuiet = 4;
    screen.observe(0.5); // what was asked for through the store comes later
    tessel.hide();
    screen.observe(kQuiet); // for what is let go of only when nothing happens
    const ProcessFigures before = figuresOf(tessel.process());
    screen.observe(kQuiet);
    const ProcessFigures after = figuresOf(tessel.process());
    return {proportionalMiB(tessel.process()), ownMiB(tessel.process()), descriptorsOf(tessel.process()),
        threadsOf(tessel.process()), screen.resourcesOf(tessel.process()),
        static_cast<double>(std::max(0L, after.wakeUps - before.wakeUps)) / kQuiet};
}

} // namespace

int soak(const Settings& settings)
{
    Bus bus;
    Screen screen;
    TesselPeer tessel(bus, settings.binaries);
    tessel->start();
    const int first = std::min(kMostFirst, settings.runs);
    for (int i = 0; i < first; ++i)
        show(i, *tessel, screen);
    const State before = stateOf(*tessel, screen);
    const double start = now();
    constexpr int kLooks = 10;
    for (int i = 0; i < settings.runs; ++i) {
        show(i, *tessel, screen);
        if ((i + 1) % std::max(1, settings.runs / kLooks) == 0)
            fprintf(stderr, "%d popups: %.2f MiB\n", i + 1, ownMiB(tessel->process()));
    }
    const double took = now() - start;
    const State after = stateOf(*tessel, screen);
    printf("%d popups of all kinds after the first %d, in %.0f s\n\n", settings.runs, first, took);
    printf("| | before | after |\n| --- | --- | --- |\n");
    printf("| memory (PSS), MiB | %.2f | %.2f |\n", before.memory, after.memory);
    printf("| of it not shared, MiB | %.2f | %.2f |\n", before.ownMemory, after.ownMemory);
    printf("| descriptors | %d | %d |\n", before.descriptors, after.descriptors);
    printf("| threads | %d | %d |\n", before.threads, after.threads);
    printf("| resources of the X server | %d | %d |\n", before.resources, after.resources);
    printf("| wake-ups a second, hidden | %.1f | %.1f |\n", before.wakeUps, after.wakeUps);
    return 0;
}

} // namespace bench
