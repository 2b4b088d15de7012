/// A copy of the files that the program is installed with, in which some can be missing or damaged.
#ifndef TESSEL_TESTS_INSTALLATION_H
#define TESSEL_TESTS_INSTALLATION_H

#include "TvBox.h"

#include <filesystem>
#include <string>

namespace tv {

constexpr const char* kWidgetTheme = "usr/share/orbis/flux.edj";
constexpr const char* kOwnTheme = "org.orbis.tessel-UI.edj";
constexpr const char* kFonts = "etc/fonts/fonts.conf";
constexpr const char* kIntrospection = "usr/apps/org.orbis.tessel-UI/bin/org.orbis.tessel-UI.interface.xml";
constexpr const char* kGuidePicture =
    "usr/apps/com.norvale.tv.theme-resource/shared/res/org.orbis.tessel-UI/res/"
    "tessel/tessel_img_m_popup.png";

class Installation {
public:
    /// Programs that @p box starts from now on find this copy, and tell what they have on the screen.
    explicit Installation(TvBox& box);

    std::filesystem::path path(const std::string& file) const { return m_root / file; }
    static std::string catalogue(const std::string& language);

    void remove(const std::string& file) const;
    void write(const std::string& file, const std::string& content) const { writeFile(path(file), content); }
    std::string read(const std::string& file) const { return readFile(path(file)); }
    /// Keeps the first @p share of the file.
    void cut(const std::string& file, double share) const;

private:
    std::filesystem::path m_root;
};

} // namespace tv

#endif
