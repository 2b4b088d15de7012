// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The page to browse the pictures: page.html with the report's figures in it, because a page from the file
/// system may not read another file.
#include "Report.h"
#include "page.h"

namespace gallery {

std::string toHtml(const Json::Value& summary)
{
    constexpr const char* kPlace = "@DATA@";
    std::string data = toText(summary);
    // Nothing in it may end the script that it stands in.
    for (size_t at = data.find("</"); at != std::string::npos; at = data.find("</", at + 1))
        data.insert(at + 1, "\\");
    for (size_t at = data.find("<!"); at != std::string::npos; at = data.find("<!", at + 1))
        data.replace(at, 1, "\\u003c");
    std::string page = kPage;
    return page.replace(page.find(kPlace), std::char_traits<char>::length(kPlace), data);
}

} // namespace gallery
