/// The program when files of its installation are missing or damaged: the viewer is still asked, and the log
/// says once what is wrong.
#include "Cards.h"
#include "Installation.h"
#include "TvTest.h"

#include <algorithm>
#include <cstdlib>
#include <functional>

namespace {

using tv::waitUntil;

constexpr uint32_t kPinBlue = 0x29C5FF;
constexpr uint32_t kCard = 0x0E1520;
constexpr uint32_t kBright = 0xEBF0F5; ///< of the button with the focus, and the hint

/// @return how many points have about this colour; pictures of the theme round it
long near(const tv::Picture& picture, uint32_t colour)
{
    constexpr int kTolerance = 3;
    return std::count_if(picture.pixels.begin(), picture.pixels.end(), [colour](uint32_t pixel) {
        for (int shift : {0, 8, 16}) {
            const int one = static_cast<int>(pixel >> shift & 0xFF);
            const int other = static_cast<int>(colour >> shift & 0xFF);
            if (std::abs(one - other) > kTolerance)
                return false;
        }
        return true;
    });
}

class AFileOfTheInstallation : public tv::TvTest {
protected:
    void SetUp() override { ASSERT_TRUE(box.settings.setText(tv::kWizardMode, "FIRST_RUN")); }

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

    /// Success when the log has exactly one line of an error, and it begins so.
    testing::AssertionResult saysOnce(const std::string& beginning) const
    {
        const auto all = errors();
        const bool one = all.size() == 1 && all.front().rfind(beginning, 0) == 0;
        auto result = one ? testing::AssertionSuccess() : testing::AssertionFailure();
        for (const std::string& line : all)
            result << line << "\n";
        return result << all.size() << " errors, not one \"" << beginning << "\"";
    }

    testing::AssertionResult startAgain()
    {
        box.program.reset();
        box.daemon->forget();
        box.settings.remove(tv::kReady);
        return box.start();
    }

    /// Shows the PIN, looks at it, and lets the viewer cancel.
    void expectUsablePin()
    {
        ASSERT_TRUE(box.show("ShowPinPopup", {"Anna's phone", "0042"}));
        EXPECT_TRUE(box.shows({tv::pinCard("Anna's phone", "0042")}));
        const tv::Picture picture = display().settledPicture();
        EXPECT_GT(picture.count(kPinBlue), 1000U) << "no PIN";
        EXPECT_GT(near(picture, kCard), 100000) << "no card";
        EXPECT_GT(near(picture, kBright), 20000) << "no focus";
        display().key("Return");
        EXPECT_TRUE(endedByViewer(true));
        EXPECT_TRUE(box.screenIsPlain());
    }

    struct Damage {
        const char* name;
        std::function<void(const std::string&)> make;
    };
    std::vector<Damage> damages() const
    {
        return {
            {"missing", [this](const std::string& file) { files.remove(file); }},
            {"empty", [this](const std::string& file) { files.write(file, ""); }},
            {"cut in the middle", [this](const std::string& file) { files.cut(file, 0.5); }},
            {"cut at the end", [this](const std::string& file) { files.cut(file, 0.99); }},
            {"garbage", [this](const std::string& file) { files.write(file, std::string(50000, '?')); }},
            {"with a hole",
                [this](const std::string& file) {
                    std::string bytes = files.read(file);
                    std::fill(bytes.end() - static_cast<long>(bytes.size() / 4), bytes.end() - 100, '\0');
                    files.write(file, bytes);
                }},
        };
    }

    tv::Installation files {box};
};

TEST_F(AFileOfTheInstallation, TheWidgetsThemeHasAPlainOneInItsPlace)
{
    const std::string whole = files.read(tv::kWidgetTheme);
    for (const Damage& damage : damages()) {
        SCOPED_TRACE(damage.name);
        files.write(tv::kWidgetTheme, whole);
        damage.make(tv::kWidgetTheme);
        ASSERT_TRUE(startAgain());
        EXPECT_TRUE(saysOnce("The widgets' theme cannot be used, popups are plain: "));
        expectUsablePin();
        EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
    }
}

TEST_F(AFileOfTheInstallation, ThePlainThemeServesEveryPopupInEveryLook)
{
    files.remove(tv::kWidgetTheme);
    for (int contrast : {0, 1}) {
        ASSERT_TRUE(box.settings.setInt("db/menu/system/accessibility/highcontrast", contrast));
        ASSERT_TRUE(startAgain());
        for (const tv::ShownRequest& request : tv::kRequests) {
            SCOPED_TRACE(request.method);
            ASSERT_TRUE(box.show(request.method, request.texts));
            ASSERT_TRUE(box.shows({request.card}));
        }
        ASSERT_TRUE(box.show("ShowNetworkTest", tv::kNetworkTestRequest.texts));
        display().key("Return");
        ASSERT_TRUE(box.shows({tv::below(tv::kNetworkTestCard), tv::confirmation("Yes")}));
        display().key("Right");
        ASSERT_TRUE(box.shows({tv::below(tv::kNetworkTestCard), tv::confirmation("No")}));
        EXPECT_EQ(errors().size(), 1U);
        EXPECT_EQ(box.program->complaints(), std::vector<std::string> {});
    }
}

TEST_F(AFileOfTheInstallation, TheProgramsThemeIsMissedByTheLogOnly)
{
    const std::string whole = files.read(tv::kOwnTheme);
    for (const Damage& damage : damages()) {
        SCOPED_TRACE(damage.name);
        files.write(tv::kOwnTheme, whole);
        damage.make(tv::kOwnTheme);
        ASSERT_TRUE(startAgain());
        EXPECT_EQ(box.program->count("The program's theme cannot be used*"), 1U);
        ASSERT_TRUE(box.show("ShowNetworkTest", tv::kNetworkTestRequest.texts));
        EXPECT_TRUE(box.shows({tv::kNetworkTestCard}));
        ASSERT_TRUE(box.setStartMode(100));
        EXPECT_TRUE(box.program->endsWith(0));
    }
}

TEST_F(AFileOfTheInstallation, ADamagedCatalogueIsLeftOutForEnglish)
{
    constexpr const char* kUnusable = "A message catalogue cannot be used, its texts are in English: ";
    const std::string german = tv::Installation::catalogue("de");
    const std::string whole = files.read(german);
    ASSERT_TRUE(box.settings.setText(tv::kLanguage, "de_DE.UTF-8"));
    for (const Damage& damage : damages()) {
        SCOPED_TRACE(damage.name);
        files.write(german, whole);
        damage.make(german);
        ASSERT_TRUE(startAgain());
        if (damage.name == std::string("missing")) // a language that nobody has translated to
            EXPECT_EQ(errors(), std::vector<std::string> {});
        else
            EXPECT_TRUE(saysOnce(kUnusable));
        expectUsablePin();
    }
}

TEST_F(AFileOfTheInstallation, WithoutTheEnglishCatalogueIdsAreLeft)
{
    constexpr const char* kUnusable = "A message catalogue cannot be used, its texts are their ids: ";
    const std::string english = tv::Installation::catalogue("en");
    const std::string whole = files.read(english);
    for (const Damage& damage : damages()) {
        SCOPED_TRACE(damage.name);
        files.write(english, whole);
        damage.make(english);
        ASSERT_TRUE(startAgain());
        EXPECT_TRUE(saysOnce(kUnusable));
        ASSERT_TRUE(box.show("ShowTnCPopup"));
        EXPECT_TRUE(box.shows(
            {{"COM_TV_SID_TESSEL", {"TV_SID_TESSEL_CADEC_SETTING_UP_TV_MOBILE_TERMS_AND_CONDITIONS"},
                {"SID_CANCEL"}, "SID_CANCEL"}}));
        ASSERT_TRUE(box.setStartMode(100));
        EXPECT_TRUE(box.program->endsWith(0));
    }

    ASSERT_TRUE(box.settings.setText(tv::kLanguage, "de_DE.UTF-8"));
    ASSERT_TRUE(startAgain());
    EXPECT_TRUE(saysOnce(kUnusable));
    ASSERT_TRUE(box.show("ShowTnCPopup"));
    EXPECT_EQ(box.screen().cards.front().buttons, std::vector<std::string> {"Abbrechen"});
}

TEST_F(AFileOfTheInstallation, WithoutItsFontsTextsAreInAnother)
{
    constexpr const char* kDescription =
        "The description of fonts cannot be used, texts are in the machine's own: ";
    constexpr const char* kFamily = "The font of the texts is missing: NorvaleSans-500: ";
    constexpr const char* kInclude =
        R"(<?xml version="1.0"?><fontconfig><include>/etc/fonts/fonts.conf</include>)";
    struct {
        const char* name;
        const char* content;
        std::string line;
    } const descriptions[] = {
        {"garbage", "no description of fonts", kDescription},
        {"unnamed", "</fontconfig>", std::string(kFamily) + "no description of fonts names it"},
        {"not installed",
            R"(<alias binding="same"><family>NorvaleSans-500</family><prefer><family>Nowhere</family></prefer></alias>
               </fontconfig>)",
            std::string(kFamily) + "none of its fonts is installed"},
    };
    for (const auto& description : descriptions) {
        SCOPED_TRACE(description.name);
        files.write(tv::kFonts,
            (description.line == kDescription ? "" : std::string(kInclude)) + description.content);
        ASSERT_TRUE(startAgain());
        ASSERT_TRUE(waitUntil([&] { return !errors().empty(); })) << "nothing is said";
        EXPECT_TRUE(saysOnce(description.line));
        expectUsablePin();
    }
    files.remove(tv::kFonts);
    ASSERT_TRUE(startAgain());
    EXPECT_TRUE(saysOnce(kDescription));
    expectUsablePin();
}

/// A picture of which only the beginning is there: it says its size.
std::string pictureOfSize(const std::string& picture, unsigned char high)
{
    constexpr size_t kHeader = 12; // the chunk that its check sum is of
    constexpr size_t kWidth = 16;
    constexpr size_t kHeight = 20;
    constexpr size_t kSum = 29;
    std::string bytes = picture.substr(0, 1000);
    bytes[kWidth + 2] = bytes[kHeight + 2] = static_cast<char>(high);
    uint32_t sum = ~0U;
    for (size_t i = kHeader; i < kSum; ++i) {
        sum ^= static_cast<unsigned char>(bytes[i]);
        for (int bit = 0; bit < 8; ++bit)
            sum = (sum >> 1) ^ (sum & 1 ? 0xEDB88320U : 0U);
    }
    for (size_t i = 0; i < 4; ++i)
        bytes[kSum + i] = static_cast<char>(~sum >> (24 - 8 * i));
    return bytes;
}

TEST_F(AFileOfTheInstallation, TheGuidesPictureIsLeftOut)
{
    constexpr const char* kLeftOut = "A picture is left out: ";
    const std::string whole = files.read(tv::kGuidePicture);
    auto all = damages();
    all.push_back({"huge", [&](const std::string& file) { files.write(file, pictureOfSize(whole, 0x7F)); }});
    ASSERT_TRUE(box.start());
    size_t said = 0;
    for (const Damage& damage : all) {
        SCOPED_TRACE(damage.name);
        files.write(tv::kGuidePicture, whole);
        damage.make(tv::kGuidePicture);
        ASSERT_TRUE(box.show("ShowMobileGuide", {"0042"}));
        EXPECT_TRUE(box.shows({tv::kGuideCard}));
        // The button with the focus has 47,000 points, the hint 18,000.
        constexpr long kButtonAndHint = 54000;
        EXPECT_TRUE(display().waitForPicture([](const tv::Picture& now) {
            return near(now, kBright) > kButtonAndHint;
        })) << "no hint: "
            << near(display().picture(), kBright);
        // Of one that begins well, the toolkit reads the rest when it draws.
        const bool beginsWell =
            std::string(damage.name).rfind("cut", 0) == 0 || damage.name == std::string("with a hole");
        said += beginsWell ? 0 : 1;
        ASSERT_EQ(errors().size(), said);
        EXPECT_TRUE(said == 0 || errors().back().rfind(kLeftOut, 0) == 0);
        ASSERT_TRUE(box.request("HidePopup"));
    }
    ASSERT_TRUE(box.setStartMode(100));
    EXPECT_TRUE(box.program->endsWith(0));
}

TEST_F(AFileOfTheInstallation, WithoutTheInterfaceItIsDrivenThroughTheSettings)
{
    for (const char* content : {static_cast<const char*>(nullptr), "", "garbage", "<node/>",
             R"(<node name="no path"><interface name="a.b"/></node>)"}) {
        SCOPED_TRACE(content ? content : "missing");
        if (content)
            files.write(tv::kIntrospection, content);
        else
            files.remove(tv::kIntrospection);
        box.program.reset();
        box.daemon->forget();
        box.settings.remove(tv::kReady);
        box.program = box.launch({"LAUNCH_MODE=POPUP"});
        ASSERT_TRUE(box.program->waitForLog("Could not register Object "));
        ASSERT_TRUE(waitUntil([&] { return !box.daemon->calls().empty(); }));
        EXPECT_EQ(box.daemon->calls(), std::vector<std::string> {"ServerStarted(false)"});
        ASSERT_TRUE(
            box.settings.setText(tv::kRequest, R"({"page":"pin","mobilename":"Anna's phone","pin":"0042"})"));
        ASSERT_TRUE(box.shows({tv::pinCard("Anna's phone", "0042")}));
        ASSERT_TRUE(waitUntil([&] { return display().hasKeys(box.program->pid()); }));
        display().key("Return");
        EXPECT_TRUE(box.program->endsWith(0));
        EXPECT_EQ(box.daemon->calls().back(), "StopTessel(true, false)");
    }
}

} // namespace
