// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

// Reads and writes the settings store from a shell.
#include "Commands.h"
#include "base/GlibHandles.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <utility>

namespace {

constexpr char kHelp[] =
    R"(A key begins with "db/" (survives a reboot) or "memory/" (does not). In the lines of watch and list, line
ends inside a value are printed as blanks; --json and dump keep them. A line of a batch is a command as on the
command line, quoted as in a shell; # begins a comment. A restore writes what is another, removes what the dump
does not have, and does nothing at all when a line of the dump is wrong. Each command has a --help of its own.

Environment: ORBIS_STATE_DIR (db/, by default /var/lib/orbis), ORBIS_RUNTIME_DIR (memory/, by default
/run/orbis).)";

constexpr char kKeys[] = "$(orbis-settings list 2>/dev/null | cut -d ' ' -f 1)";

// ---- the options, each of the commands that have it

std::vector<tools::Option> noOptions(CommandOptions&)
{
    return {};
}

std::vector<tools::Option> typeOption(CommandOptions& options)
{
    return {{"type", tools::setText(options.type), "which kind of value: int or string", "TYPE", false, 't',
        "int string"}};
}

std::vector<tools::Option> jsonOption(CommandOptions& options)
{
    return {{"json", tools::setFlag(options.isJson),
        "print as JSON: numbers and texts; what is no UTF-8 in it is U+FFFD"}};
}

std::vector<tools::Option> keepOption(CommandOptions& options)
{
    return {{"keep", tools::setFlag(options.keepsOthers),
        "keep keys that the dump does not have, instead of removing them"}};
}

struct Row {
    const char* name;
    const char* usage; ///< in the tool's help
    const char* parameters; ///< in its own
    const char* help;
    int (*run)(const Call& call);
    bool isForBatches;
    std::vector<tools::Option> (*optionsInto)(CommandOptions& options); ///< which must outlive the parsing
    const char* choices; ///< of its arguments
};

constexpr Row kRows[] = {
    {"set", "-t int|string [--] KEY VALUE", "KEY VALUE", "write a value", setCommand, true, typeOption,
        kKeys},
    {"get", "[--json] KEY", "KEY", "print a value", getCommand, true, jsonOption, kKeys},
    {"watch", "KEY...", "KEY...", "print \"KEY VALUE\" at each change, \"KEY\" when it is removed",
        watchCommand, false, noOptions, kKeys},
    {"list", "[--json] [PREFIX]", "[PREFIX]", "print \"KEY VALUE\" for each key, sorted", listCommand, true,
        jsonOption, kKeys},
    {"unset", "KEY", "KEY", "remove a key", unsetCommand, true, noOptions, kKeys},
    {"batch", "[FILE]", "[FILE]",
        "carry out the lines of a file, or of standard input, up to the first that fails", batchCommand,
        false, noOptions, tools::kFiles},
    {"dump", "[PREFIX]", "[PREFIX]", "print all keys with their types and values, for restore", dumpCommand,
        true, noOptions, kKeys},
    {"restore", "[--keep] [FILE]", "[FILE]", "make the store what a dump says, from a file or standard input",
        restoreCommand, false, keepOption, tools::kFiles},
};

const Row* findRow(const std::string& name)
{
    const auto* const row =
        std::find_if(std::begin(kRows), std::end(kRows), [&](const Row& each) { return name == each.name; });
    return row == std::end(kRows) ? nullptr : row;
}

/// Carries out a command. What follows its first argument is no option: a value may begin with "-".
int runRow(const Row& row, const Arguments& arguments)
{
    CommandOptions options;
    tools::CommandLine line(std::string(kToolName) + ' ' + row.name, row.parameters, "");
    line.stopAtFirstArgument();
    for (tools::Option& option : row.optionsInto(options))
        line.add(std::move(option));
    const auto words = line.parse(arguments);
    return words ? row.run({line, options, *words}) : tools::kWrongUsage;
}

int run(const Arguments& arguments)
{
    CommandOptions unused;
    tools::CommandLine line(kToolName, "COMMAND [ARGUMENT...]", kHelp);
    for (const Row& row : kRows)
        line.add(tools::Command {row.name, row.usage, row.help, row.optionsInto(unused), row.choices});
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
        return runRow(*row, {words->begin() + 1, words->end()});
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
        return runRow(*row, {words.begin() + 1, words.end()});
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
