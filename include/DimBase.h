// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Dimmed backdrop of a popup.
#pragma once

#include <Elementary.h>

namespace TesselUI {

/// A layout of the theme group "dim" that covers the window, made by Show() and deleted by Hide(). Held by
/// value by the popup it belongs to; the owner calls Hide() before it goes. Main loop only.
class CDimBase {
public:
    /// @param parent  borrowed, nullable
    explicit CDimBase(Evas_Object* parent);
    ~CDimBase() = default;

    void Show();
    void Hide();

private:
    Evas_Object* m_layout = nullptr; ///< owned, null until Show()
    Evas_Object* m_parent;
};

} // namespace TesselUI
