// Reads and writes the settings store from a shell.
#include "Commands.h"

#include <cerrno>
#include <cstdio>
#include <exception>

namespace {

constexpr char kHelp[] = R"(Usage: orbis-settings COMMAND

  set -t int|string [--] KEY VALUE   write a value
  get KEY                            print a value
  watch KEY...                       print "KEY VALUE" at each change, "KEY" when it is removed
  list [PREFIX]                      print "KEY VALUE" for each key, sorted
  unset KEY                          remove a key
  --help                             print this text

A key begins with "db/" (survives a reboot) or "memory/" (does not). In the lines of watch and list, line
ends inside a value are printed as blanks. The exit status is 0, 1 for a failure, 2 for a mistaken call.

Environment: ORBIS_STATE_DIR (db/, by default /var/lib/orbis), ORBIS_RUNTIME_DIR (memory/, by default
/run/orbis).
)";

struct Command {
    const char* name;
    int (*run)(const Arguments& arguments);
};

constexpr Command kCommands[] = {
    {"set", setCommand},
    {"get", getCommand},
    {"watch", watchCommand},
    {"list", listCommand},
    {"unset", unsetCommand},
};

int printHelp()
{
    const bool printed = fputs(kHelp, stdout) != EOF && fflush(stdout) == 0;
    return printed ? kSuccess : failure("cannot write to standard output", errno);
}

int run(const Arguments& arguments)
{
    if (arguments.empty())
        return usageError("a command is needed");
    if (arguments[0] == "--help")
        return printHelp();
    for (const Command& command : kCommands) {
        if (arguments[0] == command.name)
            return command.run({arguments.begin() + 1, arguments.end()});
    }
    return usageError("unknown command: " + arguments[0]);
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run({argv + (argc > 0 ? 1 : 0), argv + argc});
    } catch (const std::exception& error) {
        return failure(error.what(), 0);
    }
}
