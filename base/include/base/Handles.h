// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Owners of C handles: the release function is part of the type. The headers beside this one name the
/// handles of one library each.
#pragma once

#include <cstdlib>
#include <memory>

#include <dirent.h>

namespace base {

template <auto Release>
struct Releaser {
    template <typename T>
    void operator()(T* handle) const
    {
        Release(handle);
    }
};

template <typename T, auto Release>
using CHandle = std::unique_ptr<T, Releaser<Release>>;

using MallocStr = CHandle<char, std::free>; ///< from the settings store, strdup and the toolkit
using FolderPtr = CHandle<DIR, closedir>;

} // namespace base
