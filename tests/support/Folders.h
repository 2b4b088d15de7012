// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The folders that a program under test may write to, made for one test and removed after it.
#ifndef TESSEL_TESTS_FOLDERS_H
#define TESSEL_TESTS_FOLDERS_H

#include "vconf.h"

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace tv {

class Folders {
public:
    Folders();
    ~Folders();
    Folders(const Folders&) = delete;
    Folders& operator=(const Folders&) = delete;

    std::filesystem::path root() const { return m_root; }
    std::filesystem::path state() const { return m_root / "state"; }
    std::filesystem::path runtime() const { return m_root / "runtime"; }
    std::filesystem::path home() const { return m_root / "home"; }
    std::filesystem::path session() const { return m_root / "session"; } ///< XDG_RUNTIME_DIR

    /// A whole environment: these folders, a UTF-8 locale and no user's session; of the caller's own
    /// only the search path and what sanitizers and the dynamic linker need.
    std::vector<std::string> environment() const;

    /// @return the file in which an application tells its status
    std::filesystem::path appStatus(const std::string& package) const { return runtime() / "apps" / package; }

private:
    std::filesystem::path m_root;
};

/// @return what the file holds, empty when it cannot be read
std::string readFile(const std::filesystem::path& path);
/// @return the file's lines
std::vector<std::string> readLines(const std::filesystem::path& path);
void writeFile(const std::filesystem::path& path, const std::string& content);

/// The settings store in a test's folders, reached from the test's own process.
class Settings {
public:
    /// Makes @p folders the ones that this process's store works on.
    explicit Settings(const Folders& folders);

    bool setInt(const char* key, int value) const { return vconf_set_int(key, value) == VCONF_OK; }
    bool setText(const char* key, const std::string& value) const
    {
        return vconf_set_str(key, value.c_str()) == VCONF_OK;
    }
    std::optional<int> getInt(const char* key) const
    {
        int value = 0;
        return vconf_get_int(key, &value) == VCONF_OK ? std::optional(value) : std::nullopt;
    }
    bool remove(const char* key) const { return vconf_unset(key) == VCONF_OK; }
};

} // namespace tv

#endif
