// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Replay.h"

#include "Names.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <utility>

namespace DaemonSim {

namespace {

/// What the program logs where the key is missing.
constexpr int kDeviceOwnedUnset = -1;

constexpr size_t kMostEntries = 20000;

/// Between two things of which the log has no times.
constexpr double kGuessedPause = 2;

} // namespace

struct Replay::Rule {
    std::string_view function; ///< that writes the line
    std::string_view beginning; ///< of its message
    void (Replay::*handler)(const std::string& rest);
};

// The program's lines are the same in every version: people and tools search for them.
const Replay::Rule Replay::kRules[] = {
    {"OnCreate", "In CTesselUI::OnCreate", &Replay::begin},
    {"dbusServerStarted", "DBus server started = [", &Replay::serverStarted},
    {"m_OnMethodCall", "Call ", &Replay::called},
    {"showPinPopup", "Pin = ", &Replay::pinAsked},
    {"setMesg", "Set Meassge [", &Replay::pinTold},
    {"showGuidePopup", "Pin = ", &Replay::guideAsked},
    {"showGuidePopup", "Wizard app is not in foreground", &Replay::guideRefused},
    {"showGuideText", "showGuideText", &Replay::guideShown},
    {"showNetworkTestPopup", "Mobile Name = ", &Replay::networkAsked},
    {"createPopup", "AP Name :: ", &Replay::networkTold},
    {"showSSOLoginPopup", "Mobile Name = ", &Replay::signInAsked},
    {"setTextMobileName", "__SetTextMobileName pcMobileName[", &Replay::signInTold},
    {"showFailedPopup", "Failed step = ", &Replay::failureAsked},
    {"m_OnMethodPopup", "Vconf for POPUP TESSEL: [", &Replay::stored},
    {"m_OnMethodPopup", "parsingSuccessful[", &Replay::storedAgain},
    {"m_OnDeviceOwned", "DEVICE_OWNED_VCONF == ", &Replay::owned},
    {"m_OnTesselVconfKeyChanged", "Exiting APP", &Replay::ordered},
    {"m_IsReveseOSD", " the languagelocale is ", &Replay::language},
    {"IsHighContrastMode", "Is high", &Replay::contrastOn},
    {"IsHighContrastMode", "Not high", &Replay::contrastOff},
    {"GetBLETVName", "mobile name ", &Replay::tvName},
    {"t_OnKeyDown", "START", &Replay::keyPressed},
    {"handleReturnExitKey", "Exit Key", &Replay::backPressed},
    {"handleReturnExitKey", "Return Key", &Replay::closePressed},
    {"t_OnTimeout", "++PBC Timer Entered", &Replay::ticked},
    {"t_OnTimeout", "PBC Timer expires", &Replay::expired},
    {"stopTessel", "Stop Tessel", &Replay::stopping},
    {"sendMessageonDbus", "DBUS call failed: ", &Replay::callFailed},
    {"busClosed", "The connection", &Replay::busWent},
    {"startAgain", "The bus is back", &Replay::busCame},
    {"OnTerminate", "In CTesselUI::OnTerminate", &Replay::ended},
};

void Replay::take(const LogLine& line)
{
    if (line.seconds) {
        // A clock that is set back lets no time pass.
        if (m_hasTimes)
            m_now += std::max(0.0, *line.seconds - m_lastTime);
        m_lastTime = *line.seconds;
        m_hasTimes = true;
    }
    if (takeClick(line))
        return;
    for (const Rule& rule : kRules) {
        if (line.function == rule.function && line.message.rfind(rule.beginning, 0) == 0) {
            m_written = line.written.substr(rule.beginning.size());
            (this->*rule.handler)(line.message.substr(rule.beginning.size()));
            return;
        }
    }
}

std::vector<Run> Replay::takeRuns()
{
    dropKeys();
    if (!m_run.entries.empty() || m_run.hasBegun)
        m_runs.push_back(std::exchange(m_run, {}));
    return std::exchange(m_runs, {});
}

Entry& Replay::add(Entry::Words words, const std::string& remark)
{
    m_run.isFull = m_run.entries.size() >= kMostEntries;
    if (m_run.isFull)
        m_run.entries.pop_back();
    Entry entry;
    entry.seconds = m_now;
    entry.words = std::move(words);
    entry.remark = remark;
    m_run.entries.push_back(std::move(entry));
    return m_run.entries.back();
}

/// Without times, what follows on something that had been shown came a while later.
void Replay::passGuess()
{
    if (!m_hasTimes && !std::exchange(m_ticked, false) && !m_run.entries.empty())
        m_now += kGuessedPause;
}

void Replay::remember(const char* type, const char* key, const std::string& value)
{
    const Entry::Words words = {"set", type, key, value};
    const auto [known, isNew] = m_settings.emplace(key, value);
    if (isNew)
        m_run.settings.push_back(words);
    else if (known->second != value && !m_run.entries.empty())
        m_run.entries.back().before.push_back(words);
    known->second = value;
}

void Replay::begin(const std::string&)
{
    dropKeys();
    if (!m_run.entries.empty() || m_run.hasBegun)
        m_runs.push_back(std::move(m_run));
    m_run = {};
    m_run.hasBegun = true;
    m_source = Source::None;
    m_settings.clear();
    m_guideIsUp = m_isMirrored = m_hasExpired = m_isLeaving = m_ticked = false;
}

/// The first time is what every scenario begins with.
void Replay::serverStarted(const std::string&)
{
    if (!m_run.entries.empty())
        add({}, "The program told the daemon once more that it is there.");
}

// ---- the rest of what the daemon does, and what there is around the program

void Replay::owned(const std::string& rest)
{
    m_source = Source::None;
    int value = 0;
    const auto parsed = std::from_chars(rest.data(), rest.data() + rest.size(), value);
    if (parsed.ec != std::errc() || parsed.ptr != rest.data() + rest.size())
        return; // cut
    if (value == kDeviceOwned)
        addRequest({"owned"});
    else if (value == kDeviceOwnedUnset)
        addRequest({"unset", kDeviceOwnedKey});
    else
        addRequest({"set", "int", kDeviceOwnedKey, rest});
}

void Replay::ordered(const std::string&)
{
    dropKeys();
    passGuess();
    add({"end"});
    m_isLeaving = true;
}

void Replay::language(const std::string& rest)
{
    const std::string locale = rest.substr(0, rest.find_last_not_of(' ') + 1);
    constexpr std::array<std::string_view, 5> kFromTheRight = {"ar", "fa", "he", "iw", "ur"};
    m_isMirrored = std::any_of(kFromTheRight.begin(), kFromTheRight.end(),
        [&](std::string_view each) { return locale.substr(0, locale.find_first_of("_.@-")) == each; });
    remember("string", kLanguageKey, locale);
}

void Replay::contrastOn(const std::string&)
{
    remember("int", kContrastKey, "1");
}

/// At first that is what there is without the key.
void Replay::contrastOff(const std::string&)
{
    if (!m_settings.emplace(kContrastKey, "0").second)
        remember("int", kContrastKey, "0");
}

void Replay::tvName(const std::string& rest)
{
    if (rest != "(null)")
        remember("string", kTvNameKey, rest);
}

void Replay::ticked(const std::string&)
{
    if (!m_hasTimes)
        m_now += 1;
    m_ticked = true;
}

void Replay::expired(const std::string&)
{
    m_hasExpired = true;
}

void Replay::stopping(const std::string&)
{
    const bool isViewers = !std::exchange(m_hasExpired, false);
    add({"wait", "StopTessel", isViewers ? "true" : "false", "false"});
    m_isLeaving = m_isLeaving || isViewers;
}

/// What leads to the call must find the daemon as it was.
void Replay::callFailed(const std::string& rest)
{
    std::vector<Entry>& entries = m_run.entries;
    if (entries.empty() || entries.back().words.size() < 2 || entries.back().words[1] != "StopTessel") {
        add({}, "The daemon did not take a call of the program's.");
        return;
    }
    const bool isSilent = rest.find("imeout") != std::string::npos;
    entries.back().after.push_back({"behave", "normal"});
    const auto isPress = [](const Entry& entry) {
        return !entry.words.empty() && entry.words.front() == "viewer";
    };
    const size_t back = entries.size() > 1 && isPress(entries[entries.size() - 2]) ? 2 : 1;
    entries[entries.size() - back].before.push_back({"behave", isSilent ? "silent" : "refuse"});
}

void Replay::busWent(const std::string&)
{
    add({}, "Here the bus went, which no scenario can do.");
}

void Replay::busCame(const std::string&)
{
    add({}, "Here the bus was back.");
}

void Replay::ended(const std::string&)
{
    dropKeys();
    if (!m_isLeaving)
        add({"end"}, "Something outside ended the program here, a signal for instance; this stands for it.");
    add({"wait", "gone"});
    m_run.hasEnded = true;
    m_source = Source::None;
}

} // namespace DaemonSim
