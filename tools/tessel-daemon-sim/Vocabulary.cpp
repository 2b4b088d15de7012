// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Vocabulary.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace DaemonSim {

namespace {

using Words = std::vector<std::string>;

constexpr double kMaxSeconds = 24 * 60 * 60;

struct EventRow {
    std::string_view name;
    EventKind kind;
    size_t flagCount;
};

constexpr std::array<EventRow, 4> kEvents = {{
    {"ServerStarted", EventKind::ServerStarted, 1},
    {"StopTessel", EventKind::StopTessel, 2},
    {"ui", EventKind::UiAppeared, 0},
    {"gone", EventKind::UiVanished, 0},
}};

struct BehaviourRow {
    std::string_view name;
    Behaviour::Kind kind;
};

constexpr std::array<BehaviourRow, 6> kBehaviours = {{
    {"normal", Behaviour::Kind::Normal},
    {"refuse", Behaviour::Kind::Refuse},
    {"dawdle", Behaviour::Kind::Dawdle},
    {"wrong-type", Behaviour::Kind::WrongType},
    {"silent", Behaviour::Kind::Silent},
    {"vanish", Behaviour::Kind::Vanish},
}};

struct ViaRow {
    std::string_view name;
    Via via;
};

constexpr std::array<ViaRow, 2> kVias = {{
    {"bus", Via::Bus},
    {"settings", Via::Settings},
}};

template <typename Rows, typename Key, typename Field>
auto findRow(const Rows& rows, const Key& key, Field field)
{
    const auto row = std::find_if(rows.begin(), rows.end(), [&](const auto& r) { return r.*field == key; });
    return row == rows.end() ? nullptr : &*row;
}

template <typename Rows>
Words namesOf(const Rows& rows)
{
    Words names;
    for (const auto& row : rows)
        names.emplace_back(row.name);
    return names;
}

} // namespace

Words eventWords()
{
    return namesOf(kEvents);
}

Words behaviourWords()
{
    return namesOf(kBehaviours);
}

std::optional<Event> takeEvent(const Words& words, size_t& position, size_t end)
{
    const EventRow* row = findRow(kEvents, words[position++], &EventRow::name);
    if (!row)
        return std::nullopt;
    Event event {row->kind, {}};
    while (position < end && (words[position] == "true" || words[position] == "false"))
        event.flags.push_back(words[position++] == "true");
    if (!event.flags.empty() && event.flags.size() != row->flagCount)
        return std::nullopt;
    return event;
}

std::optional<Behaviour> parseBehaviour(const Words& words)
{
    const BehaviourRow* row = words.empty() ? nullptr : findRow(kBehaviours, words[0], &BehaviourRow::name);
    if (!row)
        return std::nullopt;
    Behaviour behaviour {row->kind, 0};
    if (row->kind != Behaviour::Kind::Dawdle)
        return words.size() == 1 ? std::optional(behaviour) : std::nullopt;
    const auto seconds = words.size() == 2 ? parseSeconds(words[1]) : std::nullopt;
    behaviour.seconds = seconds.value_or(0);
    return seconds ? std::optional(behaviour) : std::nullopt;
}

std::optional<Via> parseVia(std::string_view text)
{
    const ViaRow* row = findRow(kVias, text, &ViaRow::name);
    return row ? std::optional(row->via) : std::nullopt;
}

std::optional<double> parseSeconds(std::string_view text)
{
    double seconds = 0;
    const char* end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, seconds, std::chars_format::fixed);
    if (error != std::errc() || rest != end || !std::isfinite(seconds) || seconds < 0
        || seconds > kMaxSeconds)
        return std::nullopt;
    return seconds;
}

std::string toText(const Behaviour& behaviour)
{
    const std::string name(findRow(kBehaviours, behaviour.kind, &BehaviourRow::kind)->name);
    char seconds[32] = "";
    if (behaviour.kind == Behaviour::Kind::Dawdle)
        snprintf(seconds, sizeof seconds, " %g", behaviour.seconds);
    return name + seconds;
}

std::string toText(const Event& event)
{
    std::string text(findRow(kEvents, event.kind, &EventRow::kind)->name);
    for (const bool flag : event.flags)
        text += flag ? " true" : " false";
    return text;
}

std::string toText(Via via)
{
    return std::string(findRow(kVias, via, &ViaRow::via)->name);
}

} // namespace DaemonSim
