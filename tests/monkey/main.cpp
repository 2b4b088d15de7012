// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Plays with the whole program for a while, from a seed or a trace.
#include "Actions.h"
#include "options/Terminal.h"

#include <fstream>
#include <iostream>
#include <random>

namespace {

using namespace monkey;

struct Options {
    gint seconds = 60;
    gint steps = G_MAXINT;
    gint64 seed = std::random_device {}();
    const char* replay = nullptr;
    const char* trace = "monkey.trace";
    char** without = nullptr;
};

/// @return what lives as long as the process. @throws std::runtime_error
const Options& parse(int argc, char** argv)
{
    static Options s_options;
    constexpr auto kInt = G_OPTION_ARG_INT;
    constexpr auto kFile = G_OPTION_ARG_FILENAME;
    const GOptionEntry entries[] = {
        {"seconds", 0, 0, kInt, &s_options.seconds, "how long it plays (default 60)", "N"},
        {"steps", 0, 0, kInt, &s_options.steps, "how many steps it plays at most", "N"},
        {"seed", 0, 0, G_OPTION_ARG_INT64, &s_options.seed, "which steps (default: any)", "S"},
        {"without", 0, 0, G_OPTION_ARG_STRING_ARRAY, &s_options.without, "leaves one kind out", "ACTION"},
        {"trace", 0, 0, kFile, &s_options.trace, "where the steps are written", "FILE"},
        {"replay", 0, 0, kFile, &s_options.replay, "plays the steps of a trace", "TRACE"},
        {},
    };
    const std::unique_ptr<GOptionContext, decltype(&g_option_context_free)> context(
        g_option_context_new(nullptr), g_option_context_free);
    g_option_context_add_main_entries(context.get(), entries, nullptr);
    GError* error = nullptr;
    if (!g_option_context_parse(context.get(), &argc, &argv, &error) || argc > 1)
        throw std::runtime_error(error ? error->message : std::string("what is ") + argv[1] + "?");
    return s_options;
}

void take(World& world, const Step& step)
{
    world.makeReady();
    perform(actionsWithout(nullptr), world, step);
    world.check();
}

/// @return how many steps it was
int play(World& world, const Options& options)
{
    tools::Progress progress;
    int count = 0;
    if (options.replay) {
        std::ifstream steps(options.replay);
        if (!steps)
            throw std::runtime_error(std::string("cannot read ") + options.replay);
        for (std::string line; std::getline(steps, line); ++count) {
            progress.show("step " + std::to_string(count + 1) + ": " + line);
            take(world, stepOf(line));
        }
        return count;
    }
    std::cout << "seed " << options.seed << std::endl;
    std::ofstream steps(options.trace);
    Random random(static_cast<uint64_t>(options.seed));
    const Actions actions = actionsWithout(options.without);
    const gint64 end = g_get_monotonic_time() + options.seconds * G_USEC_PER_SEC;
    for (; g_get_monotonic_time() < end && count < options.steps; ++count) {
        const Step step = someStep(actions, random);
        steps << lineOf(step) << std::endl;
        progress.show(std::to_string((end - g_get_monotonic_time()) / G_USEC_PER_SEC) + " s to go, step "
            + std::to_string(count + 1) + ": " + lineOf(step));
        take(world, step);
    }
    return count;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const Options& options = parse(argc, argv);
        World world;
        try {
            const int steps = play(world, options);
            world.end();
            std::cout << steps << " steps, " << world.starts() << " starts\n";
            return 0;
        } catch (const Fault& fault) {
            std::cout << world.box.report() << "\n" << fault.what() << "\n";
            if (!options.replay)
                std::cout << "again: --seed " << options.seed << " or --replay " << options.trace << "\n";
            return 1;
        }
    } catch (const std::exception& error) {
        std::cerr << "tessel-monkey: " << error.what() << "\n";
        return 2;
    }
}
