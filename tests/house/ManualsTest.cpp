// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The manual pages list what there is, and nothing else.
#include "Manual.h"
#include "Requests.h"
#include "Sources.h"
#include "base/GlibHandles.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdio>
#include <cstdlib>

namespace {

using house::found;
using Names = std::set<std::string>;

/// @return what the tool prints; the variable TV_PROGRAMS names the folder of another build's
std::string outputOf(const std::string& command)
{
    const char* folder = std::getenv("TV_PROGRAMS");
    std::string output;
    FILE* pipe = popen(("'" + std::string(folder ? folder : BIN_DIR) + "/'" + command).c_str(), "r");
    for (std::array<char, 4096> line {}; pipe && fgets(line.data(), line.size(), pipe);)
        output += line.data();
    EXPECT_EQ(pclose(pipe), 0) << command;
    return output;
}

/// @return the paragraph that begins so, as far as it is one
std::string paragraph(const std::string& text, const std::string& beginning)
{
    const size_t begin = text.find(beginning);
    return begin == std::string::npos ? "" : text.substr(begin, text.find("\n\n", begin) - begin);
}

Names with(Names all, Names more)
{
    all.merge(more);
    return all;
}

/// The options that begin a line of a help.
Names optionsOf(const std::string& help)
{
    return with(found(R"(^  (?:-\w, )?(--[a-z-]+))", help), found(R"(^  (-\w), --)", help));
}

TEST(AToolsManual, HasEveryOptionCommandAndStatusOfItsHelp)
{
    for (const std::string tool : {"tessel-daemon-sim", "orbis-settings", "tessel-gallery"}) {
        SCOPED_TRACE(tool);
        auto page = house::manual(tool + ".1");
        const std::string help = outputOf(tool + " --help");
        const Names commands = found(R"(^  ([A-Za-z]\S*))", paragraph(help, "Commands"));
        Names options = optionsOf(help);
        if (tool == "orbis-settings") {
            for (const std::string& command : commands)
                options.merge(optionsOf(outputOf(tool + " " + command + " --help")));
        }
        std::string statuses = paragraph(help, "xit status");
        EXPECT_EQ(with(found("--[a-z-]+", page["OPTIONS"]), found(R"(^-\w)", page["OPTIONS"])), options);
        EXPECT_EQ(found(R"(^\S+)", page["COMMANDS"]), commands);
        EXPECT_EQ(found(R"(^\d+)", page["EXIT STATUS"]), found(R"((?:[ :;]|^)(\d+)(?=[ ,;]))", statuses));
        EXPECT_GT(options.size(), 1U);
        EXPECT_FALSE(page["EXIT STATUS"].empty());
    }
}

TEST(TheProgramsManual, HasEveryVariableAndStatus)
{
    auto page = house::manual("tessel-ui.8");
    const Names variables = with(found(R"re("([A-Z_]+)")re", house::textOf("platform/names/Environment.h")),
        found(R"(^\| `([A-Z_]+)` \|)", house::textOf("docs/settings.md")));
    EXPECT_GT(variables.size(), 4U);
    for (const std::string& variable : variables)
        EXPECT_TRUE(found("[A-Z_]+", page["ENVIRONMENT"]).count(variable)) << variable;
    for (const std::string& status :
        found(R"(APP_EXIT_\w+ = (\d+))", house::textOf("platform/include/app.h")))
        EXPECT_TRUE(page["EXIT STATUS"].count(status)) << status;
}

TEST(TheInterfacesManual, HasEveryMethodAndPage)
{
    auto page = house::manual("org.orbis.tessel-UI.5");
    const std::string xml = house::textOf("res/dbus/org.orbis.tessel-UI.interface.xml");
    const base::NodeInfoPtr node {g_dbus_node_info_new_for_xml(xml.c_str(), nullptr)};
    ASSERT_TRUE(node);
    Names methods;
    Names pages;
    for (GDBusMethodInfo** method = node->interfaces[0]->methods; *method; ++method) {
        std::string arguments;
        for (GDBusArgInfo** argument = (*method)->in_args; argument && *argument; ++argument)
            arguments.append(arguments.empty() ? "" : ", ")
                .append((*argument)->signature)
                .append(" ")
                .append((*argument)->name);
        methods.insert(std::string((*method)->name) + "(" + arguments + ")");
        const TesselUI::Request* request = TesselUI::requestOfMethod((*method)->name);
        ASSERT_NE(request, nullptr) << (*method)->name;
        if (!request->page)
            continue;
        pages.insert(request->page);
        std::string members;
        for (const char* member : request->members)
            members.append(member && !members.empty() ? ", " : "").append(member ? member : "");
        const std::string text = page["REQUESTS IN THE SETTINGS STORE"][request->page];
        EXPECT_EQ(text.rfind(members + (members.empty() ? "As " : ": as ") + request->method, 0), 0U) << text;
    }
    EXPECT_EQ(found(".+", page["BUS SERVICE OF THE PROGRAM"]), methods);
    EXPECT_EQ(found(".+", page["REQUESTS IN THE SETTINGS STORE"]), pages);
    EXPECT_EQ(found(R"(^\w+)", page["BUS SERVICE OF THE DAEMON"]), (Names {"ServerStarted", "StopTessel"}));
}

TEST(TheInterfacesManual, HasEverySettingsKeyWithItsType)
{
    auto page = house::manual("org.orbis.tessel-UI.5");
    const char* const key = R"((?:db|memory)/[a-z]\w*(?:/\w+)+)";
    Names used;
    for (const char* file : {"include/OutsideNames.h", "platform/names/SettingsKeys.h"})
        used.merge(found(key, house::withoutComments(house::textOf(file))));
    EXPECT_EQ(found(key, page["SETTINGS KEYS"]), used);
    for (const auto& [item, text] : page["SETTINGS KEYS"]) {
        const std::string name = item.substr(0, item.find(' '));
        const std::string type =
            item.substr(std::min(item.size(), name.size() + 2), item.size() - name.size() - 3);
        const std::string row = "| `" + name + "` | " + type + " |";
        EXPECT_NE(house::textOf("docs/settings.md").find(row), std::string::npos) << row;
    }
}

} // namespace
