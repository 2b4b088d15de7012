/// When the focused widget is read out.
#pragma once

#include "base/EflHandles.h"
#include "flux/Readout.h"

namespace orbis::flux {

/// Has the focused widget of a window read out, once for each time that the focus comes to it while a popup
/// is up. Must go before its window. Main loop only.
class FocusReadout {
public:
    explicit FocusReadout(Evas_Object* window)
        : m_window(window)
    {
    }
    FocusReadout(const FocusReadout&) = delete;
    FocusReadout& operator=(const FocusReadout&) = delete;

    /// The focus came to a button. It is looked at once the loop is idle again.
    void focusMoved();

    /// The focus left a button. When the whole window lost the keys, the button still has the focus in it.
    void focusLeft();

    /// Ends what is being said.
    void stop() { m_readout.stop(); }

private:
    static void on_focusJob(void* data);

    void readFocused();

    Evas_Object* m_window; ///< borrowed
    const Evas_Object* m_spoken = nullptr; ///< borrowed, only compared: was read out and still has the focus
    Readout m_readout;
    base::JobPtr m_focusJob; ///< let go by the job itself
};

} // namespace orbis::flux
