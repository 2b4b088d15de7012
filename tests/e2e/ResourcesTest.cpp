// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The program when files of its installation are missing or damaged: the viewer is still asked, and the log
/// says once what is wrong.
#include "Cards.h"
#include "TvTest.h"

namespace {

using tv::waitUntil;
using Content = std::optional<std::string>; ///< of a file; nothing for none
using Lines = std::vector<std::string>;

constexpr const char* kWidgetTheme = "/usr/share/orbis/flux.edj";
constexpr const char* kToolkitTheme = "/usr/share/orbis/toolkit/themes/default.edj";
constexpr const char* kOwnTheme = "/org.orbis.tessel-UI.edj";
constexpr const char* kFonts = "/etc/fonts/fonts.conf";
constexpr const char* kIntrospection = "/usr/apps/org.orbis.tessel-UI/bin/org.orbis.tessel-UI.interface.xml";
constexpr const char* kGuidePicture =
    "/usr/apps/com.norvale.tv.theme-resource/shared/res/org.orbis.tessel-UI/res/"
    "tessel/tessel_img_m_popup.png";
constexpr const char* kEnglish =
    "/usr/apps/org.orbis.tessel-UI/shared/tslocale/en/LC_MESSAGES/org.orbis.tessel-UI.mo";
constexpr const char* kGerman =
    "/usr/apps/org.orbis.tessel-UI/shared/tslocale/de/LC_MESSAGES/org.orbis.tessel-UI.mo";
constexpr const char* kGermanWords = "/usr/share/orbis/locale/de/LC_MESSAGES/orbis-platform.mo";
const std::string kGarbage(50000, '?');

/// The programs find a copy of the files that the program is installed with, in which some are missing or
/// damaged.
class AFileOfTheInstallation : public tv::TvTest {
protected:
    void SetUp() override
    {
        if (!tv::TvBox::mayMount())
            GTEST_SKIP() << "mounting is not permitted here";
        std::filesystem::copy(SYSROOT, m_files, std::filesystem::copy_options::recursive);
        box.mountFirst("mount --bind " + m_files + " " SYSROOT);
    }

    /// Puts @p content in the place of what the file holds; nothing takes the file away.
    void write(const char* file, const Content& content) const
    {
        if (content)
            tv::writeFile(m_files + file, *content);
        else
            std::filesystem::remove(m_files + file);
    }
    Content read(const char* file) const { return tv::readFile(m_files + file); }
    Content half(const char* file) const { return read(file)->substr(0, read(file)->size() / 2); }

    /// @return the lines that the platform's part of the log has at level error
    Lines errors() const { return box.program->lines("E/orbis-platform: "); }

    /// Success when the log has one line of an error, beginning so, or none when that is empty.
    testing::AssertionResult saysOnce(const std::string& beginning) const
    {
        const std::string line = "E/orbis-platform: " + beginning;
        waitUntil([&] { return beginning.empty() || !errors().empty(); });
        const bool isSo =
            errors().size() == (beginning.empty() ? 0 : 1) && errors() == box.program->lines(line);
        return testing::AssertionResult(isSo)
            << testing::PrintToString(errors()) << ", not once " << beginning;
    }

    const std::string m_files = box.folders.root() / "installation";
};

TEST_F(AFileOfTheInstallation, IsNamedOnceAndThePopupsAreUsableWithoutIt)
{
    const tv::Card ids {"COM_TV_SID_TESSEL",
        {"TV_SID_TESSEL_CADEC_SETTING_UP_TV_MOBILE_TERMS_AND_CONDITIONS"}, {"SID_CANCEL"}, "SID_CANCEL"};
    const std::string fonts = R"(<?xml version="1.0"?><fontconfig><include>/etc/fonts/fonts.conf</include>)";
    const std::string uninstalled = R"(<alias binding="same"><family>NorvaleSans-500</family>
        <prefer><family>Nowhere</family></prefer></alias></fontconfig>)";
    const std::string noFonts = "The description of fonts cannot be used, texts are in the machine's own: ";
    const std::string noFont = "The font of the texts is missing: NorvaleSans-500: ";
    const std::string noIds = "A message catalogue cannot be used, its texts are their ids: ";
    const std::string noPicture = "A picture is left out: ";
    const std::string noGerman = "A message catalogue cannot be used, its texts are in English: ";
    struct {
        const char* file;
        Content content;
        std::string line;
        std::string language = "en_US";
        tv::ShownRequest request = tv::kTermsRequest;
    } const damages[] = {
        {kOwnTheme, std::nullopt, ""},
        {kOwnTheme, kGarbage, ""},
        // A language that nobody has translated to.
        {kGerman, std::nullopt, "", "de_DE"},
        {kGerman, half(kGerman), noGerman, "de_DE"},
        {kGerman, kGarbage, noGerman, "de_DE"},
        {kEnglish, std::nullopt, noIds, "en_US", {"ShowTnCPopup", {}, ids}},
        {kEnglish, half(kEnglish), noIds, "en_US", {"ShowTnCPopup", {}, ids}},
        {kGuidePicture, std::nullopt, noPicture, "en_US", tv::kGuideRequest},
        {kGuidePicture, kGarbage, noPicture, "en_US", tv::kGuideRequest},
        // It begins well, and the toolkit reads the rest when it draws.
        {kGuidePicture, half(kGuidePicture), "", "en_US", tv::kGuideRequest},
        // No memory holds this one.
        {kGuidePicture, "P6\n32000 32000\n255\n", noPicture, "en_US", tv::kGuideRequest},
        {kFonts, std::nullopt, noFonts},
        {kFonts, "no description of fonts", noFonts},
        {kFonts, fonts + "</fontconfig>", noFont + "no description of fonts names it"},
        {kFonts, fonts + uninstalled, noFont + "none of its fonts is installed"},
    };
    for (const auto& [file, content, line, language, request] : damages) {
        SCOPED_TRACE(std::string(file) + ": " + line);
        const Content whole = read(file);
        write(file, content);
        ASSERT_TRUE(box.settings.setText(tv::kLanguage, language + ".UTF-8"));
        ASSERT_TRUE(box.startAgain());
        ASSERT_TRUE(box.show(request));
        EXPECT_TRUE(saysOnce(line));
        EXPECT_EQ(box.program->count("The program's theme cannot be used*"), file == kOwnTheme ? 1U : 0U);
        EXPECT_TRUE(box.ends());
        write(file, whole);
    }

    write(kEnglish, std::nullopt);
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, "de_DE.UTF-8"));
    ASSERT_TRUE(box.startAgain());
    EXPECT_TRUE(saysOnce(noIds));
    ASSERT_TRUE(box.show("ShowTnCPopup"));
    EXPECT_EQ(box.screen().cards.front().buttons, Lines {"Abbrechen"});
}

TEST_F(AFileOfTheInstallation, TheWidgetsThemeHasAPlainOneInItsPlace)
{
    std::string holed = *read(kWidgetTheme);
    holed.replace(holed.size() * 3 / 4, holed.size() / 5, holed.size() / 5, '\0');
    for (const Content& content :
        {Content {}, Content {""}, half(kWidgetTheme), Content {holed}, Content {kGarbage}}) {
        SCOPED_TRACE(content ? content->size() : 0);
        write(kWidgetTheme, content);
        ASSERT_TRUE(box.startAgain());
        EXPECT_TRUE(saysOnce("The widgets' theme cannot be used, popups are plain: "));
        ASSERT_TRUE(box.show(tv::kPinRequest));
        const tv::Picture picture = display().settledPicture();
        EXPECT_GT(picture.count(tv::kPinColour), 1000U) << "no PIN";
        EXPECT_GT(picture.count(0x0E1520), 100000U) << "no card";
        EXPECT_GT(picture.count(0xEBF0F5), 20000U) << "no focus";
    }
    for (int contrast : {0, 1}) {
        ASSERT_TRUE(box.settings.setInt(tv::kHighContrast, contrast));
        for (const auto& [method, texts, card] : tv::kRequests) {
            SCOPED_TRACE(method);
            ASSERT_TRUE(box.request(method, texts));
            ASSERT_TRUE(box.shows({card}));
        }
        ASSERT_TRUE(box.show(tv::kNetworkTestRequest));
        ASSERT_TRUE(box.press({"Return", "Right"}));
        ASSERT_TRUE(box.shows({tv::below(tv::kNetworkTestCard), tv::confirmation("No")}));
    }
    EXPECT_EQ(errors().size(), 1U);
    EXPECT_EQ(box.program->complaints(), Lines {});
}

TEST_F(AFileOfTheInstallation, TheToolkitsThemeHasItsOwnInItsPlace)
{
    for (const Content& content : {Content {}, Content {kGarbage}}) {
        SCOPED_TRACE(content ? content->size() : 0);
        write(kToolkitTheme, content);
        ASSERT_TRUE(box.startAgain());
        EXPECT_TRUE(saysOnce("The toolkit's small theme cannot be used, it starts with its own: "));
        ASSERT_TRUE(box.show(tv::kPinRequest));
        EXPECT_GT(display().settledPicture().count(tv::kPinColour), 1000U) << "no PIN";
    }
    EXPECT_EQ(box.program->complaints(), Lines {});
}

TEST_F(AFileOfTheInstallation, TheWordsOfTheReadOutAreEnglishWithoutIt)
{
    write(kGermanWords, half(kGermanWords));
    ASSERT_TRUE(box.settings.setInt(tv::kScreenReader, 1));
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, "de_DE"));
    ASSERT_TRUE(box.start());
    for (size_t i = 1; i <= 2; ++i) {
        ASSERT_TRUE(box.show("ShowTnCPopup"));
        ASSERT_TRUE(waitUntil([&] { return box.utterances().size() == i; }));
        const std::string said = box.utterances().back();
        EXPECT_NE(said.find(" Abbrechen. Button."), std::string::npos) << said;
    }
    EXPECT_TRUE(saysOnce("A message catalogue cannot be used, its texts are in English: "));
}

TEST_F(AFileOfTheInstallation, WithoutTheInterfaceItIsDrivenThroughTheSettings)
{
    for (const Content& content : {Content {}, Content {"garbage"},
             Content {R"(<node name="no path"><interface name="a.b"/></node>)"}}) {
        SCOPED_TRACE(content.value_or("missing"));
        write(kIntrospection, content);
        box.reset();
        box.program = box.launch();
        ASSERT_TRUE(box.program->waitForLog("Could not register Object "));
        ASSERT_TRUE(box.daemon->receives("ServerStarted false"));
        ASSERT_TRUE(
            box.settings.setText(tv::kRequest, R"({"page":"pin","mobilename":"Anna's phone","pin":"0042"})"));
        ASSERT_TRUE(box.shows({tv::kPinRequest.card}));
        EXPECT_TRUE(box.press({"Return"}));
        EXPECT_TRUE(box.program->endsWith(0));
        EXPECT_EQ(box.daemon->calls(), (Lines {"ServerStarted false", "StopTessel true false"}));
    }
}

} // namespace
