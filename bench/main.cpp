// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Commands.h"
#include "options/CommandLine.h"

#include <clocale>
#include <cstdlib>
#include <filesystem>

namespace {

constexpr const char* kCommands =
    "Commands:\n"
    "  compare  the program beside a plain popup and a notification daemon\n"
    "  kinds    what each kind of popup costs\n"
    "  weston   beside the plain popup as clients of a Wayland compositor\n"
    "  soak     what many popups leave behind\n\n"
    "The display, the bus and the folders are those of the environment; scripts/bench\n"
    "makes them.";

} // namespace

int main(int argc, char** argv)
{
    setlocale(LC_NUMERIC, "C");
    bench::Settings settings;
    settings.binaries = std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
    std::string runs;
    tools::CommandLine line("tessel-bench", "COMMAND", kCommands);
    line.add({"runs", tools::setText(runs), "how often each thing is done", "NUMBER"});
    const auto rest = line.parse(tools::argumentsOf(argc, argv));
    if (!rest)
        return tools::kWrongUsage;
    if (!runs.empty())
        settings.runs = atoi(runs.c_str());
    if (rest->size() != 1 || settings.runs < 1)
        return line.wrongUsage("one command, and a number of runs above 0");
    if (rest->front() == "compare")
        return bench::compare(settings);
    if (rest->front() == "kinds")
        return bench::kinds(settings);
    if (rest->front() == "weston")
        return bench::weston(settings);
    if (rest->front() == "soak")
        return bench::soak(settings);
    return line.wrongUsage("no command: " + rest->front());
}
