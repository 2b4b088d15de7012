/// The simulator's language: one command a line, the same in a scenario file and at the prompt.
#ifndef DAEMON_SIM_COMMANDS_H
#define DAEMON_SIM_COMMANDS_H

#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace DaemonSim {

/// How the daemon answers the calls it receives.
struct Behaviour {
    enum class Kind {
        Normal,
        Refuse, ///< answers with a D-Bus error
        Dawdle, ///< answers late
        WrongType, ///< answers with a text where a number belongs
        Vanish, ///< leaves the bus without an answer, and ends
    };
    Kind kind = Kind::Normal;
    double seconds = 0; ///< the delay of Dawdle
};

enum class EventKind {
    ServerStarted,
    StopTessel,
    UiAppeared,
    UiVanished,
};

/// Something that happened, or that a scenario waits for.
struct Event {
    EventKind kind;
    /// The flags of a received call. In a wait, empty means whatever the flags are.
    std::vector<bool> flags;
};

struct RequestCommand {
    std::string method;
    std::vector<std::string> arguments;
};
struct SleepCommand {
    double seconds;
};
struct WaitCommand {
    std::vector<Event> events; ///< all of them, in any order
    double seconds;
};
struct SetIntCommand {
    std::string key;
    int value;
};
struct SetStringCommand {
    std::string key;
    std::string value;
};
struct UnsetCommand {
    std::string key;
};
struct BehaveCommand {
    Behaviour behaviour;
};
struct EchoCommand {
    std::string text;
};
struct HelpCommand { };
struct QuitCommand { };

using Command = std::variant<RequestCommand, SleepCommand, WaitCommand, SetIntCommand, SetStringCommand,
    UnsetCommand, BehaveCommand, EchoCommand, HelpCommand, QuitCommand>;

/// What became of a line. Neither a command nor an error: the line is blank or a comment.
struct ParsedLine {
    std::optional<Command> command;
    std::string error;
};

/// Parses one line (without its line end). Words are quoted as in a shell.
ParsedLine parseLine(const std::string& line);

/// Parses "normal", "refuse", "dawdle SECONDS", "wrong-type" or "vanish", given as words.
std::optional<Behaviour> parseBehaviour(const std::vector<std::string>& words);

/// Parses a plain decimal number of seconds, at most a day.
std::optional<double> parseSeconds(std::string_view text);

/// @return the behaviour in the words of the language.
std::string toText(const Behaviour& behaviour);

/// @return the word by which a wait names the event, with its flags.
std::string toText(const Event& event);

/// @return what help prints, a line a command.
std::string commandHelp();

} // namespace DaemonSim

#endif
