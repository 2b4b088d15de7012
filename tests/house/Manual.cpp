// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Manual.h"

#include "Sources.h"

#include <regex>
#include <sstream>
#include <utility>
#include <vector>

namespace house {

namespace {

std::string replaced(std::string text, const std::string& from, const std::string& to)
{
    for (size_t at = 0; (at = text.find(from, at)) != std::string::npos; at += to.size())
        text.replace(at, from.size(), to);
    return text;
}

std::string withoutEscapes(const std::string& text)
{
    const std::pair<const char*, const char*> escapes[] = {
        {"\\-", "-"}, {"\\(dq", "\""}, {"\\(aq", "'"}, {"\\e", "\\"}};
    std::string plain = std::regex_replace(text, std::regex(R"(\\f[A-Z])"), "");
    for (const auto& [escape, character] : escapes)
        plain = replaced(plain, escape, character);
    return plain;
}

/// @return the line's words; what is between quotes is one
std::vector<std::string> wordsOf(const std::string& line)
{
    static const std::regex s_word(R"re("([^"]*)"|(\S+))re");
    std::vector<std::string> words;
    for (std::sregex_iterator match(line.begin(), line.end(), s_word), end; match != end; ++match)
        words.push_back((*match)[1].matched ? (*match)[1].str() : (*match)[2].str());
    return words;
}

/// @return the line as it is printed, with the macro's name taken off
std::string printed(const std::string& line)
{
    if (line.empty() || line[0] != '.')
        return withoutEscapes(line);
    const auto words = wordsOf(line);
    const bool alternates = words[0].size() == 3; // .BR and its like put nothing between the words
    std::string text;
    for (size_t i = 1; i < words.size(); ++i)
        text.append(i > 1 && !alternates ? " " : "").append(words[i]);
    return withoutEscapes(text);
}

} // namespace

std::map<std::string, Items> manual(const std::string& file)
{
    std::istringstream lines(textOf("docs/man/" + file));
    std::map<std::string, Items> sections;
    std::string section;
    std::string item;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind(".SH ", 0) == 0) {
            section = line.substr(4);
            item.clear();
        } else if (line == ".TP" && std::getline(lines, line)) {
            item = printed(line);
            sections[section][item];
        } else if (!item.empty()) {
            sections[section][item].append(printed(line)).append(" ");
        }
    }
    return sections;
}

std::set<std::string> found(const std::string& pattern, const std::string& text)
{
    const std::regex expression(pattern, std::regex::ECMAScript | std::regex::multiline);
    std::set<std::string> result;
    for (std::sregex_iterator match(text.begin(), text.end(), expression), end; match != end; ++match)
        result.insert((*match)[match->size() > 1 ? 1 : 0]);
    return result;
}

std::set<std::string> found(const std::string& pattern, const Items& items)
{
    std::set<std::string> result;
    for (const auto& [item, text] : items)
        result.merge(found(pattern, item));
    return result;
}

} // namespace house
