#include "Folders.h"

#include "Handles.h"
#include "vconf.h"

#include <cstdlib>
#include <fstream>
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
    base::ErrorPtr error;
    GError* raw = nullptr;
    const base::GStr path(g_dir_make_tmp("tessel-test-XXXXXX", &raw));
    error.reset(raw);
    if (!path)
        throw std::runtime_error(error->message);
    m_root = path.get();
    for (const fs::path& folder : {state(), runtime(), home(), session()}) {
        fs::create_directory(folder);
        fs::permissions(folder, fs::perms::owner_all);
    }
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

void Folders::setAppStatus(const std::string& package, long pid, int status) const
{
    fs::create_directories(runtime() / "apps");
    writeFile(runtime() / "apps" / package, std::to_string(pid) + " " + std::to_string(status));
}

std::optional<std::string> Folders::appStatus(const std::string& package) const
{
    const fs::path file = runtime() / "apps" / package;
    if (!fs::exists(file))
        return std::nullopt;
    return readFile(file);
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

bool Settings::setInt(const char* key, int value) const
{
    return vconf_set_int(key, value) == VCONF_OK;
}

bool Settings::setText(const char* key, const std::string& value) const
{
    return vconf_set_str(key, value.c_str()) == VCONF_OK;
}

std::optional<int> Settings::getInt(const char* key) const
{
    int value = 0;
    if (vconf_get_int(key, &value) != VCONF_OK)
        return std::nullopt;
    return value;
}

bool Settings::remove(const char* key) const
{
    return vconf_unset(key) == VCONF_OK;
}

} // namespace tv
