/// The page to browse the pictures.
#include "Report.h"

#include <sstream>

namespace gallery {

namespace {

constexpr const char* kHead = R"(<!doctype html>
<html lang="en"><head><meta charset="utf-8"><title>Popups</title>
<style>
:root { color-scheme: dark; }
body { font: 16px/1.5 "Noto Sans", sans-serif; background: #10161f; color: #ebeef2; margin: 2rem; }
h1 { font-size: 1.6rem; } h2 { font-size: 1.2rem; margin: 2.5rem 0 .5rem; }
nav { position: sticky; top: 0; background: #10161fee; padding: .6rem 0; }
nav a { color: #29c5ff; margin-right: 1rem; white-space: nowrap; display: inline-block; }
.grid { display: grid; grid-template-columns: repeat(auto-fill, minmax(420px, 1fr)); gap: 1.2rem; }
figure { margin: 0; } img { width: 100%; display: block; border-radius: 6px; }
figcaption { color: #c3cbd6; } .broken { color: #ff9d8a; } .broken img { outline: 4px solid #ff6a4d; }
ul { margin: .2rem 0 0; padding-left: 1.2rem; }
</style></head><body>
)";

std::string escaped(const std::string& text)
{
    std::string result;
    for (const char c : text) {
        switch (c) {
        case '&':
            result += "&amp;";
            break;
        case '<':
            result += "&lt;";
            break;
        case '"':
            result += "&quot;";
            break;
        default:
            result += c;
        }
    }
    return result;
}

void addFigure(std::ostream& page, const Json::Value& picture)
{
    const std::string file = escaped(picture["file"].asString());
    const std::string state = escaped(picture["state"].asString());
    page << (picture["broken"].empty() ? "<figure>" : "<figure class=\"broken\">") << "<a href=\"" << file
         << "\"><img loading=\"lazy\" src=\"" << file << "\" alt=\"" << state << "\"></a><figcaption>"
         << state;
    if (!picture["broken"].empty())
        page << "<ul>";
    for (const Json::Value& rule : picture["broken"])
        page << "<li>" << escaped(rule["rule"].asString()) << ": " << escaped(rule["detail"].asString());
    if (!picture["broken"].empty())
        page << "</ul>";
    page << "</figcaption></figure>\n";
}

} // namespace

std::string toHtml(const Json::Value& summary)
{
    std::ostringstream page;
    page << kHead << "<h1>Every state of every popup</h1><p>" << summary["pictures"].asInt() << " pictures, "
         << summary["broken_rules"].asInt()
         << " broken rules. Figures: <a href=\"report.json\">report.json</a></p>\n<nav>";
    for (const Json::Value& part : summary["combinations"]) {
        const std::string name = escaped(part["name"].asString());
        page << "<a href=\"#" << name << "\">" << name << "</a>";
    }
    page << "</nav>\n";
    for (const Json::Value& part : summary["combinations"]) {
        const std::string name = escaped(part["name"].asString());
        page << "<h2 id=\"" << name << "\">" << name << "</h2>\n<div class=\"grid\">\n";
        for (const Json::Value& picture : part["pictures"])
            addFigure(page, picture);
        page << "</div>\n";
    }
    page << "</body></html>\n";
    return page.str();
}

} // namespace gallery
