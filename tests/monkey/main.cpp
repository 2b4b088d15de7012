/// Plays with the whole program for a while, from a seed or a trace.
#include "Actions.h"

#include <chrono>
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
    if (arguments.size() % 2 != 0)
        return std::nullopt;
    return options;
}

/// The steps of a trace, or of a seed until the time is up.
class Script {
public:
    explicit Script(const Options& options)
        : m_options(options)
        , m_choice(options.without)
        , m_random(options.seed)
        , m_end(Clock::now() + std::chrono::seconds(options.seconds))
    {
        if (options.replay.empty())
            return;
        std::ifstream file(options.replay);
        if (!file)
            throw std::runtime_error("cannot read " + options.replay);
        for (std::string line; std::getline(file, line);)
            m_lines.push_back(line);
    }

    std::optional<Step> next()
    {
        if (m_options.replay.empty()) {
            if (Clock::now() >= m_end || m_done == m_options.steps)
                return std::nullopt;
            ++m_done;
            return m_choice.next(m_random);
        }
        if (m_done == m_lines.size())
            return std::nullopt;
        return Step::fromLine(m_lines[m_done++]);
    }
    size_t done() const { return m_done; }

private:
    const Options& m_options;
    Choice m_choice;
    Random m_random;
    Clock::time_point m_end;
    Arguments m_lines;
    size_t m_done = 0;
};

int play(const Options& options)
{
    World world;
    Script script(options);
    std::ofstream trace;
    if (options.replay.empty()) {
        trace.open(options.trace);
        std::cout << "seed " << options.seed << std::endl;
    }
    try {
        while (const auto step = script.next()) {
            if (trace.is_open())
                trace << step->line() << std::endl;
            world.makeReady();
            Choice::perform(world, *step);
            world.check();
        }
        if (world.isRunning()) {
            world.box.program->signal(15);
            world.mustEnd("a signal");
            world.check();
        }
    } catch (const Fault& fault) {
        std::cout << world.box.report() << "\nstep " << script.done() << ": " << fault.what() << "\n";
        if (options.replay.empty())
            std::cout << "again: --seed " << options.seed << " or --replay " << options.trace << "\n";
        return 1;
    }
    std::cout << script.done() << " steps, " << world.starts() << " starts, at most "
              << world.mostMemory() / 1024 << " MB\n";
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
