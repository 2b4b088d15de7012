// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The screen reader's part of the widget set.
#pragma once

#include "flux/Speech.h"
#include "vconf.h"

#include <functional>
#include <memory>
#include <string>

namespace orbis::flux {

/// Speaks while the setting "db/menu/system/accessibility/screenreader" is 1. With ORBIS_SPEECH_LOG set, what
/// would be spoken is appended to that file instead, an utterance a line. Main loop only. Never blocks and
/// never fails towards its caller.
class Readout {
public:
    /// @param switched  called after the reader was turned on or off; also when it is written as it was
    explicit Readout(std::function<void()> switched);
    ~Readout();
    Readout(const Readout&) = delete;
    Readout& operator=(const Readout&) = delete;

    /// As the setting is now; what is told of its changes comes later.
    static bool isOn();

    /// Says @p text, as one line, in the place of what is being said.
    void say(const std::string& text) { speak(text, true); }
    /// Says @p text behind what is being said.
    void add(const std::string& text) { speak(text, false); }
    /// Ends what is being said: it is of a popup that is gone or covered.
    void stop();

private:
    static void on_switched(keynode_t* node, void* data);

    void speak(const std::string& text, bool interrupts);

    std::function<void()> m_switched;
    std::unique_ptr<Speech> m_speech; ///< from the first utterance on
};

} // namespace orbis::flux
