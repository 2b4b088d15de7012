// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Keeps the fonts of the widgets while no popup is up.
#pragma once

#include "base/EflHandles.h"

#include <string>
#include <vector>

namespace orbis::flux {

/// The toolkit forgets a font with the last text that is written in it: for each popup all of them were
/// looked for, opened and their letters read anew, which took more than all else until it could be drawn. A
/// text of each kind that is never shown keeps them. They are made when nothing is to be done, and made anew
/// when the language or a size has become another one, and once in a while, because the letters of all names
/// that came by stay with the fonts. Belongs to one canvas and must go before it. Main loop only.
class WarmFonts {
public:
    explicit WarmFonts(Evas_Object* window);
    ~WarmFonts();
    WarmFonts(const WarmFonts&) = delete;
    WarmFonts& operator=(const WarmFonts&) = delete;

    /// A popup has been deleted.
    void popupGone();

private:
    static Eina_Bool on_time(void* data);

    void wait();
    void make();
    void addText(
        const std::string& style, const std::string& added, double scale, const std::string& letters);

    Evas* m_canvas; ///< borrowed
    Ecore_Timer* m_timer = nullptr; ///< cleared by the timer itself
    std::vector<base::ObjectPtr> m_texts;
    std::string m_madeFor; ///< the language and the sizes
    int m_popups = 0; ///< since they were made
};

} // namespace orbis::flux
