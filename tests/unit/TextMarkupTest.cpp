// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What names from outside may do to a text, on the screen and in speech.
#include "Fixtures.h"
#include "Folders.h"
#include "Util.h"
#include "base/Handles.h"
#include "elm_flux.h"
#include "flux/Markup.h"
#include "vconf.h"

#include <algorithm>
#include <ctime>
#include <sys/inotify.h>
#include <unistd.h>

namespace {

using orbis::flux::displayMarkup;
using orbis::flux::TextColours;

const TextColours kOnCard {"14 21 32 255", ""};

TEST(TheMarkupOfAText, IsWhatTheListAllowsAndNothingElse)
{
    const std::pair<const char*, const char*> cases[] = {
        {"<font=Kivo400 color=#2eb0c8 >Net</font>", "<font=Kivo400 color=#2eb0c8 >Net</font>"},
        {"<color=#29C5FF><align=center>12</align></color>",
            "<color=#29C5FF><align=center>12</align></color>"},
        {"a<br>b<br/>c<b>d<i>e</i></b><ps>", "a<br>b<br/>c<b>d<i>e</i></b><ps>"},
        {"<font_size=300>HUGE</font_size>", "HUGE"},
        {"<color=#fff font_size=3 linesize=900>x</color>", "<color=#fff >x</color>"},
        {"<item size=999x999>x<tab>y<u>z</u><style=glow>", "xyz"},
        // What names a file, and every other way to name it.
        {"<font_source=/x>a</font_source><font_fallbacks=/x>b", "ab"},
        {"<font=/x>a</font><font=Kivo400,/x>b<font=Kivo400:file=/x>c<font='Kivo400'>d", "abcd"},
        {"<b font_source=/x>a</b><br font=/x>b", "<b>a</b><br>b"},
        {"<font=Kivo400 font_source=/x font=/x>a", "<font=Kivo400 >a"},
        {"<font=/x color=#fff>a</font>", "<font color=#fff>a</font>"},
        {"<font=Kivo400\tfont=/x>a<color=#fff\nfont=/x>b", "ab"},
        // An end goes with its beginning, so that a name does not end what stands around it.
        {"<font=Kivo400>a<font=/x>b</font>c</font>d</font>", "<font=Kivo400>abc</font>d"},
        {"</color></b></wrap></", "&lt;/"},
        // Colours that can be read on the card.
        {"<color=#000>a<color=#777777>b<color=red>c<color=#fff0>d<color=#ff>e<color=#12345g>f", "abcdef"},
        {"<font=Kivo400 color=#000>a</font>", "<font=Kivo400 >a</font>"},
        {"<align=right>a<align=center >b", "a<align=center >b"},
        // Brackets that begin nothing, and entities.
        {"Tom <3 & Ann", "Tom &lt;3 & Ann"},
        {"<5GHz> <Anna> 5>3", "&lt;5GHz> &lt;Anna> 5>3"},
        {"<b <font_size=300>A", "&lt;b A"},
        {"<b' font_size=300'>A", "&lt;b' font_size=300'>A"},
        {"&#x200e;A&amp;&lt;b&gt;&#x200f;", "&#x200e;A&amp;&lt;b&gt;&#x200f;"},
        {"<", "&lt;"},
        // What would be nothing to see.
        {"<br>", "&lt;br>"},
        {" <br><ps/> ", " &lt;br>&lt;ps/> "},
        {"<u><br/></u>", "&lt;br/>"},
        {"<br>1", "<br>1"},
    };
    for (const auto& [given, shown] : cases)
        EXPECT_EQ(displayMarkup(given, kOnCard), shown) << given;
    EXPECT_EQ(displayMarkup("<color=#fff>a<b>b"), "a<b>b") << "on an unknown ground no colour is safe";
    EXPECT_EQ(displayMarkup("<font=Kivo400 color=#2eb0c8 >N</font><color=red>r", {"", "#FFF"}),
        "<font=Kivo400 color=#FFF >N</font><color=#FFF>r");
}

TEST(TheMarkupOfAText, IsCutBetweenCharactersWhereNoCardHoldsMore)
{
    const auto shown = [](const std::string& text) { return displayMarkup(text, kOnCard); };
    const auto times = [](int count, const std::string& text) {
        std::string result;
        while (count-- > 0)
            result += text;
        return result;
    };
    constexpr int kFull = 600;
    for (const char* one : {"x", "é", "漢", "😀", "&amp;", "&#x1f600;", "\xFF"}) {
        EXPECT_EQ(shown(times(kFull, one)), times(kFull, one));
        EXPECT_EQ(shown(times(kFull + 1, one)), times(kFull, one) + "…");
    }
    EXPECT_EQ(
        shown("<b>" + times(kFull - 1, "x") + "</b>é<b>y"), "<b>" + times(kFull - 1, "x") + "</b>é<b>…");
    EXPECT_EQ(shown(times(kFull, "<b>") + "x"), times(64, "<b>") + "x");
    EXPECT_EQ(shown(times(kFull, "<u>") + "x<b>y"), "xy");
    EXPECT_EQ(shown("<b>" + times(kFull, "<u></b>")), "<b></b>");
    EXPECT_EQ(shown(shown(times(5000, "<i>Hi & <</i>"))), shown(times(5000, "<i>Hi & <</i>")));
}

class ANameWithMarkup : public ManagerTest {
protected:
    /// Shows a text in every widget that takes one.
    void showInWidgets(const std::string& text)
    {
        Evas_Object* popup = elm_flux_popup_add(m_window);
        Evas_Object* box = elm_flux_textbox_add(popup);
        Evas_Object* button = elm_flux_button_add(popup);
        Evas_Object* hint = elm_flux_object_tooltip_add(popup, popup);
        EXPECT_TRUE(elm_flux_popup_title_set(popup, text.c_str()));
        EXPECT_TRUE(elm_flux_textbox_text_set(box, text.c_str()));
        EXPECT_TRUE(elm_flux_button_text_set(button, text.c_str()));
        EXPECT_TRUE(elm_flux_object_tooltip_text_set(hint, text.c_str()));
        EXPECT_TRUE(elm_flux_popup_content_set(popup, box, 800, 200));
        EXPECT_TRUE(elm_flux_popup_button_set(popup, button, 0));
        evas_object_show(popup);
        elm_flux_object_tooltip_show(hint);
        toolkit::settle();
        EXPECT_EQ(orbis::flux::recordOf<toolkit::TextboxRecord>(box)->text, text)
            << "itself it is what was given";
        evas_object_del(popup);
        evas_object_del(hint);
        toolkit::settle();
    }
};

TEST_F(ANameWithMarkup, OpensNoFileWhereverItIsShown)
{
    const std::string path = std::string(getenv("ORBIS_RUNTIME_DIR")) + "/font";
    tv::writeFile(path, "");
    const int opened = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_GE(inotify_add_watch(opened, path.c_str(), IN_OPEN), 0);
    for (const std::string& name :
        {"<font=Sans font_source=" + path + ">A", "<b font=" + path + "><font_fallbacks=" + path + ">A"}) {
        vconf_set_str("memory/tessel/ble_tvname", name.c_str());
        for (Kind kind : {Kind::Pin, Kind::SignIn, Kind::NetworkTest, Kind::Guide}) {
            request(kind, name);
            toolkit::settle();
        }
        const auto texts = toolkit::textsOf(m_window);
        EXPECT_EQ(std::count(texts.begin(), texts.end(), name[1] == 'b' ? "<b>A" : "A"), 1);
        showInWidgets(name);
        char event[1024];
        EXPECT_LT(read(opened, event, sizeof event), 0) << name;
    }
    close(opened);
}

TEST_F(ANameWithMarkup, IsLaidOutAtOnceHoweverLongItIs)
{
    for (const char* part : {"<b>x", "<u>", "&amp;", "\u0301", "<br>"}) {
        std::string name;
        while (name.size() < 300000)
            name += part;
        const clock_t begin = clock(); // of the processor: the machine may be busy
        showInWidgets(name);
        EXPECT_LT(clock() - begin, 3 * CLOCKS_PER_SEC) << part;
    }
}

TEST(AName, IsMarkedAndCutAt254Bytes)
{
    const auto marked = [](std::string name) {
        const base::MallocStr text {TesselUI::TSUtil::AddLTRMarker(name.data())};
        return std::string(text.get());
    };
    EXPECT_EQ(TesselUI::TSUtil::AddLTRMarker(nullptr), nullptr);
    EXPECT_EQ(marked(""), "\xE2\x80\x8E\xE2\x80\x8F");
    EXPECT_EQ(marked(std::string(248, 'n')).size(), 254U);
    EXPECT_EQ(marked(std::string(249, 'n')), "\xE2\x80\x8E" + std::string(249, 'n') + "\xE2\x80");
    EXPECT_EQ(marked(std::string(1 << 20, 'n')), "\xE2\x80\x8E" + std::string(251, 'n'));
}

} // namespace
