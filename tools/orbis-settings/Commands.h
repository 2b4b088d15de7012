// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The commands of orbis-settings. Each gets the arguments after its name and returns an exit status.
#pragma once

#include "options/CommandLine.h"

#include <optional>
#include <string>
#include <vector>

enum ExitStatus { kSuccess = 0, kFailure = 1 }; // and tools::kWrongUsage

inline constexpr char kToolName[] = "orbis-settings";

using Arguments = std::vector<std::string>;

int setCommand(const Arguments& arguments);
int getCommand(const Arguments& arguments);
int listCommand(const Arguments& arguments);
int unsetCommand(const Arguments& arguments);
int watchCommand(const Arguments& arguments);
int batchCommand(const Arguments& arguments);
int dumpCommand(const Arguments& arguments);
int restoreCommand(const Arguments& arguments);

/// Carries out a line of a batch: a command with its arguments, quoted as in a shell. @return its exit status
int runLine(const std::string& line);

/// @return the command line of a command. What follows its first argument is no option: a value may begin
/// with "-".
tools::CommandLine commandLine(const char* command, const char* parameters);

/// Prints each change of the keys until a signal comes or nobody reads. @return the exit status
int watch(const Arguments& keys);

/// Names the failure on standard error, with errno's reason when there is one. @return kFailure
int failure(const std::string& problem, int error);

/// @return the value as text, or nothing when the key holds none that can be read
std::optional<std::string> valueOf(const std::string& key);

/// @return "KEY VALUE" as one line, line ends in either made blanks; the key alone when it has no value
std::string lineOf(const std::string& key);

/// Writes a line and its end to standard output at once. @return false with errno on failure
bool printLine(const std::string& line);
