/// Files that the program was installed with.
#pragma once

#include <cstddef>
#include <optional>
#include <string>

namespace orbis {

/// Reads a regular file of at most @p limit bytes. Never waits, whatever the path names.
/// @return nothing, with errno, on failure
std::optional<std::string> readResource(const std::string& path, size_t limit);

} // namespace orbis
