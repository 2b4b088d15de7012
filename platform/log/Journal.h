// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The system's journal.
#pragma once

#include <string_view>

namespace orbis::log {

/// Sends one message, of any length, and never waits for the journal.
/// @param priority  syslog's number
/// @return 0 or a negative errno value: -EAGAIN when the journal does not keep up
int sendToJournal(std::string_view priority, std::string_view identifier, std::string_view message);

} // namespace orbis::log
