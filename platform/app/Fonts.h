// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The fonts of the texts.
#pragma once

#include <Ecore.h>

namespace orbis::app {

/// Tells the toolkit where fonts, and the family names that texts carry, are described. When the description
/// is missing or damaged, that is said in the log, and texts have the machine's own fonts. To be called
/// before the toolkit starts; what the environment says already is left alone.
void chooseFonts();

/// Finds out, a moment after the start, whether the texts' family stands for a font that is there, and says
/// in the log when it does not. Asking costs more than a start has time for. Main loop only.
class FontCheck {
public:
    FontCheck();
    ~FontCheck();
    FontCheck(const FontCheck&) = delete;
    FontCheck& operator=(const FontCheck&) = delete;

private:
    static Eina_Bool on_time(void* data);

    Ecore_Timer* m_timer; ///< cleared by the timer itself
};

} // namespace orbis::app
