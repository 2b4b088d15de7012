// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Writes to the settings store, each reported as an event.
#pragma once

#include <string>
#include <vector>

namespace DaemonSim {

class EventLog;

/// @return false when the store refused; that is reported as an error.
bool writeInt(EventLog& log, const std::string& key, int value);
bool writeString(EventLog& log, const std::string& key, const std::string& value);

/// Removes a key. One that does not exist counts as removed.
bool removeKey(EventLog& log, const std::string& key);

/// @return the keys that the UI knows and those that are in the store.
std::vector<std::string> settingsKeys();

} // namespace DaemonSim
