/// The states of the popups that are pictured, in the order in which they follow from one another.
#pragma once

#include "UIManager.h"

#include <string>
#include <vector>

namespace gallery {

/// How a state comes about, from the one before it in the list.
enum class Step {
    Show, ///< by showing a popup
    Wait, ///< by itself, after a while
    Press, ///< the focused button is pressed
    Next, ///< the key that points at the next button in reading direction
    Previous, ///< and the opposite one
};

/// Names that the daemon would give.
struct Names {
    std::string phone = "Anna’s phone";
    std::string pin = "042719";
    std::string network = "Lakeside (5 GHz)";
    std::string account = "anna.lake@example.com";
};

struct State {
    std::string name; ///< of the picture's file
    Step step = Step::Show;
    void (*show)(TesselUI::UIManager& manager, Names names) = nullptr; ///< for Step::Show
    const char* focusedId = nullptr; ///< text id of the button that has the keys then
    Names names {};
    bool hasAwkwardNames = false; ///< which may be longer than there is room for
    bool hasMarkup = false; ///< in a name
};

std::vector<State> states(bool awkwardNames);

} // namespace gallery
