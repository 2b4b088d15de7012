// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The commands of orbis-settings. Each returns an exit status.
#pragma once

#include "options/CommandLine.h"

#include <optional>
#include <string>
#include <vector>

enum ExitStatus { kSuccess = 0, kFailure = 1 }; // and tools::kWrongUsage

inline constexpr char kToolName[] = "orbis-settings";

using Arguments = std::vector<std::string>;

/// What the options of all commands say; a command has some of them.
struct CommandOptions {
    std::string type;
    bool isJson = false;
    bool keepsOthers = false;
};

/// A command as it was called.
struct Call {
    const tools::CommandLine& line; ///< for what is wrong with it
    const CommandOptions& options;
    const Arguments& words; ///< all that is no option
};

int setCommand(const Call& call);
int getCommand(const Call& call);
int listCommand(const Call& call);
int unsetCommand(const Call& call);
int watchCommand(const Call& call);
int batchCommand(const Call& call);
int dumpCommand(const Call& call);
int restoreCommand(const Call& call);

/// Carries out a line of a batch: a command with its arguments, quoted as in a shell. @return its exit status
int runLine(const std::string& line);

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
