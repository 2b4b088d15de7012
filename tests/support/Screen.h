// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What a program has on the screen, as its toolkit tells it.
#ifndef TESSEL_TESTS_SCREEN_H
#define TESSEL_TESTS_SCREEN_H

#include <optional>
#include <string>
#include <tuple>
#include <vector>

namespace tv {

/// A popup, as the viewer reads it.
struct Card {
    std::string title;
    std::vector<std::string> texts; ///< from top to bottom, without empty ones
    std::vector<std::string> buttons; ///< in the order of their slots
    std::string focus; ///< the button that the keys act on, empty for none of its

    bool operator==(const Card& other) const
    {
        return std::tie(title, texts, buttons, focus)
            == std::tie(other.title, other.texts, other.buttons, other.focus);
    }
};

struct Screen {
    bool visible = false; ///< the window
    int leftover = 0; ///< hidden popups, and buttons that are in no visible popup
    std::vector<Card> cards; ///< lowest first
    long pictures = 0; ///< how many were drawn since the screen was asked for last
    long pixels = 0; ///< how many were drawn in them

    /// @return whether it shows these cards, lowest first, and nothing is left over; none: no window either
    bool shows(const std::vector<Card>& expected) const;
    std::string description() const;
};

/// A line for each.
std::string describe(const std::vector<Card>& cards);

/// Asks the probe that listens at @p socket. It answers once the program has dealt with all that had come to
/// it before and has drawn what that changed.
/// @return nothing when the program does not answer
std::optional<Screen> askProbe(const std::string& socket);

} // namespace tv

#endif
