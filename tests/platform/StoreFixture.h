// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A settings store in a folder of its own, and a main loop to run.
#ifndef TESTS_STORE_FIXTURE_H
#define TESTS_STORE_FIXTURE_H

#include "Folders.h"
#include "Watch.h" // IWYU pragma: export

#include <gtest/gtest.h>
#include <string>
#include <sys/stat.h>

using tv::readFile;
using tv::writeFile;
using Words = std::vector<std::string>;

class StoreFixture : public testing::Test {
protected:
    StoreFixture();

    std::string state() const { return m_folders.state(); }
    std::string runtime() const { return m_folders.runtime(); }
    std::string drafts() const { return state() + "/db/.tmp"; }

    const tv::Folders m_folders;
    const tv::Settings m_settings {m_folders};
    const std::string m_folder = m_folders.root();
};

/// Gives up root's privileges, for which permissions do not count, for good; the folder and what is in it
/// then belong to the user that is left. For a part of a test that runs apart(). Does nothing for a user who
/// has none.
void becomeNobody(const std::string& folder);

/// Gives the calling process mounts and kernel limits of its own; for a Child.
void enterBox();
/// @return whether this machine lets a test have such
bool allowsBoxes();

/// @return what lstat() tells, zeroes for what is missing
struct stat statusOf(const std::string& path);
/// @return the bits that chmod() sets
inline unsigned modeOf(const std::string& path)
{
    return statusOf(path).st_mode & 07777U;
}

/// @return the names in a folder, sorted
Words namesIn(const std::string& folder);

/// Moves the main loop's clock ahead and serves what is then due.
void passTime(double seconds);

/// Runs the loop until a write made now has been delivered, with everything that was due before it.
void settle();

#endif
