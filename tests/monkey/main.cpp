/// Plays with the whole program for a while, from a seed or a trace.
#include "Actions.h"

#include <chrono>
#include <csignal>
#include <fstream>
#include <iostream>
#include <random>

namespace {

using namespace monkey;
using Clock = std::chrono::steady_clock;

struct Options {
    size_t seconds = 60;
    size_t steps = SIZE_MAX;
    uint64_t seed = std::random_device {}();
    std::string replay;
    std::string trace = "monkey.trace";
    Arguments without;
};

constexpr const char* kUsage =
    "Usage: tessel-monkey [--seconds N] [--steps N] [--seed S] [--without ACTION]... [--trace FILE]\n"
    "       tessel-monkey --replay TRACE\n"
    "Does whatever may happen around the program, at random, and looks after each step whether all is well.\n"
    "The steps depend on the seed alone, and are written to a trace (monkey.trace) that can be replayed.\n"
    "Ends with 1, the seed and the fault when something is wrong.\n";

std::optional<Options> parse(const Arguments& arguments)
{
    Options options;
    for (size_t i = 0; i + 1 < arguments.size(); i += 2) {
        const std::string& value = arguments[i + 1];
        if (arguments[i] == "--seconds")
            options.seconds = std::stoul(value);
        else if (arguments[i] == "--steps")
            options.steps = std::stoul(value);
        else if (arguments[i] == "--seed")
            options.seed = std::stoull(value);
        else if (arguments[i] == "--replay")
            options.replay = value;
        else if (arguments[i] == "--trace")
            options.trace = value;
        else if (arguments[i] == "--without")
            options.without.push_back(value);
        else
            return std::nullopt;
    }
    return arguments.size() % 2 == 0 ? std::make_optional(options) : std::nullopt;
}

using Script = std::function<std::optional<Step>()>;

/// The steps of a trace.
Script replayed(const std::string& trace)
{
    auto file = std::make_shared<std::ifstream>(trace);
    if (!*file)
        throw std::runtime_error("cannot read " + trace);
    return [=]() -> std::optional<Step> {
        std::string line;
        if (!std::getline(*file, line))
            return std::nullopt;
        return Step::fromLine(line);
    };
}

/// The steps of a seed until the time is up, noted in the trace.
Script played(const Options& options)
{
    std::cout << "seed " << options.seed << std::endl;
    const auto end = Clock::now() + std::chrono::seconds(options.seconds);
    auto trace = std::make_shared<std::ofstream>(options.trace);
    return [=, random = Random(options.seed), actions = actionsWithout(options.without),
               left = options.steps]() mutable -> std::optional<Step> {
        if (Clock::now() >= end || left-- == 0)
            return std::nullopt;
        const Step step = someStep(actions, random);
        *trace << step.line() << std::endl;
        return step;
    };
}

int play(const Options& options)
{
    World world;
    const Script script = options.replay.empty() ? played(options) : replayed(options.replay);
    const Actions actions = actionsWithout({});
    size_t steps = 0;
    try {
        for (std::optional<Step> step = script(); step; step = script()) {
            ++steps;
            world.makeReady();
            perform(actions, world, *step);
            world.check();
        }
        if (world.isRunning()) {
            world.box.program->signal(SIGTERM);
            world.mustEnd("a signal");
            world.check();
        }
    } catch (const Fault& fault) {
        std::cout << world.box.report() << "\nstep " << steps << ": " << fault.what() << "\n";
        if (options.replay.empty())
            std::cout << "again: --seed " << options.seed << " or --replay " << options.trace << "\n";
        return 1;
    }
    std::cout << steps << " steps, " << world.starts() << " starts, at most " << world.mostMemory() / 1024
              << " MB\n";
    return 0;
}

} // namespace

int main(int argc, char** argv)
{
    try {
        const auto options = parse({argv + 1, argv + argc});
        if (!options) {
            std::cerr << kUsage;
            return 2;
        }
        return play(*options);
    } catch (const std::exception& error) {
        std::cerr << "tessel-monkey: " << error.what() << "\n";
        return 2;
    }
}
