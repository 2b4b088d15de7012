// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Small files that are only ever replaced as a whole.
#pragma once

#include "files/FileDescriptor.h"

#include <ctime>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace orbis::files {

/// Whether a change has to survive the loss of power.
enum class Durability { Volatile, Durable };

/// How a file is written.
struct FileKind {
    Durability durability = Durability::Volatile;
    mode_t mode = 0640; ///< of a file that is new, as the umask narrows it
    std::optional<timespec> time; ///< of its last change; without it one that no write before had
};

/// Replaces (or makes) the file @p name of @p folder: whoever opens it sees the old contents or the new
/// ones. Makes the folder when it is missing. A file that is replaced hands on its mode, and its owner and
/// group where the caller may give them; a new one gets the group of a folder whose setgid bit is set.
/// @param contents  one after the other
/// @return false with errno on failure; the old contents stay, unless only the last step, making the
///         replacement durable, failed
bool replaceFile(const std::string& folder, const std::string& name,
    std::initializer_list<std::string_view> contents, const FileKind& kind);

/// @return false with errno on failure, a missing file included
bool removeFile(const std::string& folder, const std::string& name, Durability durability);

/// What a path's last name may be.
enum class Links {
    Refused, ///< where others can write, a link would lead to what only we may read
    Followed, ///< where files are installed
};

/// Opens a regular file of at most @p limit bytes for reading. Never waits, whatever the path names, and
/// leaves alone what is no regular file.
/// @return an empty owner, with errno, on failure
FileDescriptor openFile(const std::string& path, size_t limit, Links links, struct stat& status);

/// Reads up to @p size bytes. @return how many there were, negative with errno on failure
ssize_t readBytes(const FileDescriptor& file, char* bytes, size_t size);

/// Reads a regular file of at most @p limit bytes that was installed, as openFile() opens it.
/// @return nothing, with errno, on failure
std::optional<std::string> readInstalledFile(const std::string& path, size_t limit);

/// Some files are read by libraries that trust what they find: only the very bytes count that were there when
/// this was built.
/// @param digest  MD5, in small hexadecimal letters: against damage, and a launch waits for it
/// @return what is wrong with the installed file, or ""
std::string faultOfInstalledFile(const std::string& path, size_t size, const char* digest);

} // namespace orbis::files
