// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The daemon's requests, of which each takes several lines of the log.
#include "Names.h"
#include "Replay.h"
#include "Unescape.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <tuple>
#include <utility>

namespace DaemonSim {

namespace {

constexpr std::string_view kBetweenPhoneAndNetwork = " AP Name = ";
constexpr std::string_view kBetweenPhoneAndAccount = ", Login ID  Name = ";
constexpr std::string_view kBetweenPinAndPhone = "] Mobile Name =  [";

bool endsWith(std::string_view text, std::string_view end)
{
    return text.size() >= end.size() && text.substr(text.size() - end.size()) == end;
}

/// @return the text without its last character, a bracket that the message closes
std::string withoutBracket(const std::string& text)
{
    return text.substr(0, text.rfind(']'));
}

/// @return both parts of "FIRST<between>SECOND"
std::pair<std::string, std::string> split(const std::string& text, std::string_view between)
{
    const size_t end = text.find(between);
    return end == std::string::npos ? std::pair(text, std::string())
                                    : std::pair(text.substr(0, end), text.substr(end + between.size()));
}

/// In a request's strings a backslash is the request's own; elsewhere none can stand, and it is the log's.
std::string unescapedAroundStrings(const std::string& json)
{
    std::string result;
    size_t escapes = 0;
    for (size_t index = 0; index < json.size();) {
        size_t end = std::min(json.find('"', index), json.size());
        result += unescapedLog(json.substr(index, end - index), escapes);
        for (index = end++; end < json.size() && json[end] != '"'; ++end)
            end += json[end] == '\\' ? 1 : 0;
        end = std::min(end + 1, json.size());
        result += json.substr(index, end - index);
        index = end;
    }
    return result;
}

} // namespace

void Replay::addRequest(Entry::Words words)
{
    dropKeys();
    passGuess();
    m_guideIsUp = false;
    m_isFilled = false;
    ++m_run.requests;
    add(std::move(words));
    m_request = m_run.entries.size() - 1;
}

/// @return the request over the bus whose lines are being read, if it is such a one
Entry::Words* Replay::requestUnderWay(const char* method)
{
    if (m_source != Source::Bus || m_request >= m_run.entries.size())
        return nullptr;
    Entry::Words& words = m_run.entries[m_request].words;
    return !words.empty() && words.front() == method ? &words : nullptr;
}

/// @return the same, to be filled; a new one when the line that tells of the call was lost
Entry::Words* Replay::asked(const char* method, size_t arguments)
{
    if (!requestUnderWay(method) || m_isFilled) {
        Entry::Words words(arguments + 1);
        words.front() = method;
        addRequest(std::move(words));
        m_source = Source::Bus;
    }
    m_isFilled = true;
    return requestUnderWay(method);
}

/// Each request of the store shows one popup, whose arguments its own line has told already.
bool Replay::isFromStore()
{
    return m_source == Source::Store && (m_source = Source::None) == Source::None;
}

void Replay::called(const std::string& rest)
{
    struct Method {
        std::string_view name;
        size_t arguments;
    };
    constexpr std::array<Method, 8> kMethods = {
        {{"ShowMobileGuide", 1}, {"ShowNetworkTest", 2}, {"ShowSSOLoginPopup", 2}, {"ShowPinPopup", 2},
            {"ShowFailedPopup", 1}, {"ShowTnCPopup", 0}, {"ShowApListPopup", 0}, {"HidePopup", 0}}};
    const std::string name = rest.substr(0, rest.rfind(" method"));
    const auto* method =
        std::find_if(kMethods.begin(), kMethods.end(), [&](const Method& each) { return each.name == name; });
    m_source = Source::None;
    if (method == kMethods.end()) {
        add({}, "Here came a call of a method that the program does not have.");
        return;
    }
    Entry::Words words(method->arguments + 1);
    words.front() = name;
    addRequest(std::move(words));
    m_source = Source::Bus;
}

void Replay::pinAsked(const std::string& rest)
{
    if (!isFromStore())
        asked("ShowPinPopup", 2)->at(2) = rest;
}

/// The PIN is known by then, so that whatever stands in the names, it is clear where they begin.
void Replay::pinTold(const std::string& rest)
{
    Entry::Words* words = requestUnderWay("ShowPinPopup");
    if (!words)
        return;
    const std::string beginning = words->at(2) + std::string(kBetweenPinAndPhone);
    if (rest.rfind(beginning, 0) == 0)
        words->at(1) = withoutBracket(rest.substr(beginning.size()));
}

void Replay::guideAsked(const std::string& rest)
{
    if (!isFromStore())
        asked("ShowMobileGuide", 1)->at(1) = rest;
}

void Replay::guideShown(const std::string&)
{
    m_guideIsUp = true;
}

/// Any mode in which no wizard is up does the same.
void Replay::guideRefused(const std::string&)
{
    if (m_request >= m_run.entries.size())
        return;
    Entry& request = m_run.entries[m_request];
    request.before.push_back({"set", "string", kWizardModeKey, "OFF"});
    request.after.push_back({"set", "string", kWizardModeKey, "INITIAL_SETUP"});
}

void Replay::networkAsked(const std::string& rest)
{
    if (isFromStore())
        return;
    Entry::Words& words = *asked("ShowNetworkTest", 2);
    std::tie(words[1], words[2]) = split(rest, kBetweenPhoneAndNetwork);
    m_pair = rest;
}

void Replay::networkTold(const std::string& rest)
{
    Entry::Words* words = requestUnderWay("ShowNetworkTest");
    const std::string end = std::string(kBetweenPhoneAndNetwork) + rest;
    if (!words || !endsWith(m_pair, end))
        return;
    words->at(1) = m_pair.substr(0, m_pair.size() - end.size());
    words->at(2) = rest;
}

void Replay::signInAsked(const std::string& rest)
{
    if (isFromStore())
        return;
    Entry::Words& words = *asked("ShowSSOLoginPopup", 2);
    std::tie(words[1], words[2]) = split(rest, kBetweenPhoneAndAccount);
    m_pair = rest;
}

void Replay::signInTold(const std::string& rest)
{
    Entry::Words* words = requestUnderWay("ShowSSOLoginPopup");
    const std::string phone = withoutBracket(rest);
    const std::string beginning = phone + std::string(kBetweenPhoneAndAccount);
    if (!words || m_pair.rfind(beginning, 0) != 0)
        return;
    words->at(1) = phone;
    words->at(2) = m_pair.substr(beginning.size());
}

void Replay::failureAsked(const std::string& rest)
{
    if (!isFromStore())
        asked("ShowFailedPopup", 1)->at(1) = rest;
}

void Replay::stored(const std::string&)
{
    storedText(withoutBracket(m_written));
}

void Replay::storedText(const std::string& written)
{
    addRequest({"json", unescapedAroundStrings(written)});
    m_source = Source::Store;
}

/// The same text once more, for a log without the level at which it stands first.
void Replay::storedAgain(const std::string&)
{
    const std::string written = withoutBracket(split(m_written, "]  root [").second);
    const bool isTold = m_request < m_run.entries.size() && m_source == Source::Store
        && m_run.entries[m_request].words == Entry::Words {"json", unescapedAroundStrings(written)};
    if (!isTold)
        storedText(written);
}

} // namespace DaemonSim
