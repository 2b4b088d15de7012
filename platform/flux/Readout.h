/// The screen reader's part of the widget set.
#pragma once

#include "flux/Speech.h"
#include "vconf.h"

#include <Elementary.h>

#include <memory>
#include <string>

namespace orbis::flux {

/// Speaks the focused widget while the setting "db/menu/system/accessibility/screenreader" is 1. What is
/// said is the widget's own information text; a new one interrupts the one before. With ORBIS_SPEECH_LOG set,
/// each is appended to that file as one line instead. Main loop only. Never blocks and never fails towards
/// its caller.
class Readout {
public:
    Readout() = default;
    ~Readout();
    Readout(const Readout&) = delete;
    Readout& operator=(const Readout&) = delete;

    /// Asks @p widget (nullable) for its text, once, and speaks it. Nothing when the reader is off.
    void speakFocused(Evas_Object* widget);

    /// Ends what is being said: it is of a popup that is gone or covered.
    void stop();

private:
    static void on_readerChanged(keynode_t* node, void* data);

    void speak(const std::string& text);

    std::unique_ptr<Speech> m_speech; ///< from the first utterance on; the reader's setting is watched then
};

} // namespace orbis::flux
