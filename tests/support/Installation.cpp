#include "Installation.h"

namespace tv {

namespace fs = std::filesystem;

Installation::Installation(TvBox& box)
    : m_root(box.folders.root() / "installation")
{
    fs::copy(SYSROOT, m_root, fs::copy_options::recursive);
    box.setVariable("LD_PRELOAD", SCREEN_PROBE " " OTHER_FILES_LIBRARY);
    box.setVariable("OTHER_FILES_OF", SYSROOT);
    box.setVariable("OTHER_FILES", m_root.string());
}

void Installation::write(const std::string& file, const std::optional<std::string>& content) const
{
    if (content)
        writeFile(path(file), *content);
    else
        fs::remove(path(file));
}

} // namespace tv
