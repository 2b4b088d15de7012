// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The picture behind the managed window, darkened at the application's wish.
#pragma once

#include "base/EflHandles.h"

namespace orbis::flux {

/// Keeps a layer over the whole window while the application wants it dimmed. A popup may go without
/// undimming, so a lowered window is not dimmed either: it may not be hidden. Must go before its window.
class Dimming {
public:
    explicit Dimming(Evas_Object* window);
    ~Dimming();
    Dimming(const Dimming&) = delete;
    Dimming& operator=(const Dimming&) = delete;

    /// What the application wants, for whenever the window is not lowered.
    void setWanted(bool wanted);
    bool isWanted() const { return m_isWanted; }

    void setLowered(bool lowered);

private:
    static void on_windowResized(void* data, Evas*, Evas_Object*, void*);

    void update();
    void fit();

    Evas_Object* m_window; ///< borrowed
    base::ObjectPtr m_layer; ///< child of the window; made when first needed
    bool m_isWanted = false;
    bool m_isLowered = false;
};

} // namespace orbis::flux
