// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Who includes whom is what the drawing says.
#include "Sources.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <sstream>

namespace {

namespace fs = std::filesystem;
using house::Arrows;

/// @return the folder that @p file belongs to; a header of the program belongs to the source of its name, and
/// to
///         "include" when there is none
std::string roomOf(const fs::path& file)
{
    const std::string folder = file.parent_path();
    if (folder != "include")
        return folder;
    static const auto s_sources = house::sources({"src", "common/src"});
    const auto source = std::find_if(s_sources.begin(), s_sources.end(),
        [&](const fs::path& candidate) { return candidate.stem() == file.stem(); });
    return source == s_sources.end() ? folder : source->parent_path().string();
}

/// @return the file without its ending: a header and its source are one unit
std::string unitOf(const fs::path& file)
{
    return fs::path(file).replace_extension();
}

Arrows between(const Arrows& files, const std::function<std::string(const fs::path&)>& place)
{
    Arrows arrows;
    for (const auto& [from, targets] : files) {
        for (const std::string& to : targets) {
            if (place(from) != place(to))
                arrows[place(from)].insert(place(to));
        }
    }
    return arrows;
}

/// The block "arrows" of the architecture's description: a line a folder, "from: to to to".
Arrows drawn()
{
    const std::string text = house::textOf("docs/architecture.md");
    const std::string begin = "```arrows\n";
    const size_t from = text.find(begin);
    Arrows arrows;
    std::istringstream lines(from == std::string::npos
            ? ""
            : text.substr(from + begin.size(), text.find("\n```", from) - from - begin.size()));
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words(line);
        std::string room;
        words >> room;
        if (!room.empty())
            room.pop_back(); // the colon
        for (std::string to; words >> to;)
            arrows[room].insert(to);
    }
    return arrows;
}

TEST(Arrows, AreThoseOfTheDrawing)
{
    const Arrows plan = drawn();
    const Arrows code = between(
        house::includes(house::sources({"base", "common", "include", "platform", "src", "tools"})), roomOf);
    ASSERT_FALSE(plan.empty());
    for (const auto& [from, targets] : code) {
        for (const std::string& to : targets)
            EXPECT_TRUE(plan.count(from) && plan.at(from).count(to))
                << from << " includes " << to << ", which is not drawn";
    }
    for (const auto& [from, targets] : plan) {
        for (const std::string& to : targets)
            EXPECT_TRUE(code.count(from) && code.at(from).count(to))
                << from << " does not include " << to << " any more";
    }
}

/// The way up from the popups to the application is one header each: who uses it compiles neither JSON nor
/// all popups.
TEST(Arrows, LeadUpThroughSmallHeaders)
{
    const Arrows files = house::includes(house::sources({"include"}));
    const std::set<std::string> none;
    for (const char* header : {"include/TesselUI.h", "include/UIManager.h"}) {
        const auto entry = files.find(header);
        for (const std::string& target : entry == files.end() ? none : entry->second)
            EXPECT_EQ(target.rfind("platform/include/", 0), 0U) << header << " includes " << target;
        EXPECT_EQ(house::textOf(header).find("<json/json.h>"), std::string::npos) << header;
    }
}

/// The program can be built on another platform.
TEST(Arrows, OfTheProgramEndAtThePlatformsPublicHeaders)
{
    for (const auto& [from, targets] : house::includes(house::sources({"common", "include", "src"}))) {
        for (const std::string& to : targets)
            EXPECT_TRUE(to.rfind("platform/", 0) != 0 || to.rfind("platform/include/", 0) == 0)
                << from << " includes " << to;
    }
    for (const auto& [from, targets] : house::includes(house::sources({"platform"}))) {
        for (const std::string& to : targets)
            EXPECT_TRUE(to.rfind("include/", 0) != 0) << from << " includes " << to;
    }
}

TEST(Arrows, OfThePlatformMakeNoRing)
{
    const Arrows units = between(house::includes(house::sources({"platform"})), unitOf);
    std::set<std::string> done;
    std::vector<std::string> way;
    const std::function<void(const std::string&)> follow = [&](const std::string& unit) {
        if (const auto at = std::find(way.begin(), way.end(), unit); at != way.end()) {
            std::string ring;
            std::for_each(at, way.end(), [&](const std::string& step) { ring += step + " > "; });
            ADD_FAILURE() << ring << unit;
            return;
        }
        if (!done.insert(unit).second)
            return;
        way.push_back(unit);
        if (const auto targets = units.find(unit); targets != units.end()) {
            for (const std::string& to : targets->second)
                follow(to);
        }
        way.pop_back();
    };
    for (const auto& [unit, targets] : units)
        follow(unit);
}

} // namespace
