// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Half-written files. They lie in a folder of their own, ".tmp" in the one that they are for, so that a
/// watch on that folder sees nothing of a write but the rename that ends it.
#pragma once

#include "files/FileDescriptor.h"

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace orbis::files {

/// fsync(), without the errors of file systems that have nothing to synchronise.
bool synchronise(int descriptor);

/// Makes the folder of the drafts, and @p folder itself, where they are missing. The drafts' folder gets the
/// mode and group of the other, and its owner where the caller may give it: whoever may write there must be
/// able to write here too, and nobody else.
/// @param isNew  set when @p folder was missing
/// @return false with errno on failure
bool makeDraftFolder(const std::string& folder, bool& isNew);

/// Removes the folder of the drafts when there are none. @return whether it is gone
bool removeDraftFolder(const std::string& folder);

/// Removes, once in the life of this process, what writers that were killed left behind.
void sweepDrafts(const std::string& folder);

/// A file that is being written; gone with its owner unless it was moved to its place.
class Draft {
public:
    /// @param target  what it is going to replace, which hands on mode, owner and group
    /// @param mode    when there is nothing to replace
    Draft(const std::string& folder, const std::string& target, mode_t mode);
    Draft(const Draft&) = delete;
    Draft& operator=(const Draft&) = delete;
    ~Draft();

    /// @return false, after construction with errno, when there is none
    explicit operator bool() const { return static_cast<bool>(m_descriptor); }

    /// Each returns false with errno on failure.
    bool write(std::initializer_list<std::string_view> contents);
    bool setTime(const std::optional<timespec>& time);
    bool synchronise() { return files::synchronise(m_descriptor.get()); }
    bool moveTo(const std::string& path);

private:
    bool adopt(const std::string& folder, const struct stat* old);

    std::string m_path;
    FileDescriptor m_descriptor;
    bool m_moved = false;
};

} // namespace orbis::files
