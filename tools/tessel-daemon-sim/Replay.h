// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A scenario made from what a log tells of one run of the program.
#pragma once

#include "LogLines.h"

#include <map>
#include <optional>
#include <string>
#include <vector>

namespace DaemonSim {

/// A command, or a remark, of a scenario that is being made.
struct Entry {
    using Words = std::vector<std::string>;

    double seconds = 0; ///< when, on the log's clock
    Words words; ///< none: the remark alone
    std::string remark; ///< what stands above it as a comment
    std::vector<Words> before; ///< settings that it needs, and how the daemon is to answer
    std::vector<Words> after;
};

/// What one run of the program did, in the words of the simulator.
struct Run {
    std::vector<Entry::Words> settings; ///< that were there when it started, as far as it told
    std::vector<Entry> entries;
    size_t requests = 0;
    size_t presses = 0;
    size_t guessedMoves = 0; ///< of the focus, which no line told of
    size_t unknownKeys = 0; ///< left out
    bool hasBegun = false; ///< with its first line
    bool hasEnded = false;
    bool isFull = false; ///< there was more than anybody would look at
};

/// Follows a log line by line, and writes down what asks for the same: requests, settings, keys of the
/// viewer, and what to wait for.
class Replay {
public:
    void take(const LogLine& line);

    /// @return the runs of the program that the log tells of, the first first
    std::vector<Run> takeRuns();

private:
    struct Rule;
    struct Click;
    static const Rule kRules[];
    static const Click kClicks[];

    struct Key {
        double seconds;
        std::string name; ///< empty: the log does not say which
    };
    enum class Source { None, Bus, Store };

    // What lines tell, each with the part of the message behind the words by which it is known.
    void begin(const std::string& rest);
    void serverStarted(const std::string& rest);
    void guideShown(const std::string& rest);
    void called(const std::string& rest);
    void pinAsked(const std::string& rest);
    void pinTold(const std::string& rest);
    void guideAsked(const std::string& rest);
    void guideRefused(const std::string& rest);
    void networkAsked(const std::string& rest);
    void networkTold(const std::string& rest);
    void signInAsked(const std::string& rest);
    void signInTold(const std::string& rest);
    void failureAsked(const std::string& rest);
    void stored(const std::string& rest);
    void storedText(const std::string& written);
    void storedAgain(const std::string& rest);
    void owned(const std::string& rest);
    void ordered(const std::string& rest);
    void language(const std::string& rest);
    void contrastOn(const std::string& rest);
    void contrastOff(const std::string& rest);
    void tvName(const std::string& rest);
    void keyPressed(const std::string& rest);
    void backPressed(const std::string& rest);
    void closePressed(const std::string& rest);
    void ticked(const std::string& rest);
    void expired(const std::string& rest);
    void stopping(const std::string& rest);
    void callFailed(const std::string& rest);
    void busWent(const std::string& rest);
    void busCame(const std::string& rest);
    void ended(const std::string& rest);

    Entry& add(Entry::Words words, const std::string& remark = {});
    void addRequest(Entry::Words words);
    Entry::Words* requestUnderWay(const char* method);
    Entry::Words* asked(const char* method, size_t arguments);
    bool isFromStore();
    void remember(const char* type, const char* key, const std::string& value);
    bool takeClick(const LogLine& line);
    void clicked(const Click& click);
    void press(double seconds, const std::string& key);
    void moveFocus(const Click& click);
    void dropKeys();
    void passGuess();

    Run m_run;
    std::vector<Run> m_runs;
    double m_now = 0;
    double m_lastTime = 0; ///< on the log's clock, which somebody may set
    bool m_hasTimes = false;
    bool m_ticked = false; ///< a countdown has told of time since the last entry
    Source m_source = Source::None; ///< of what is being shown
    size_t m_request = 0; ///< its entry
    bool m_isFilled = false; ///< its arguments have been told
    std::string m_written; ///< what the log has of the line that is being read, escapes and all
    std::string m_pair; ///< both names of a request as the log has them, in one text
    std::map<std::string, std::string> m_settings; ///< as the run has told
    std::vector<Key> m_keys; ///< since the last click
    bool m_guideIsUp = false;
    bool m_isMirrored = false; ///< the language is written from the right
    bool m_hasExpired = false;
    bool m_isLeaving = false; ///< something was done that ends the program
};

} // namespace DaemonSim
