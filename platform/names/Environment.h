// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The variables of the environment that are the platform's own.
#pragma once

namespace orbis::names {

inline constexpr const char* kStateFolderVariable = "ORBIS_STATE_DIR"; ///< in place of kStateFolder
inline constexpr const char* kRuntimeFolderVariable = "ORBIS_RUNTIME_DIR"; ///< in place of kRuntimeFolder
inline constexpr const char* kWizardVariable = "ORBIS_WIZARD"; ///< in place of kWizard
inline constexpr const char* kSpeechLogVariable =
    "ORBIS_SPEECH_LOG"; ///< file that takes what would be spoken

} // namespace orbis::names
