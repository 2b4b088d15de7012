/// Small files that are only ever replaced as a whole.
#ifndef ORBIS_WHOLE_FILE_H
#define ORBIS_WHOLE_FILE_H

#include <optional>
#include <string>
#include <string_view>

namespace orbis {

/// Whether a change has to survive the loss of power.
enum class Durability { Volatile, Durable };

/// Replaces (or makes) the file @p name of @p folder: whoever opens it sees the old contents or the new
/// ones. Makes the folder when it is missing. Its mode is 0644 as the umask narrows it.
/// @return false with errno on failure; the old contents stay, unless only the last step, making the
///         replacement durable, failed
bool replaceFile(
    const std::string& folder, const std::string& name, std::string_view contents, Durability durability);

/// @return false with errno on failure, a missing file included
bool removeFile(const std::string& folder, const std::string& name, Durability durability);

/// Reads a regular file of at most @p limit bytes. Never waits, whatever the path names.
/// @return nothing, with errno, on failure
std::optional<std::string> readFile(const std::string& path, size_t limit);

} // namespace orbis

#endif
