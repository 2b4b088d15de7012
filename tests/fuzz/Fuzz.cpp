// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Fuzz.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <glib.h>
#include <unistd.h>

extern "C" int LLVMFuzzerInitialize(int* argc, char*** argv);
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size);

namespace fuzz {

namespace {

FILE* s_report = stderr;
std::string s_folder;

void useOwnStore()
{
    const bool hasMemory = access("/dev/shm", W_OK) == 0;
    s_folder = hasMemory ? "/dev/shm/fuzz-XXXXXX" : "/tmp/fuzz-XXXXXX";
    if (!mkdtemp(s_folder.data()))
        abort();
    atexit([] { std::filesystem::remove_all(s_folder); });
    for (const char* part : {"/db", "/memory"})
        std::filesystem::create_directories(s_folder + part);
    for (const char* variable : {"ORBIS_STATE_DIR", "ORBIS_RUNTIME_DIR", "HOME", "XDG_RUNTIME_DIR"})
        setenv(variable, s_folder.c_str(), 1);
}

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
    return g_utf8_validate(text.data(), static_cast<gssize>(text.size()), nullptr);
}

std::string keysFolder()
{
    return s_folder + "/db";
}

} // namespace fuzz

int LLVMFuzzerInitialize(int*, char***)
{
    // The fuzzer has kept the former one for its own use.
    FILE* nowhere = fopen("/dev/null", "w");
    stderr = nowhere;
    stdout = nowhere;
    fuzz::useOwnStore();
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    fuzz::Input input(data, size);
    fuzz::tryInput(input);
    return 0;
}
