/// Plays with the whole program for a while, from a seed or a trace.
#include "Actions.h"
#include "options/CommandLine.h"

#include <charconv>
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

constexpr const char* kDescription =
    "Does whatever may happen around the program, at random, and looks after each step whether all is well.\n"
    "The steps depend on the seed alone, and are written to a trace (monkey.trace) that can be replayed.\n"
    "Ends with 1, the seed and the fault when something is wrong.";

template <typename Number>
auto setNumber(Number& number)
{
    return [&number](const std::string& value) {
        const char* end = value.data() + value.size();
        const auto parsed = std::from_chars(value.data(), end, number);
        return std::string(parsed.ec == std::errc() && parsed.ptr == end ? "" : "no number of such a size");
    };
}

std::optional<Options> parse(const Arguments& arguments)
{
    Options options;
    tools::CommandLine line("tessel-monkey", "", kDescription);
    line.add({"seconds", setNumber(options.seconds), "how long it plays (default 60)", "N"});
    line.add({"steps", setNumber(options.steps), "how many steps it plays at most", "N"});
    line.add({"seed", setNumber(options.seed), "which steps (default: any)", "S"});
    line.add({"without", tools::addText(options.without), "leaves one kind of step out", "ACTION"});
    line.add({"trace", tools::setText(options.trace), "where the steps are written", "FILE"});
    line.add({"replay", tools::setText(options.replay), "plays the steps of a trace", "TRACE"});
    return line.parse(arguments) ? std::optional(options) : std::nullopt;
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
        const auto options = parse(tools::argumentsOf(argc, argv));
        return options ? play(*options) : tools::kWrongUsage;
    } catch (const std::exception& error) {
        std::cerr << "tessel-monkey: " << error.what() << "\n";
        return 2;
    }
}
