// Reads and writes the settings store from a shell.
#include "Commands.h"

#include <exception>

namespace {

constexpr char kHelp[] = R"(Commands:
  set -t int|string [--] KEY VALUE   write a value
  get KEY                            print a value
  watch KEY...                       print "KEY VALUE" at each change, "KEY" when it is removed
  list [PREFIX]                      print "KEY VALUE" for each key, sorted
  unset KEY                          remove a key

A key begins with "db/" (survives a reboot) or "memory/" (does not). In the lines of watch and list, line
ends inside a value are printed as blanks. The exit status is 0, 1 for a failure, 2 for a mistaken call.

Environment: ORBIS_STATE_DIR (db/, by default /var/lib/orbis), ORBIS_RUNTIME_DIR (memory/, by default
/run/orbis).)";

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

int run(const Arguments& arguments)
{
    tools::CommandLine line(kToolName, "COMMAND [ARGUMENT...]", kHelp);
    line.stopAtFirstArgument();
    const auto words = line.parse(arguments);
    if (!words)
        return tools::kWrongUsage;
    if (words->empty())
        return line.wrongUsage("a command is needed");
    for (const Command& command : kCommands) {
        if (words->front() == command.name)
            return command.run({words->begin() + 1, words->end()});
    }
    return line.wrongUsage("unknown command: " + words->front());
}

} // namespace

int main(int argc, char** argv)
{
    try {
        return run(tools::argumentsOf(argc, argv));
    } catch (const std::exception& error) {
        return failure(error.what(), 0);
    }
}
