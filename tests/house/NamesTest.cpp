// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What others rely on is told where they look for it.
#include "Requests.h"
#include "Sources.h"
#include "base/GlibHandles.h"

#include <gtest/gtest.h>

#include <regex>

namespace {

std::set<std::string> settingsKeys(const std::string& text)
{
    static const std::regex s_key(R"re(\b(?:db|memory)/[a-z]\w*(?:/\w+)+)re");
    std::set<std::string> keys;
    for (std::sregex_iterator match(text.begin(), text.end(), s_key), end; match != end; ++match)
        keys.insert(match->str());
    return keys;
}

TEST(SettingsKeys, AreAllDescribed)
{
    const std::set<std::string> described = settingsKeys(house::textOf("docs/settings.md"));
    size_t used = 0;
    for (const auto& file : house::sources({"common", "include", "platform", "src"})) {
        for (const std::string& key : settingsKeys(house::withoutComments(house::textOf(file)))) {
            ++used;
            EXPECT_TRUE(described.count(key)) << key << " of " << file;
        }
    }
    EXPECT_GT(used, 10U);
}

/// Names stand in one file a layer, so that who looks for a key finds it.
TEST(SettingsKeys, HaveOneHomeALayer)
{
    const std::pair<std::vector<std::string>, std::string> layers[] = {
        {{"common", "include", "src"}, "include/OutsideNames.h"},
        {{"platform"}, "platform/names/SettingsKeys.h"}};
    for (const auto& [folders, home] : layers) {
        for (const auto& file : house::sources(folders)) {
            for (const std::string& key : settingsKeys(house::withoutComments(house::textOf(file))))
                EXPECT_EQ(file.string(), home) << key;
        }
    }
}

/// The tables of faults, and what daemons are promised, point to a test in each row.
TEST(TheTestsThatDocumentsName, AreThere)
{
    std::set<std::string> cases;
    static const std::regex s_case(R"re((?:TEST|TEST_F|TEST_P|TYPED_TEST)\((\w+),\s*(\w+)\))re");
    for (const auto& file : house::sources({"tests"})) {
        const std::string text = house::textOf(file);
        for (std::sregex_iterator match(text.begin(), text.end(), s_case), end; match != end; ++match)
            cases.insert((*match)[1].str() + "." + (*match)[2].str());
    }
    const std::string table = house::textOf("docs/reliability.md") + house::textOf("docs/daemon.md");
    static const std::regex s_name(R"re(`([A-Z]\w+\.)(\w*)(\*?)`)re");
    size_t named = 0;
    for (std::sregex_iterator match(table.begin(), table.end(), s_name), end; match != end;
         ++match, ++named) {
        const std::string name = (*match)[1].str() + (*match)[2].str();
        const auto found = cases.lower_bound(name);
        EXPECT_TRUE(
            found != cases.end() && ((*match)[3].length() ? found->rfind(name, 0) == 0 : *found == name))
            << match->str();
    }
    EXPECT_GT(named, 50U);
}

TEST(TheTableOfRequests, IsTheInterfacesDescription)
{
    const std::string xml = house::textOf("res/dbus/org.orbis.tessel-UI.interface.xml");
    const base::NodeInfoPtr node {g_dbus_node_info_new_for_xml(xml.c_str(), nullptr)};
    ASSERT_TRUE(node);
    size_t methods = 0;
    for (GDBusMethodInfo** method = node->interfaces[0]->methods; *method; ++method, ++methods) {
        const TesselUI::Request* request = TesselUI::requestOfMethod((*method)->name);
        ASSERT_NE(request, nullptr) << (*method)->name;
        std::string signature;
        for (GDBusArgInfo** argument = (*method)->in_args; argument && *argument; ++argument)
            signature += (*argument)->signature;
        EXPECT_EQ(request->signature ? request->signature : "()", "(" + signature + ")") << (*method)->name;
    }
    EXPECT_EQ(methods, TesselUI::requestCount());
}

} // namespace
