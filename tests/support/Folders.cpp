// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Folders.h"

#include "Handles.h"

#include <cstdlib>
#include <fstream>
#include <glib/gstdio.h>
#include <sstream>
#include <stdexcept>

namespace tv {

namespace fs = std::filesystem;

namespace {

constexpr const char* kPassedOn[] = {
    "PATH", "ASAN_OPTIONS", "UBSAN_OPTIONS", "LSAN_OPTIONS", "LD_LIBRARY_PATH"};

} // namespace

Folders::Folders()
{
    const base::GStr path(g_dir_make_tmp("tessel-test-XXXXXX", nullptr));
    if (!path)
        throw std::runtime_error("no folder for a test can be made");
    m_root = path.get();
    for (const fs::path& folder : {state(), runtime(), home(), session()})
        g_mkdir(folder.c_str(), S_IRWXU);
}

Folders::~Folders()
{
    std::error_code ignored;
    fs::remove_all(m_root, ignored);
}

std::vector<std::string> Folders::environment() const
{
    std::vector<std::string> result {
        "ORBIS_STATE_DIR=" + state().string(),
        "ORBIS_RUNTIME_DIR=" + runtime().string(),
        "HOME=" + home().string(),
        "XDG_RUNTIME_DIR=" + session().string(),
        "DBUS_SESSION_BUS_ADDRESS=unix:path=" + (root() / "no-session-bus").string(),
        "LANG=C.UTF-8",
    };
    for (const char* name : kPassedOn) {
        if (const char* value = std::getenv(name))
            result.push_back(std::string(name) + "=" + value);
    }
    return result;
}

std::string readFile(const fs::path& path)
{
    const std::ifstream file(path, std::ios::binary);
    std::ostringstream content; // by the block: pictures of the screen are read many times a second
    content << file.rdbuf();
    return content.str();
}

std::vector<std::string> readLines(const fs::path& path)
{
    std::ifstream file(path);
    std::vector<std::string> lines;
    for (std::string line; std::getline(file, line);)
        lines.push_back(line);
    return lines;
}

void writeFile(const fs::path& path, const std::string& content)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file << content;
    if (!file.flush())
        throw std::runtime_error("cannot write " + path.string());
}

Settings::Settings(const Folders& folders)
{
    g_setenv("ORBIS_STATE_DIR", folders.state().c_str(), TRUE);
    g_setenv("ORBIS_RUNTIME_DIR", folders.runtime().c_str(), TRUE);
}

} // namespace tv
