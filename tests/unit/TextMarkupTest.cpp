/// What names from outside may do to a text, on the screen and in speech.
#include "Fixtures.h"
#include "elm_flux.h"
#include "flux/Markup.h"
#include "flux/SpokenText.h"

namespace {

using orbis::flux::displayMarkup;
using orbis::flux::spokenLine;
using orbis::flux::withDigitsApart;

TEST(TheMarkupOfAText, KeepsItsLookAndLosesWhatTheWidgetDecides)
{
    const std::pair<const char*, const char*> cases[] = {
        {"<font=Kivo400 color=#2eb0c8 >Net</font>", "<font=Kivo400 color=#2eb0c8 >Net</font>"},
        {"<color=#29C5FF><align=center>12</align></color>",
            "<color=#29C5FF><align=center>12</align></color>"},
        {"a<br>b<br/>c", "a<br>b<br/>c"},
        {"<font_size=300>HUGE</font_size>", "HUGE"},
        {"<color=#fff font_size=3 linesize=900>x</color>", "<color=#fff  >x</color>"},
        {"<item size=999x999>x", "x"},
        {"Tom <3 & Ann", "Tom &lt;3 & Ann"},
        {"<5GHz> <Anna>", "&lt;5GHz> &lt;Anna>"},
        {"<font=A>Tom <3</font>", "<font=A>Tom &lt;3</font>"},
        {"<font='A B' wrap=none>x", "<font='A B' >x"},
        {"<b <font_size=300>A", "&lt;b A"},
        {"<b ' font_size=300>A", "<b ' >A"},
        {"<b' font_size=300'>A", "&lt;b' font_size=300'>A"},
        {"<", "&lt;"},
        {"</wrap></", "&lt;/"},
        {"", ""},
    };
    for (const auto& [given, shown] : cases)
        EXPECT_EQ(displayMarkup(given, ""), shown) << given;
    EXPECT_EQ(displayMarkup("<font=A color=#2eb0c8 >N</font><color=red>r", "#FFF"),
        "<font=A color=#FFF >N</font><color=#FFF>r");
}

TEST(SpokenText, IsOnePlainLineWithCodesDigitByDigit)
{
    EXPECT_EQ(spokenLine("a\nb\u200eAnna\u200f \u2068\u202dx\u2069"), "a bAnna x");
    const std::pair<const char*, const char*> cases[] = {
        {"PIN,0427,Cancel", "PIN,0 4 2 7,Cancel"},
        {"100001", "1 0 0 0 0 1"},
        {"Wi-Fi 802, 5 GHz", "Wi-Fi 802, 5 GHz"},
        {"SM12345 and é2024", "SM12345 and é2024"},
        {"", ""},
    };
    for (const auto& [text, spoken] : cases)
        EXPECT_EQ(withDigitsApart(text), spoken);
}

} // namespace
