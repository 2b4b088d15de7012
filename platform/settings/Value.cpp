// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "settings/Value.h"

#include "base/Handles.h"
#include "settings/Key.h"

#include <cerrno>
#include <charconv>
#include <cstring>

namespace orbis::settings {

namespace {

constexpr size_t kLargestFile = size_t {16} * 1024 * 1024;
constexpr std::string_view kIntHeader = "int\n";
constexpr std::string_view kStringHeader = "string\n";

/// @return memory from malloc() for @p size bytes, null with errno when there is none
char* allocate(size_t size)
{
    // The C library keeps freed memory up to this size at hand, and asks the system for what is larger
    // alone. A page that is never touched costs nothing, so that a large value stays in nobody's way.
    constexpr size_t kNeverKept = size_t {33} * 1024 * 1024;
    constexpr size_t kLarge = size_t {1} * 1024 * 1024;
    void* memory = size > kLarge ? std::malloc(kNeverKept) : nullptr;
    return static_cast<char*>(memory ? memory : std::malloc(size));
}

bool takeHeader(std::string_view& contents, std::string_view header)
{
    if (contents.substr(0, header.size()) != header)
        return false;
    contents.remove_prefix(header.size());
    return true;
}

/// @param bytes  what the file holds, with room for a NUL behind it
std::optional<Value> decode(base::MallocStr bytes, size_t size)
{
    Value value;
    std::string_view contents(bytes.get(), size);
    if (takeHeader(contents, kIntHeader)) {
        value.type = VCONF_TYPE_INT;
        const char* end = contents.data() + contents.size();
        const auto result = std::from_chars(contents.data(), end, value.number);
        if (result.ec == std::errc() && result.ptr == end)
            return value;
    } else if (takeHeader(contents, kStringHeader)) {
        value.type = VCONF_TYPE_STRING;
        if (contents.find('\0') == std::string_view::npos) {
            std::memmove(bytes.get(), contents.data(), contents.size());
            bytes.get()[contents.size()] = '\0';
            value.text = std::move(bytes);
            return value;
        }
    }
    errno = EBADMSG;
    return std::nullopt;
}

} // namespace

std::optional<Value> readValue(const char* key)
{
    const auto place = fileOfKey(key);
    if (!place)
        return std::nullopt;
    struct stat status = {};
    const files::FileDescriptor file =
        files::openFile(place->path(), kLargestFile, files::Links::Refused, status);
    if (!file)
        return std::nullopt;
    const auto size = static_cast<size_t>(status.st_size);
    base::MallocStr bytes(allocate(size + 1));
    if (!bytes)
        return std::nullopt;
    const ssize_t count = files::readBytes(file, bytes.get(), size);
    return count < 0 ? std::nullopt : decode(std::move(bytes), static_cast<size_t>(count));
}

bool writeValue(const char* key, vconf_type type, std::string_view text)
{
    const auto place = fileOfKey(key);
    if (!place)
        return false;
    const std::string_view header = type == VCONF_TYPE_INT ? kIntHeader : kStringHeader;
    if (text.size() > kLargestFile - header.size()) { // nobody could read it
        errno = EFBIG;
        return false;
    }
    files::FileKind kind;
    kind.durability = place->durability;
    return files::replaceFile(place->folder, place->name, {header, text}, kind);
}

} // namespace orbis::settings
