// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The words of the simulator's language: what happens, how the daemon behaves, which way requests take.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace DaemonSim {

/// How the daemon answers the calls it receives.
struct Behaviour {
    enum class Kind {
        Normal,
        Refuse, ///< answers with a D-Bus error
        Dawdle, ///< answers late
        WrongType, ///< answers with a text where a number belongs
        Silent, ///< answers once it is told to behave in another way
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

/// The way a popup request takes to the UI.
enum class Via {
    Bus,
    Settings, ///< as JSON in a settings key, for those requests that can be said so
};

/// Parses "normal", "refuse", "dawdle SECONDS", "wrong-type", "silent" or "vanish", given as words.
std::optional<Behaviour> parseBehaviour(const std::vector<std::string>& words);

/// Takes an event and its flags, if any are given, from the words at @p position on, which moves behind them.
/// @param end  where to stop, at most the number of words
std::optional<Event> takeEvent(const std::vector<std::string>& words, size_t& position, size_t end);

/// Parses "bus" or "settings".
std::optional<Via> parseVia(std::string_view text);

/// Parses a plain decimal number of seconds, at most a day.
std::optional<double> parseSeconds(std::string_view text);

/// @return the words that a wait may begin with, and those that a behaviour may.
std::vector<std::string> eventWords();
std::vector<std::string> behaviourWords();

/// @return the thing in the words of the language.
std::string toText(const Behaviour& behaviour);
std::string toText(const Event& event);
std::string toText(Via via);

} // namespace DaemonSim
