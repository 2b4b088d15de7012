#include "settings/Value.h"

#include "settings/Key.h"

#include <cerrno>
#include <charconv>

namespace orbis {

namespace {

constexpr size_t kLargestFile = size_t {16} * 1024 * 1024;
constexpr std::string_view kIntHeader = "int\n";
constexpr std::string_view kStringHeader = "string\n";

bool takeHeader(std::string_view& contents, std::string_view header)
{
    if (contents.substr(0, header.size()) != header)
        return false;
    contents.remove_prefix(header.size());
    return true;
}

std::optional<Value> decode(std::string_view contents)
{
    Value value;
    if (takeHeader(contents, kIntHeader)) {
        value.type = VCONF_TYPE_INT;
        const char* end = contents.data() + contents.size();
        const auto result = std::from_chars(contents.data(), end, value.number);
        if (result.ec == std::errc() && result.ptr == end)
            return value;
    } else if (takeHeader(contents, kStringHeader)) {
        value.type = VCONF_TYPE_STRING;
        value.text = contents;
        if (contents.find('\0') == std::string_view::npos)
            return value;
    }
    errno = EBADMSG;
    return std::nullopt;
}

} // namespace

std::optional<Value> readValue(const char* key)
{
    const auto file = fileOfKey(key);
    if (!file)
        return std::nullopt;
    const auto contents = readFile(file->path(), kLargestFile);
    return contents ? decode(*contents) : std::nullopt;
}

bool writeValue(const char* key, vconf_type type, std::string_view text)
{
    const auto file = fileOfKey(key);
    if (!file)
        return false;
    const std::string_view header = type == VCONF_TYPE_INT ? kIntHeader : kStringHeader;
    if (text.size() > kLargestFile - header.size()) { // nobody could read it
        errno = EFBIG;
        return false;
    }
    return replaceFile(file->folder, file->name, std::string(header).append(text), file->durability);
}

} // namespace orbis
