// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Sources.h"

#include <fstream>
#include <iterator>
#include <regex>

namespace fs = std::filesystem;

namespace house {

std::vector<fs::path> sources(const std::vector<std::string>& folders)
{
    std::vector<fs::path> files;
    for (const std::string& folder : folders) {
        for (const auto& entry : fs::recursive_directory_iterator(fs::path(PROJECT_ROOT) / folder)) {
            const fs::path kind = entry.path().extension();
            if (kind == ".cpp" || kind == ".h")
                files.push_back(fs::relative(entry.path(), PROJECT_ROOT));
        }
    }
    return files;
}

std::string textOf(const fs::path& file)
{
    std::ifstream stream(fs::path(PROJECT_ROOT) / file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

fs::path included(const fs::path& file, const std::string& name)
{
    for (const fs::path& folder : {file.parent_path(), fs::path("base/include"), fs::path("include"),
             fs::path("platform/include"), fs::path("platform"), fs::path("tools")}) {
        if (fs::exists(PROJECT_ROOT / folder / name))
            return (folder / name).lexically_normal();
    }
    return {};
}

Arrows includes(const std::vector<fs::path>& files)
{
    static const std::regex s_include(R"re(#include [<"]([^">]+)[">])re");
    Arrows arrows;
    for (const fs::path& file : files) {
        const std::string text = textOf(file);
        for (std::sregex_iterator match(text.begin(), text.end(), s_include), end; match != end; ++match) {
            if (const fs::path target = included(file, (*match)[1]); !target.empty())
                arrows[file].insert(target);
        }
    }
    return arrows;
}

std::string withoutComments(const std::string& text)
{
    return std::regex_replace(text, std::regex(R"(//[^\n]*)"), "");
}

} // namespace house
