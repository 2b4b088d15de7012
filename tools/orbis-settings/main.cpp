// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

// Reads and writes the settings store from a shell.
#include "Commands.h"
#include "base/GlibHandles.h"

#include <algorithm>
#include <exception>
#include <iterator>

namespace {

constexpr char kHelp[] =
    R"(A key begins with "db/" (survives a reboot) or "memory/" (does not). In the lines of watch and list, line
ends inside a value are printed as blanks; --json and dump keep them. A line of a batch is a command as on the
command line, quoted as in a shell; # begins a comment. A restore writes what is another, removes what the dump
does not have, and does nothing at all when a line of the dump is wrong. Each command has a --help of its own.

Environment: ORBIS_STATE_DIR (db/, by default /var/lib/orbis), ORBIS_RUNTIME_DIR (memory/, by default
/run/orbis).)";

struct Row {
    tools::Command command;
    int (*run)(const Arguments& arguments);
    bool isForBatches;
};

constexpr Row kRows[] = {
    {{"set", "-t int|string [--] KEY VALUE", "write a value"}, setCommand, true},
    {{"get", "[--json] KEY", "print a value"}, getCommand, true},
    {{"watch", "KEY...", "print \"KEY VALUE\" at each change, \"KEY\" when it is removed"}, watchCommand,
        false},
    {{"list", "[--json] [PREFIX]", "print \"KEY VALUE\" for each key, sorted"}, listCommand, true},
    {{"unset", "KEY", "remove a key"}, unsetCommand, true},
    {{"batch", "[FILE]", "carry out the lines of a file, or of standard input, up to the first that fails"},
        batchCommand, false},
    {{"dump", "[PREFIX]", "print all keys with their types and values, for restore"}, dumpCommand, true},
    {{"restore", "[--keep] [FILE]", "make the store what a dump says, from a file or standard input"},
        restoreCommand, false},
};

const Row* findRow(const std::string& name)
{
    const auto* const row = std::find_if(
        std::begin(kRows), std::end(kRows), [&](const Row& each) { return name == each.command.name; });
    return row == std::end(kRows) ? nullptr : row;
}

int run(const Arguments& arguments)
{
    tools::CommandLine line(kToolName, "COMMAND [ARGUMENT...]", kHelp);
    for (const Row& row : kRows)
        line.add(row.command);
    line.setArgumentChoices(
        std::string("-t int string --json --keep $(orbis-settings list 2>/dev/null | cut -d ' ' -f 1) ")
        + tools::kFiles);
    line.addStatus(kSuccess, "done");
    line.addStatus(kFailure, "something failed; standard error says what");
    line.addStatus(tools::kWrongUsage, "wrong usage");
    line.stopAtFirstArgument();
    const auto words = line.parse(arguments);
    if (!words)
        return tools::kWrongUsage;
    if (words->empty())
        return line.wrongUsage("a command is needed");
    if (const Row* row = findRow(words->front()))
        return row->run({words->begin() + 1, words->end()});
    return line.wrongUsage("unknown command: " + words->front());
}

} // namespace

int runLine(const std::string& line)
{
    int count = 0;
    char** rawWords = nullptr;
    GError* rawError = nullptr;
    g_shell_parse_argv(line.c_str(), &count, &rawWords, &rawError);
    const base::StrvPtr owner(rawWords);
    const base::ErrorPtr error(rawError);
    if (error && error->code == G_SHELL_ERROR_EMPTY_STRING)
        return kSuccess;
    if (error)
        return failure(error->message, 0);
    const Arguments words(rawWords, rawWords + count);
    const Row* row = findRow(words.front());
    if (row && row->isForBatches)
        return row->run({words.begin() + 1, words.end()});
    failure((row ? "not in a batch: " : "unknown command: ") + words.front(), 0);
    return tools::kWrongUsage;
}

int main(int argc, char** argv)
{
    try {
        return run(tools::argumentsOf(argc, argv));
    } catch (const std::exception& error) {
        return failure(error.what(), 0);
    }
}
