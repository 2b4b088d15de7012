/// A copy of the files that the program is installed with, in which some can be missing or damaged.
#ifndef TESSEL_TESTS_INSTALLATION_H
#define TESSEL_TESTS_INSTALLATION_H

#include "TvBox.h"

namespace tv {

constexpr const char* kWidgetTheme = "usr/share/orbis/flux.edj";
constexpr const char* kOwnTheme = "org.orbis.tessel-UI.edj";
constexpr const char* kFonts = "etc/fonts/fonts.conf";
constexpr const char* kIntrospection = "usr/apps/org.orbis.tessel-UI/bin/org.orbis.tessel-UI.interface.xml";
constexpr const char* kGuidePicture =
    "usr/apps/com.norvale.tv.theme-resource/shared/res/org.orbis.tessel-UI/res/"
    "tessel/tessel_img_m_popup.png";
constexpr const char* kEnglish =
    "usr/apps/org.orbis.tessel-UI/shared/tslocale/en/LC_MESSAGES/org.orbis.tessel-UI.mo";
constexpr const char* kGerman =
    "usr/apps/org.orbis.tessel-UI/shared/tslocale/de/LC_MESSAGES/org.orbis.tessel-UI.mo";

class Installation {
public:
    /// Programs that @p box starts from now on find this copy, and tell what they have on the screen.
    explicit Installation(TvBox& box);

    std::filesystem::path path(const std::string& file) const { return m_root / file; }
    std::string read(const std::string& file) const { return readFile(path(file)); }
    /// Puts @p content in the place of what the file holds; nothing takes the file away.
    void write(const std::string& file, const std::optional<std::string>& content) const;

private:
    std::filesystem::path m_root;
};

} // namespace tv

#endif
