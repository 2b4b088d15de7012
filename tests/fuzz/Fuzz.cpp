#include "Fuzz.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace fuzz {

namespace {

FILE* s_report = stderr;
std::string s_folder;

} // namespace

void demand(bool holds, const char* what, std::string_view shown)
{
    if (holds)
        return;
    fprintf(s_report, "FAILED: %s: [%.*s]\n", what, static_cast<int>(shown.size()), shown.data());
    abort();
}

unsigned int Input::number(unsigned int limit)
{
    if (m_rest.empty())
        return 0;
    const auto byte = static_cast<unsigned char>(m_rest.front());
    m_rest.remove_prefix(1);
    return byte % limit;
}

std::string Input::text()
{
    const size_t end = std::min(m_rest.find('\x1f'), m_rest.size());
    std::string text(m_rest.substr(0, end));
    m_rest.remove_prefix(std::min(end + 1, m_rest.size()));
    text.erase(std::remove(text.begin(), text.end(), '\0'), text.end());
    return text;
}

std::string Input::rest()
{
    std::string text(m_rest);
    m_rest = {};
    return text;
}

bool isUtf8(std::string_view text)
{
    for (size_t i = 0; i < text.size();) {
        const auto first = static_cast<unsigned char>(text[i]);
        const size_t length = first < 0x80 ? 1 : first < 0xC2 ? 0 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
        if (length == 0 || first > 0xF4 || text.size() - i < length)
            return false;
        for (size_t next = 1; next < length; ++next) {
            if ((static_cast<unsigned char>(text[i + next]) & 0xC0U) != 0x80U)
                return false;
        }
        i += length;
    }
    return true;
}

void silenceOutput()
{
    // The fuzzer has kept the former one for its own use.
    FILE* nowhere = fopen("/dev/null", "w");
    stderr = nowhere;
    stdout = nowhere;
}

std::string useOwnStore()
{
    const bool hasMemory = access("/dev/shm", W_OK) == 0;
    s_folder = hasMemory ? "/dev/shm/fuzz-XXXXXX" : "/tmp/fuzz-XXXXXX";
    if (!mkdtemp(s_folder.data()))
        abort();
    atexit([] { std::filesystem::remove_all(s_folder); });
    for (const char* part : {"/db", "/memory"})
        std::filesystem::create_directories(s_folder + part);
    setenv("ORBIS_STATE_DIR", s_folder.c_str(), 1);
    setenv("ORBIS_RUNTIME_DIR", s_folder.c_str(), 1);
    setenv("HOME", s_folder.c_str(), 1);
    setenv("XDG_RUNTIME_DIR", s_folder.c_str(), 1);
    return s_folder + "/db";
}

} // namespace fuzz
