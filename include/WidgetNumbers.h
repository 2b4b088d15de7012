// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Numbers of the styled widgets as this program's contract has them. The widget set has names of its own for
/// them, which differ from one platform to the next.
#pragma once

#include <elm_flux.h>

namespace TesselUI {

inline constexpr auto kDefaultStyle = static_cast<Elm_Flux_Popup_Style>(0);
inline constexpr auto kGuideStyle = static_cast<Elm_Flux_Popup_Style>(1);
inline constexpr auto kDefaultButton = static_cast<Elm_Flux_Button_Style>(0);

inline constexpr auto kStacked = static_cast<Elm_Flux_Layout_Type>(1);
inline constexpr auto kRow = static_cast<Elm_Flux_Layout_Type>(2);

inline constexpr auto kAlignCentre = static_cast<Elm_Flux_Textbox_Align>(3);
inline constexpr auto kAlignOneLine = static_cast<Elm_Flux_Textbox_Align>(8);
inline constexpr auto kAlignLeft = static_cast<Elm_Flux_Textbox_Align>(10);
inline constexpr auto kAlignRight = static_cast<Elm_Flux_Textbox_Align>(11);

inline constexpr auto kDigits = static_cast<Elm_Flux_Textbox_Size>(8);
inline constexpr auto kBody = static_cast<Elm_Flux_Textbox_Size>(11);
inline constexpr auto kSecondary = static_cast<Elm_Flux_Textbox_Size>(13);

inline constexpr auto kKeepSize = static_cast<Elm_Flux_Responsive_Rule>(0);
inline constexpr auto kShrinkLine = static_cast<Elm_Flux_Responsive_Rule>(1);
inline constexpr auto kWrap = static_cast<Elm_Flux_Responsive_Rule>(2);

inline constexpr auto kTooltipHint = static_cast<Elm_Flux_Tooltip_Style>(2);
inline constexpr auto kTooltipBelow = static_cast<Elm_Flux_Tooltip_Orient>(4);

inline constexpr auto kSmallSpinner = static_cast<Elm_Flux_Progressbar_Style>(5);

} // namespace TesselUI
