#include "Installation.h"

namespace tv {

namespace fs = std::filesystem;

Installation::Installation(TvBox& box)
    : m_root(box.folders.root() / "installation")
{
    fs::copy(SYSROOT, m_root, fs::copy_options::recursive);
    box.watchScreen();
    box.setVariable("LD_PRELOAD", SCREEN_PROBE " " OTHER_FILES_LIBRARY);
    box.setVariable("OTHER_FILES_OF", SYSROOT);
    box.setVariable("OTHER_FILES", m_root.string());
}

std::string Installation::catalogue(const std::string& language)
{
    return "usr/apps/org.orbis.tessel-UI/shared/tslocale/" + language + "/LC_MESSAGES/org.orbis.tessel-UI.mo";
}

void Installation::remove(const std::string& file) const
{
    if (!fs::remove(path(file)))
        throw std::runtime_error("there is no " + file);
}

void Installation::cut(const std::string& file, double share) const
{
    const std::string whole = read(file);
    write(file, whole.substr(0, static_cast<size_t>(static_cast<double>(whole.size()) * share)));
}

} // namespace tv
