// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The viewer's part: keys and buttons.
#include "Replay.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace DaemonSim {

namespace {

/// How long after a key was pressed its button acts, at most.
constexpr double kKeyToClick = 1;

} // namespace

/// A button that acted, and where the focus must have been.
struct Replay::Click {
    std::string_view function;
    std::string_view beginning; ///< of the message
    int buttons; ///< of the popup
    int start; ///< the button with the focus when the popup appeared, from 0
    int target;
};

const Replay::Click Replay::kClicks[] = {
    {"t_Button1Clicked", "Clos Button", 2, 0, 0},
    {"t_Button2Clicked", "Close Button", 2, 0, 1},
    {"t_CenterButtonClicked", "Close Button", 1, 0, 0},
    {"cancelBtnCB", "clicked on", 1, 0, 0},
    {"yesBtnCB", "clicked on", 2, 0, 0},
    {"noBtnCb", "clicked on", 2, 0, 1},
    {"m_OnCancelButtonClicked", "START", 1, 0, 0},
    {"m_OnYesButtonClicked", "START", 2, 1, 0}, // No is the first choice there
    {"m_OnNoButtonClicked", "START", 2, 1, 1},
};

bool Replay::takeClick(const LogLine& line)
{
    for (const Click& click : kClicks) {
        if (line.function == click.function && line.message.rfind(click.beginning, 0) == 0) {
            clicked(click);
            return true;
        }
    }
    return false;
}

void Replay::keyPressed(const std::string&)
{
    m_keys.push_back({m_now, ""});
}

void Replay::backPressed(const std::string&)
{
    if (m_keys.empty() || !m_keys.back().name.empty())
        keyPressed("");
    m_keys.back().name = "XF86Back";
}

void Replay::closePressed(const std::string&)
{
    if (m_keys.empty() || !m_keys.back().name.empty())
        keyPressed("");
    m_keys.back().name = "XF86Close";
}

void Replay::clicked(const Click& click)
{
    const double now = m_now;
    // The key that the button acted on stands in front of it.
    if (!m_keys.empty() && m_keys.back().name.empty() && now - m_keys.back().seconds < kKeyToClick)
        m_keys.pop_back();
    moveFocus(click);
    press(now, "Return");
    m_guideIsUp = false;
}

/// Where the log names no key, the button that acted tells where the focus was: of two buttons, every key
/// that is not named moved it to the other one.
void Replay::moveFocus(const Click& click)
{
    std::vector<Key> keys = std::exchange(m_keys, {});
    const auto isUnnamed = [](const Key& key) { return key.name.empty(); };
    const auto unnamed = std::count_if(keys.begin(), keys.end(), isUnnamed);
    if (click.buttons == 1) {
        m_run.unknownKeys += static_cast<size_t>(unnamed);
        keys.erase(std::remove_if(keys.begin(), keys.end(), isUnnamed), keys.end());
    } else if ((unnamed % 2 != 0) != (click.start != click.target)) {
        if (unnamed > 0) {
            keys.erase(std::find_if(keys.begin(), keys.end(), isUnnamed));
            ++m_run.unknownKeys;
        } else {
            const double before = m_run.entries.empty() ? m_now : m_run.entries.back().seconds;
            keys.push_back({(before + m_now) / 2, ""});
            ++m_run.guessedMoves;
        }
    }
    int focus = click.start;
    for (const Key& key : keys) {
        if (isUnnamed(key))
            focus = 1 - focus;
        press(key.seconds, !isUnnamed(key) ? key.name : (focus == 1) != m_isMirrored ? "Right" : "Left");
    }
}

/// Keys that led to no button: in the guide they moved the focus, elsewhere there is nothing to move.
void Replay::dropKeys()
{
    int focus = 0;
    for (const Key& key : std::exchange(m_keys, {})) {
        if (!key.name.empty()) {
            press(key.seconds, key.name);
        } else if (m_guideIsUp) {
            focus = 1 - focus;
            press(key.seconds, (focus == 1) != m_isMirrored ? "Right" : "Left");
        } else {
            ++m_run.unknownKeys;
        }
    }
}

void Replay::press(double seconds, const std::string& key)
{
    passGuess();
    Entry& entry = add({"viewer", "press", key});
    if (m_hasTimes)
        entry.seconds = seconds;
    ++m_run.presses;
}

} // namespace DaemonSim
