/// The program when files of its installation are missing or damaged: the viewer is still asked, and the log
/// says once what is wrong.
#include "Cards.h"
#include "Installation.h"
#include "TvTest.h"

namespace {

using tv::waitUntil;
using Content = std::optional<std::string>; ///< of a file; nothing for none

constexpr uint32_t kPinBlue = 0x29C5FF;
constexpr const char* kHighContrast = "db/menu/system/accessibility/highcontrast";
const std::string kGarbage(50000, '?');

class AFileOfTheInstallation : public tv::TvTest {
protected:
    /// @return the lines that the platform's part of the log has at level error
    std::vector<std::string> errors() const
    {
        constexpr std::string_view kMark = "E/orbis-platform: ";
        std::vector<std::string> result;
        for (const std::string& line : box.program->errors()) {
            if (line.rfind(kMark, 0) == 0)
                result.push_back(line.substr(kMark.size()));
        }
        return result;
    }

    /// Success when the log has one line of an error, beginning so, or none when that is empty.
    testing::AssertionResult saysOnce(const std::string& beginning) const
    {
        waitUntil([&] { return beginning.empty() || !errors().empty(); });
        const auto all = errors();
        if (beginning.empty() ? all.empty() : all.size() == 1 && all.front().rfind(beginning, 0) == 0)
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << testing::PrintToString(all) << ", not once " << beginning;
    }

    /// @return @p whole cut in the middle, and with a hole
    static std::vector<Content> damaged(const std::string& whole)
    {
        std::string holed = whole;
        holed.replace(whole.size() * 3 / 4, whole.size() / 5, whole.size() / 5, '\0');
        return {std::nullopt, "", whole.substr(0, whole.size() / 2), holed, kGarbage};
    }

    tv::Installation files {box};
};

TEST_F(AFileOfTheInstallation, IsNamedOnceAndThePopupsAreUsableWithoutIt)
{
    const auto half = [this](const char* file) {
        const std::string whole = files.read(file);
        return whole.substr(0, whole.size() / 2);
    };
    const tv::Card ids {"COM_TV_SID_TESSEL",
        {"TV_SID_TESSEL_CADEC_SETTING_UP_TV_MOBILE_TERMS_AND_CONDITIONS"}, {"SID_CANCEL"}, "SID_CANCEL"};
    const std::string fonts = R"(<?xml version="1.0"?><fontconfig><include>/etc/fonts/fonts.conf</include>)";
    const std::string uninstalled = R"(<alias binding="same"><family>NorvaleSans-500</family>
        <prefer><family>Nowhere</family></prefer></alias></fontconfig>)";
    const std::string noFonts = "The description of fonts cannot be used, texts are in the machine's own: ";
    const std::string noFont = "The font of the texts is missing: NorvaleSans-500: ";
    const std::string noIds = "A message catalogue cannot be used, its texts are their ids: ";
    const std::string noGerman = "A message catalogue cannot be used, its texts are in English: ";
    struct {
        const char* file;
        Content content;
        std::string line;
        std::string language = "en_US";
        tv::Card card = tv::kTermsCard;
    } const damages[] = {
        {tv::kOwnTheme, std::nullopt, ""},
        {tv::kOwnTheme, kGarbage, ""},
        // A language that nobody has translated to.
        {tv::kGerman, std::nullopt, "", "de_DE"},
        {tv::kGerman, half(tv::kGerman), noGerman, "de_DE"},
        {tv::kGerman, kGarbage, noGerman, "de_DE"},
        {tv::kEnglish, std::nullopt, noIds, "en_US", ids},
        {tv::kEnglish, half(tv::kEnglish), noIds, "en_US", ids},
        {tv::kFonts, std::nullopt, noFonts},
        {tv::kFonts, "no description of fonts", noFonts},
        {tv::kFonts, fonts + "</fontconfig>", noFont + "no description of fonts names it"},
        {tv::kFonts, fonts + uninstalled, noFont + "none of its fonts is installed"},
    };
    for (const auto& [file, content, line, language, card] : damages) {
        SCOPED_TRACE(std::string(file) + ": " + line);
        const std::string whole = files.read(file);
        files.write(file, content);
        ASSERT_TRUE(box.settings.setText(tv::kLanguage, language + ".UTF-8"));
        ASSERT_TRUE(box.startAgain());
        EXPECT_TRUE(saysOnce(line));
        EXPECT_EQ(box.program->count("The program's theme cannot be used*"), file == tv::kOwnTheme ? 1U : 0U);
        ASSERT_TRUE(box.show({"ShowTnCPopup", {}, card}));
        EXPECT_TRUE(box.press({"Return"}));
        EXPECT_TRUE(endedByViewer(false));
        files.write(file, whole);
    }

    files.write(tv::kEnglish, std::nullopt);
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, "de_DE.UTF-8"));
    ASSERT_TRUE(box.startAgain());
    EXPECT_TRUE(saysOnce(noIds));
    ASSERT_TRUE(box.show("ShowTnCPopup"));
    EXPECT_EQ(box.screen().cards.front().buttons, std::vector<std::string> {"Abbrechen"});
}

TEST_F(AFileOfTheInstallation, TheWidgetsThemeHasAPlainOneInItsPlace)
{
    const auto all = damaged(files.read(tv::kWidgetTheme));
    for (size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE(i);
        files.write(tv::kWidgetTheme, all[i]);
        ASSERT_TRUE(box.settings.setInt(kHighContrast, 0));
        ASSERT_TRUE(box.startAgain());
        EXPECT_TRUE(saysOnce("The widgets' theme cannot be used, popups are plain: "));
        ASSERT_TRUE(box.show(tv::kPinRequest));
        const tv::Picture picture = display().settledPicture();
        EXPECT_GT(picture.count(kPinBlue), 1000U) << "no PIN";
        EXPECT_GT(picture.count(0x0E1520), 100000U) << "no card";
        EXPECT_GT(picture.count(0xEBF0F5), 20000U) << "no focus";
    }
    for (int contrast : {0, 1}) {
        ASSERT_TRUE(box.settings.setInt(kHighContrast, contrast));
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
    EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
}

TEST_F(AFileOfTheInstallation, TheGuidesPictureIsLeftOut)
{
    auto all = damaged(files.read(tv::kGuidePicture));
    all.emplace_back("P6\n32000 32000\n255\n"); // of a size that no memory holds
    const std::vector<bool> isSaid {true, true, false, false, true, true}; // of one that begins well, the
    // toolkit reads the rest when it draws
    ASSERT_TRUE(box.start());
    size_t said = 0;
    for (size_t i = 0; i < all.size(); ++i) {
        SCOPED_TRACE(i);
        files.write(tv::kGuidePicture, all[i]);
        ASSERT_TRUE(box.show(tv::kGuideRequest));
        // The button with the focus has 47,000 such points, the hint 18,000; the theme's pictures round them.
        EXPECT_TRUE(display().waitForPicture([](const tv::Picture& now) {
            return now.count(0xEBF0F5, 3) > 54000;
        })) << "no hint: "
            << display().picture().count(0xEBF0F5, 3);
        said += isSaid[i] ? 1 : 0;
        ASSERT_EQ(errors().size(), said);
        EXPECT_TRUE(said == 0 || errors().back().rfind("A picture is left out: ", 0) == 0);
        ASSERT_TRUE(box.request("HidePopup"));
    }
    ASSERT_TRUE(box.setStartMode(100));
    EXPECT_TRUE(box.program->endsWith(0));
}

TEST_F(AFileOfTheInstallation, WithoutTheInterfaceItIsDrivenThroughTheSettings)
{
    for (const Content& content : {Content {}, Content {"garbage"},
             Content {R"(<node name="no path"><interface name="a.b"/></node>)"}}) {
        SCOPED_TRACE(content.value_or("missing"));
        files.write(tv::kIntrospection, content);
        box.daemon->forget();
        box.program = box.launch({"LAUNCH_MODE=POPUP"});
        ASSERT_TRUE(box.program->waitForLog("Could not register Object "));
        ASSERT_TRUE(waitUntil([&] { return !box.daemon->calls().empty(); }));
        ASSERT_TRUE(
            box.settings.setText(tv::kRequest, R"({"page":"pin","mobilename":"Anna's phone","pin":"0042"})"));
        ASSERT_TRUE(box.shows({tv::kPinRequest.card}));
        EXPECT_TRUE(box.press({"Return"}));
        EXPECT_TRUE(box.program->endsWith(0));
        EXPECT_EQ(box.daemon->calls(),
            (std::vector<std::string> {"ServerStarted(false)", "StopTessel(true, false)"}));
    }
}

} // namespace
