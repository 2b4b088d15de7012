// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The gallery is given themes and catalogues that are broken on purpose, each in one way that a viewer would
/// see.
#include "Options.h"
#include "Runner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>
#include <string>

namespace {

namespace fs = std::filesystem;

struct Fault {
    const char* what;
    const char* file; ///< of the theme's sources, or a catalogue
    const char* text; ///< in it, once or more
    const char* replacement; ///< of each
    const char* state;
    const char* rule; ///< that has to be broken
    const char* detail = ""; ///< to be found in what the rule says
};

// Names of faults say what a viewer would see.
constexpr Fault kThemeFaults[] = {
    {"nothing drawn for the PIN", "text.edc",
        R"(FLUX_TEXTBOX_USUALLY("8", "flux_digits", SIZE_FLOOR, SIZE_DIGITS, SIZE_DIGITS_USUAL))",
        R"(group { name: "elm/flux/textbox/8"; parts { part { name: "elm.text"; type: TEXTBLOCK; scale: 1;
           description { state: "default" 0.0; color: 0 0 0 0; text { style: "flux_digits"; align: 0.5 0.5; } } } } })",
        "pin", "missing-pin"},
    {"titles hidden", "popup.edc", "text { style: \"flux_title\";",
        "visible: 0; text { style: \"flux_title\";", "access-points", "missing-title"},
    {"no room at the card's edge", "palette.edc", "CARD_PADDING           64", "CARD_PADDING 0", "terms",
        "edge"},
    {"the hairline through the title", "popup.edc",
        "0.80; \\\n            rel2.to: \"above\"; rel2.relative: 1.0 0.80;",
        "0.43; \\\n            rel2.to: \"above\"; rel2.relative: 1.0 0.43;", "pin", "hairline"},
    {"no hairline", "palette.edc", "COLOR_HAIRLINE         58 70 88", "COLOR_HAIRLINE 14 21 32",
        "network-test", "missing-hairline"},
    {"an invisible spinner", "palette.edc", "COLOR_SPINNER          41 197 255", "COLOR_SPINNER 14 21 32",
        "sign-in", "missing-spinner"},
    {"texts cut at the left", "text.edc", "part { name: \"bounds\"; type: RECT; mouse_events: 0; }",
        "part { name: \"bounds\"; type: RECT; mouse_events: 0; "
        "description { state: \"default\" 0.0; rel1.relative: 0.008 0.0; } }",
        "terms", "cut-letters", "at the left"},
    {"texts cut below", "text.edc", "part { name: \"bounds\"; type: RECT; mouse_events: 0; }",
        "part { name: \"bounds\"; type: RECT; mouse_events: 0; "
        "description { state: \"default\" 0.0; rel2.relative: 1.0 0.78; } }",
        "terms", "cut-letters", "at the bottom"},
    {"another font", "palette.edc", "font=NorvaleSans-500 font_size=32", "font=NanumGothic font_size=32",
        "terms", "font"},
    {"a focus that does not grow", "palette.edc", "BUTTON_INSET           5", "BUTTON_INSET 0", "pin",
        "focus-size"},
    {"a focus that is hardly lighter", "palette.edc", "COLOR_BUTTON_FOCUSED   235 240 245",
        "COLOR_BUTTON_FOCUSED 70 85 110", "pin", "focus-lightness"},
    {"a focused button without its label", "palette.edc", "font_size=30 color=#10161F",
        "font_size=30 color=#EBF0F5", "pin", "missing-label"},
    {"a name in colours that cannot be read", "text.edc", "\"ground\" FLUX_QUOTED(COLOR_CARD)",
        "\"ground\" \"255 255 255 255\"", "names-dark-colour-pin", "hidden-letters"},
    {"a TV's name that can hardly be read", "palette.edc", "\"#9FD8F2\"", "\"#4A6070\"", "guide", "contrast"},
    {"a text too small", "palette.edc", "font_size=24 color=#C3CBD6", "font_size=18 color=#C3CBD6", "guide",
        "small-text"},
};

constexpr Fault kCatalogueFaults[] = {
    {"a text without its name", "", "Connected to \u2068%1\u2069", "Connected", "pin", "missing-text"},
    {"a text that turns round", "", "\"Wi-Fi network: ", "\"\u202eWi-Fi network: ", "network-test", "order"},
    {"a text that is not translated", "", "\"Choose your Wi-Fi network on your phone to\u00a0continue.\"",
        "\"\"", "access-points", "raw-id"},
    {"a character that no font has", "", "\"Choose your", "\"Choose \U00030000 your", "access-points",
        "no-font"},
    {"a text for which there is no room", "", "Choose your Wi-Fi network",
        "Choose your Wi-Fi network, which is the one that all of your other things use as well, or any of "
        "those "
        "that are found, as long as you know how to get into it, and that you may use, and then go on with "
        "whatever it is that you were doing",
        "access-points", "ellipsis"},
    {"a label that is too long", "", "\"Cancel\"",
        "\"Cancel this and everything else that has been begun so far\"", "pin", "overflow"},
};

class TheGallery : public testing::Test {
protected:
    TheGallery()
    {
        std::string path = fs::temp_directory_path() / "gallery-test-XXXXXX";
        m_folder = mkdtemp(path.data());
        m_options.scales = {2.0 / 3};
        m_options.onlyBrokenPictures = true;
        m_options.quiet = true;
    }
    ~TheGallery() override { fs::remove_all(m_folder); }

    static void write(const fs::path& path, const std::string& text)
    {
        fs::create_directories(path.parent_path());
        std::ofstream {path} << text;
    }

    /// @return what @p file holds, with the fault
    static std::string withFault(const fs::path& file, const Fault& fault)
    {
        std::ostringstream all;
        all << std::ifstream {file}.rdbuf();
        std::string text = all.str();
        size_t at = text.find(fault.text);
        EXPECT_NE(at, std::string::npos) << fault.what << ": is no longer in " << file;
        const std::string replacement = fault.replacement;
        for (; at != std::string::npos; at = text.find(fault.text, at + replacement.size()))
            text.replace(at, strlen(fault.text), replacement);
        return text;
    }

    static void run(const std::string& command) { ASSERT_EQ(system(command.c_str()), 0) << command; }

    /// Makes the theme of the sources in @p sources.
    void compileTheme(const fs::path& sources)
    {
        m_options.theme = m_folder / "theme.edj";
        run(EDJE_CC " -id " THEME_IMAGES " " + (sources / "flux.edc").string() + " " + m_options.theme + " >"
            + (m_folder / "log").string() + " 2>&1");
    }

    /// @return the rules that @p state breaks, each with what it says
    std::multimap<std::string, std::string> brokenIn(const std::string& state)
    {
        m_options.folder = m_folder / "pictures";
        m_options.states = {state};
        bool isComplete = false;
        const Json::Value parts = gallery::runAll(m_options, isComplete);
        EXPECT_TRUE(isComplete);
        std::multimap<std::string, std::string> rules;
        for (const Json::Value& part : parts) {
            for (const Json::Value& picture : part["pictures"]) {
                for (const Json::Value& rule : picture["broken"])
                    rules.emplace(rule["rule"].asString(), rule["detail"].asString());
            }
        }
        return rules;
    }

    static std::string listOf(const std::multimap<std::string, std::string>& rules)
    {
        std::string list;
        for (const auto& [rule, detail] : rules)
            list.append("\n").append(rule).append(": ").append(detail);
        return list;
    }

    void expectOnlyWith(const Fault& fault, const std::multimap<std::string, std::string>& rules)
    {
        const auto [begin, end] = rules.equal_range(fault.rule);
        EXPECT_TRUE(std::any_of(
            begin, end, [&](const auto& one) { return one.second.find(fault.detail) != std::string::npos; }))
            << fault.what << " is not noticed as " << fault.rule << " but as" << listOf(rules);
        // The rule would prove nothing if it were broken anyway.
        EXPECT_EQ(soundOnes(fault.state).count(fault.rule), 0U) << fault.state << " without " << fault.what;
    }

    const std::multimap<std::string, std::string>& soundOnes(const std::string& state)
    {
        const auto [entry, isNew] = m_sound.try_emplace(state);
        if (isNew) {
            const gallery::Options former = m_options;
            m_options.theme = m_options.catalogues = "";
            entry->second = brokenIn(state);
            m_options = former;
        }
        return entry->second;
    }

    fs::path m_folder;
    gallery::Options m_options;
    std::map<std::string, std::multimap<std::string, std::string>> m_sound;
};

TEST_F(TheGallery, NamesWhatIsWrongWithABrokenTheme)
{
    for (const Fault& fault : kThemeFaults) {
        const fs::path sources = m_folder / "theme";
        fs::remove_all(sources);
        fs::copy(THEME_SOURCES, sources, fs::copy_options::recursive);
        write(sources / fault.file, withFault(sources / fault.file, fault));
        compileTheme(sources);
        expectOnlyWith(fault, brokenIn(fault.state));
    }
}

TEST_F(TheGallery, NamesWhatIsWrongWithABrokenCatalogue)
{
    for (const Fault& fault : kCatalogueFaults) {
        const fs::path source = m_folder / "en.po";
        write(source, withFault(ENGLISH_CATALOGUE, fault));
        const fs::path compiled = m_folder / "locale/en/LC_MESSAGES/org.orbis.tessel-UI.mo";
        fs::create_directories(compiled.parent_path());
        run(MSGFMT " -o " + compiled.string() + " " + source.string());
        m_options.catalogues = m_folder / "locale";
        expectOnlyWith(fault, brokenIn(fault.state));
    }
}

} // namespace
