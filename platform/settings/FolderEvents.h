// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What happens in one folder, and on the way to it.
#pragma once

#include "files/FileDescriptor.h"

#include <set>
#include <string>
#include <vector>

struct inotify_event;

namespace orbis::settings {

struct FolderChange {
    bool everything = false; ///< any file may have changed
    std::set<std::string> names; ///< of the files that something happened to
};

/// Follows the folder's path: when the folder, or one above it, is removed, moved or replaced, it goes on
/// with whatever comes to lie there.
class FolderEvents {
public:
    explicit FolderEvents(const std::string& folder);

    /// Looks for the folder now; what happens in it after the call is not missed.
    /// @return whether it is another folder than before, has come or is gone
    bool follow();

    /// @return 0 when everything that happens from now on will be told, else the error that is in the way
    int error() const { return m_error; }

    /// @return readable when there is something to take(); borrowed, negative while there is none
    int descriptor() const { return m_inotify.get(); }

    /// Takes in what has happened, without waiting.
    FolderChange take();

private:
    /// A folder that is watched.
    struct Place {
        int watch;
        unsigned events;
        std::string next; ///< the name awaited in it; empty for the folder itself
    };

    int add(const std::string& path, unsigned events, const std::string& next);
    int addAncestors(const std::string& folder, bool withNames, int linksLeft);
    void lookOnce(bool withNames);
    void forget(const std::vector<Place>& old) const;
    void sort(const inotify_event& event, FolderChange& change) const;

    std::string m_folder;
    files::FileDescriptor m_inotify;
    std::vector<Place> m_places;
    int m_current = -1; ///< the folder's own watch, negative while there is none
    int m_error = 0;
};

} // namespace orbis::settings
