// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What each kind of popup costs.
#include "Commands.h"
#include "Figures.h"
#include "Peers.h"
#include "ProcessFigures.h"
#include "Screen.h"

#include <cstdio>

namespace bench {

namespace {

constexpr double kMilli = 1e3;

struct Kind {
    const char* method;
    std::vector<const char*> texts;
    double watched = 1.0; ///< seconds that it stands
};

struct Costs {
    Figures processor, faults, pictures, pixels, wakeUps;
};

Method call(const Kind& kind)
{
    if (kind.texts.empty())
        return tesselMethod(kind.method);
    GVariantBuilder arguments;
    g_variant_builder_init(&arguments, G_VARIANT_TYPE_TUPLE);
    for (const char* text : kind.texts)
        g_variant_builder_add(&arguments, "s", text);
    return tesselMethod(kind.method, g_variant_builder_end(&arguments));
}

/// What is drawn at one go comes as several rectangles, one right after the other.
int picturesIn(const std::vector<Drawn>& drawn)
{
    constexpr double kOnePicture = 0.003;
    int pictures = 0;
    double last = -1;
    for (const Drawn& one : drawn) {
        pictures += one.time - last > kOnePicture;
        last = one.time;
    }
    return pictures;
}

void measure(const Kind& kind, Peer& peer, Screen& screen, Costs& costs)
{
    const ProcessFigures before = figuresOf(peer.process());
    peer.call(call(kind));
    const auto drawn = screen.observe(kind.watched);
    const ProcessFigures shown = figuresOf(peer.process());
    peer.hide();
    screen.observe(0.25);
    const ProcessFigures after = figuresOf(peer.process());
    double pixels = 0;
    for (const Drawn& one : drawn)
        pixels += static_cast<double>(one.width) * one.height;
    costs.processor.add((after.processorSeconds - before.processorSeconds) * kMilli);
    costs.faults.add(static_cast<double>(after.pageFaults - before.pageFaults));
    costs.pictures.add(picturesIn(drawn));
    costs.pixels.add(pixels / 1e6);
    costs.wakeUps.add(static_cast<double>(shown.wakeUps - before.wakeUps) / kind.watched);
}

} // namespace

int kinds(const Settings& settings)
{
    const std::vector<Kind> all {{"ShowPinPopup", {"Nova 12", "0427"}}, {"ShowTnCPopup", {}},
        {"ShowApListPopup", {}}, {"ShowNetworkTest", {"Nova 12", "Home"}},
        {"ShowSSOLoginPopup", {"Nova 12", "somebody@example.org"}}, {"ShowFailedPopup", {"network"}}};
    Bus bus;
    Screen screen;
    TesselPeer tessel(bus, settings.binaries);
    tessel->start();
    tessel->show();
    screen.observe(1.0);
    screen.watch(screen.windowOf(tessel->process()));
    tessel->hide();
    screen.observe(0.5);
    printf("%dx%d, medians of %d, a popup that stands for a second and is hidden\n\n", screen.width(),
        screen.height(), settings.runs);
    printf("| | processor time, ms | page faults | pictures | pixels drawn, millions | wake-ups |\n");
    printf("| --- | --- | --- | --- | --- | --- |\n");
    for (const Kind& kind : all) {
        Costs costs;
        for (int run = 0; run < settings.runs; ++run)
            measure(kind, *tessel, screen, costs);
        printf("| `%s` | %.1f | %.0f | %.0f | %.2f | %.0f |\n", kind.method, costs.processor.median(),
            costs.faults.median(), costs.pictures.median(), costs.pixels.median(), costs.wakeUps.median());
        fflush(stdout);
    }
    return 0;
}

} // namespace bench
