/// The screen reader's part of the widget set.
#pragma once

#include <Elementary.h>
#include <gio/gio.h>

#include <memory>
#include <string>

namespace orbis::flux {

/// Speaks the focused widget while the setting "db/menu/system/accessibility/screenreader" is 1. What is
/// said is the widget's own information text; a new one interrupts the one before. With ORBIS_SPEECH_LOG set,
/// each is appended to that file as one line instead. Never blocks and never fails towards its caller.
class Readout {
public:
    /// Asks @p widget (nullable) for its text, once, and speaks it. Nothing when the reader is off.
    void speakFocused(Evas_Object* widget);

private:
    void speak(const std::string& text);

    struct ProcessDeleter {
        void operator()(GSubprocess* process) const { g_object_unref(process); }
    };
    /// Hands the last text over, or has done so.
    std::unique_ptr<GSubprocess, ProcessDeleter> m_client;
};

} // namespace orbis::flux
