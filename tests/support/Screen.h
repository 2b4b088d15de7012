/// What a program has on the screen, as its toolkit tells it.
#ifndef TESSEL_TESTS_SCREEN_H
#define TESSEL_TESTS_SCREEN_H

#include "Picture.h"

#include <optional>
#include <string>
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
        return title == other.title && texts == other.texts && buttons == other.buttons
            && focus == other.focus;
    }
};

struct Screen {
    bool visible = false; ///< the window
    int leftover = 0; ///< hidden popups, and buttons that are in no visible popup
    std::vector<Card> cards; ///< lowest first
    int pictures = 0; ///< how many were drawn since the screen was asked for last
    Geometry drawn; ///< what is around all that was drawn in them; no width when that was nothing

    /// @return whether it shows these cards, lowest first, and nothing is left over; none: no window either
    bool shows(const std::vector<Card>& expected) const;
    std::string description() const;
};

/// A line for each.
std::string describe(const std::vector<Card>& cards);

/// Asks the probe that listens at @p socket, while GLib's main context runs.
/// @return nothing when the program does not answer
std::optional<Screen> askProbe(const std::string& socket);
/// The same, once the program has dealt with all that had come to it before and has drawn what that changed.
std::optional<Screen> askProbeWhenDrawn(const std::string& socket);

} // namespace tv

#endif
