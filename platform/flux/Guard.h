// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Keeps exceptions inside the library.
#pragma once

#include <Eina.h>

#include <exception>

namespace orbis::flux {

/// Runs what stands behind a C function of the widgets.
/// @return the action's result, or EINA_FALSE when there was no memory for it
template <typename Action>
Eina_Bool guarded(const Action& action) noexcept
{
    try {
        return action();
    } catch (const std::exception&) {
        return EINA_FALSE;
    }
}

} // namespace orbis::flux
