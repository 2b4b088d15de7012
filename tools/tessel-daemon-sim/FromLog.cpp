// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "FromLog.h"

#include "Names.h"
#include "Quoting.h"
#include "Redaction.h"
#include "Replay.h"
#include "Session.h"
#include "base/GlibHandles.h"
#include "base/Version.h"
#include "options/Terminal.h"

#include <cmath>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <utility>

namespace DaemonSim {

namespace {

/// Nobody sees what is over sooner, and the program may not have drawn it.
constexpr double kShortestPause = 0.25;
/// What stays longer than this says no more than this.
constexpr double kLongestPause = 3600;

/// How long before an end that comes by itself the viewer looks once more.
constexpr double kLook = 2;

/// What a wait is given beyond what the log says that it took.
constexpr double kPatience = 10;

/// A scenario may not be longer than the simulator reads.
constexpr size_t kMostText = 0x3c0000;

std::string number(double value)
{
    char text[32] = "";
    snprintf(text, sizeof text, "%g", value);
    return text;
}

std::string plural(size_t count, const char* what)
{
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

class Writer {
public:
    Writer(const FromLogOptions& options, const LogCondition& condition)
        : m_options(options)
        , m_condition(condition)
    {
    }

    /// @param which  the run's number, from 1. @param all  how many there are
    std::string write(const Run& run, size_t which, size_t all)
    {
        head(run, which, all);
        for (const Entry::Words& words : run.settings)
            command(words);
        m_text += "wait ServerStarted\n";
        m_last = run.entries.empty() ? 0 : run.entries.front().seconds;
        for (const Entry& each : run.entries) {
            if (m_text.size() > kMostText) {
                remark("There was more, which no scenario takes.");
                break;
            }
            entry(each);
        }
        return std::move(m_text);
    }

private:
    void remark(const std::string& text)
    {
        m_text.append(text.empty() ? "#" : "# ").append(text).append(1, '\n');
    }
    void cannotTell(bool isSo, const std::string& text)
    {
        if (isSo)
            remark("- " + text);
    }

    void head(const Run& run, size_t which, size_t all);
    void whatIsMissing(const Run& run);
    void pause(double seconds);
    void entry(const Entry& entry);
    void command(Entry::Words words);
    void redact(Entry::Words& words);

    const FromLogOptions& m_options;
    const LogCondition& m_condition;
    Redaction m_redaction;
    std::string m_text;
    double m_last = 0; ///< when the last entry was
};

void Writer::head(const Run& run, size_t which, size_t all)
{
    remark("From a log: " + plural(run.requests, "request") + " and " + plural(run.presses, "key")
        + " of the viewer.");
    remark("");
    remark("Made by tessel-daemon-sim " TESSEL_VERSION " of run " + std::to_string(which) + " of "
        + std::to_string(all) + " in the log.");
    if (m_options.redacts)
        remark("PINs, names, networks and accounts are not the ones of the log; lengths, scripts and markup "
               "are.");
    remark("What the log does not tell:");
    whatIsMissing(run);
    m_text += '\n';
}

void Writer::whatIsMissing(const Run& run)
{
    const auto isSet = [&](const char* key) {
        for (const Entry::Words& words : run.settings) {
            if (words.size() > 2 && words[2] == key)
                return true;
        }
        return false;
    };
    remark("- what the viewer saw behind the popups, and whether it was read out");
    remark("- whether the daemon left the bus and came back, and how soon it answered");
    remark("- moves of the focus that were taken back, and keys that did nothing");
    cannotTell(!m_condition.hasTimes, "any times: pauses are guesses, where no countdown tells of them");
    cannotTell(!isSet(kLanguageKey), "the language");
    cannotTell(!isSet(kContrastKey), "high contrast, which not every popup tells of");
    cannotTell(run.guessedMoves > 0,
        plural(run.guessedMoves, "move") + " of the focus, guessed from the button that acted");
    cannotTell(run.unknownKeys > 0,
        plural(run.unknownKeys, "key") + " that moved nothing and acted on nothing, left out");
    cannotTell(!run.hasBegun, "how the run began: the log has its beginning no more");
    cannotTell(!run.hasEnded, "how the run ended: the log ends before");
    cannotTell(run.isFull, "all: there were more requests and keys than a scenario takes");
    cannotTell(m_condition.lost > 0, plural(m_condition.lost, "line") + " that the program could not write");
    cannotTell(m_condition.cut > 0,
        "the rest of " + plural(m_condition.cut, "line") + " longer than any of the program's");
    cannotTell(m_condition.escapes > 0,
        "control characters apart from a backslash and a letter: they are read as the former");
}

/// What follows a while later leaves the viewer time to look.
void Writer::pause(double seconds)
{
    if (seconds >= kShortestPause)
        m_text += "sleep " + number(std::round(std::min(seconds, kLongestPause) * 100) / 100) + '\n';
}

void Writer::entry(const Entry& entry)
{
    const double gap = std::max(0.0, entry.seconds - m_last);
    m_last = std::max(m_last, entry.seconds);
    const bool isWait = !entry.words.empty() && entry.words.front() == "wait";
    pause(isWait ? std::min(gap, kLook) : gap);
    if (!entry.remark.empty())
        remark(entry.remark);
    for (const Entry::Words& words : entry.before)
        command(words);
    Entry::Words words = entry.words;
    if (isWait) {
        words.emplace_back("within");
        words.push_back(number(std::ceil(std::min(gap, kLongestPause) + kPatience)));
    }
    command(std::move(words));
    for (const Entry::Words& after : entry.after)
        command(after);
}

void Writer::command(Entry::Words words)
{
    if (words.empty())
        return;
    for (std::string& word : words) {
        const base::GStr valid(g_utf8_make_valid(word.data(), static_cast<gssize>(word.size())));
        word = valid.get();
    }
    if (m_options.redacts)
        redact(words);
    std::string line = words.front();
    const bool isBare = words.size() == 2 && words.front() == "json" && words[1].rfind('{', 0) == 0
        && toWord(words[1]).front() != '$' && words[1].find_last_not_of(" \t\r") == words[1].size() - 1;
    for (size_t index = 1; index < words.size(); ++index)
        line += ' ' + (isBare ? words[index] : toWord(words[index]));
    m_text += line + '\n';
}

/// The arguments of a request, and the values of settings that name somebody.
void Writer::redact(Entry::Words& words)
{
    const std::string& name = words.front();
    if (name == "json")
        words[1] = m_redaction.json(words[1]);
    else if (name == "ShowFailedPopup" && (words[1] == "sso" || words[1] == "wifi"))
        return; // a step is no name
    else if (name.rfind("Show", 0) == 0)
        for (size_t index = 1; index < words.size(); ++index)
            words[index] = m_redaction.text(words[index]);
    else if (name == "set" && words[2] == kTvNameKey)
        words[3] = m_redaction.text(words[3]);
}

int failure(const std::string& problem)
{
    tools::complain("tessel-daemon-sim", problem);
    return kExitScenarioFailed;
}

} // namespace

std::optional<std::string> scenarioOf(std::istream& log, const FromLogOptions& options, std::string& problem)
{
    LogLines lines(log);
    Replay replay;
    while (const auto line = lines.next())
        replay.take(*line);
    const std::vector<Run> runs = replay.takeRuns();
    const size_t which = options.run == 0 ? runs.size() : options.run;
    if (runs.empty())
        problem = "no line of the program that asks for anything is in the log";
    else if (which > runs.size())
        problem = "the log has " + plural(runs.size(), "run") + " of the program";
    if (!problem.empty())
        return std::nullopt;
    return Writer(options, lines.condition()).write(runs[which - 1], which, runs.size());
}

int printScenarioOf(const FromLogOptions& options)
{
    std::ifstream file;
    if (options.file != "-")
        file.open(options.file, std::ios::binary);
    std::istream& input = options.file == "-" ? std::cin : file;
    if (!input.good() || input.peek() == std::char_traits<char>::eof())
        return failure("cannot read the log, or it is empty: " + options.file);
    std::string problem;
    const auto text = scenarioOf(input, options, problem);
    if (!text)
        return failure(options.file + ": " + problem);
    const bool isWritten =
        fwrite(text->data(), 1, text->size(), stdout) == text->size() && fflush(stdout) == 0;
    return isWritten ? kExitOk : failure("cannot write to standard output");
}

} // namespace DaemonSim
