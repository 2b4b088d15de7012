// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Checks of objects that come from the application.
#pragma once

#include <Elementary.h>

namespace orbis::flux {

/// @return whether @p object is a widget, and neither null nor deleted nor being deleted
bool isUsable(const Evas_Object* object);

/// @return whether @p item can be put into @p container: usable, no window, no popup, and not the container
///         itself or something around it
bool canHold(const Evas_Object* container, const Evas_Object* item);

/// Keeps the toolkit from turning @p widget round when the language changes: what the viewer has before him
/// stays as it is. Its direction is that of the present language, or of @p model.
/// @param model  nullable
void keepDirection(Evas_Object* widget, const Evas_Object* model = nullptr);

/// The same, if @p parent lies in something that keeps its direction.
void keepDirectionOf(const Evas_Object* parent, Evas_Object* widget);

} // namespace orbis::flux
