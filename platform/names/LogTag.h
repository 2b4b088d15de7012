// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Who speaks in the log.
#pragma once

namespace orbis::names {

/// The tag of the platform's own lines; those of the application have its own.
inline constexpr const char* kLogTag = "orbis-platform";

} // namespace orbis::names
