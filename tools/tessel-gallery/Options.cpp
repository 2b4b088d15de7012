// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Options.h"

#include "Paths.h"
#include "States.h"
#include "options/CommandLine.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace gallery {

namespace {

constexpr int kDesignHeight = 1080;

constexpr double kSmallestScale = 0.25;
constexpr double kLargestScale = 4.0;

constexpr int kSmallestTextSize = 50; ///< percent
constexpr int kLargestTextSize = 300;

constexpr const char* kDescription =
    R"(Pictures every state of every popup off-screen, measures what it shows, and writes PNG files, report.json and
index.html into DIR.)";

std::vector<std::string> split(const std::string& list)
{
    std::vector<std::string> result;
    for (size_t begin = 0; begin <= list.size();) {
        const size_t end = std::min(list.find(',', begin), list.size());
        if (end > begin)
            result.push_back(list.substr(begin, end - begin));
        begin = end + 1;
    }
    return result;
}

/// Some catalogues serve other regions under the language's own name: one picture of each is enough.
std::vector<std::string> withoutAliases(const std::vector<std::string>& languages)
{
    std::vector<std::string> result;
    std::copy_if(languages.begin(), languages.end(), std::back_inserter(result), [&](const std::string& one) {
        return std::none_of(languages.begin(), languages.end(), [&](const std::string& other) {
            return other.rfind(one + "_X", 0) != 0 && other.rfind(one + "_", 0) == 0;
        });
    });
    return result;
}

/// Two processes must not write into one folder.
template <typename Value>
void removeRepeated(std::vector<Value>& values)
{
    std::vector<Value> result;
    for (const Value& value : values) {
        if (std::find(result.begin(), result.end(), value) == result.end())
            result.push_back(value);
    }
    values = std::move(result);
}

// Each of these returns what is wrong with the option's value, "" for nothing.

std::string setLanguages(const std::string& list, Options& options)
{
    const auto installed = installedLanguages();
    options.languages = list == "all" ? withoutAliases(installed) : split(list);
    for (const std::string& language : options.languages) {
        if (std::find(installed.begin(), installed.end(), language) == installed.end())
            return "there is no catalogue \"" + language + '"';
    }
    removeRepeated(options.languages);
    return options.languages.empty() ? "no language" : "";
}

std::string setScales(const std::string& list, Options& options)
{
    options.scales.clear();
    for (const std::string& text : split(list)) {
        char* end = nullptr;
        const double scale = strtod(text.c_str(), &end);
        if (*end != '\0' || !(scale >= kSmallestScale && scale <= kLargestScale)) {
            char limits[64] = "";
            snprintf(
                limits, sizeof limits, "\" is no scale between %g and %g", kSmallestScale, kLargestScale);
            return '"' + text + limits;
        }
        options.scales.push_back(scale);
    }
    removeRepeated(options.scales);
    return options.scales.empty() ? "no scale" : "";
}

std::string setTextSizes(const std::string& list, Options& options)
{
    options.textSizes.clear();
    for (const std::string& text : split(list)) {
        char* end = nullptr;
        const long size = strtol(text.c_str(), &end, 10);
        if (*end != '\0' || size < kSmallestTextSize || size > kLargestTextSize)
            return '"' + text + "\" is no text size between " + std::to_string(kSmallestTextSize) + " and "
                + std::to_string(kLargestTextSize) + " %";
        options.textSizes.push_back(static_cast<int>(size));
    }
    removeRepeated(options.textSizes);
    return options.textSizes.empty() ? "no text size" : "";
}

std::string setStates(const std::string& list, Options& options)
{
    options.states = split(list);
    const std::vector<State> all = states(true);
    for (const std::string& name : options.states) {
        if (std::none_of(all.begin(), all.end(), [&](const State& state) { return state.name == name; }))
            return "there is no state \"" + name + '"';
    }
    return options.states.empty() ? "no state" : "";
}

std::string setPictures(const std::string& which, Options& options)
{
    options.onlyBrokenPictures = which == "broken";
    return which == "broken" || which == "all" ? "" : "neither \"all\" nor \"broken\"";
}

std::string setContrast(const std::string& which, Options& options)
{
    options.contrasts = which == "both" ? std::vector<bool> {false, true} : std::vector<bool> {true};
    return which.empty() || which == "both" ? "" : "neither empty nor \"both\"";
}

} // namespace

int Combination::height() const
{
    return static_cast<int>(std::lround(kDesignHeight * scale));
}

int Combination::width() const
{
    return static_cast<int>(std::lround(height() * 16 / 9.0));
}

double Combination::realScale() const
{
    return height() / static_cast<double>(kDesignHeight);
}

std::string Combination::name() const
{
    return language + (contrast ? "-contrast-" : "-") + std::to_string(height())
        + (textSize == kUsualTextSize ? "" : "-text-" + std::to_string(textSize));
}

std::vector<Combination> Options::combinations() const
{
    std::vector<Combination> result;
    for (const std::string& language : languages) {
        for (const bool contrast : contrasts) {
            for (const double scale : scales) {
                for (const int textSize : textSizes)
                    result.push_back({language, contrast, scale, textSize});
            }
        }
    }
    return result;
}

std::vector<std::string> installedLanguages()
{
    std::vector<std::string> result;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(TesselUI::kLocaleFolder, error)) {
        if (entry.is_directory(error))
            result.push_back(entry.path().filename());
    }
    std::sort(result.begin(), result.end());
    return result;
}

std::optional<Options> parseOptions(int argc, char** argv)
{
    Options options;
    const auto into = [&options](auto set) {
        return [&options, set](const std::string& value) { return set(value, options); };
    };
    tools::CommandLine line("tessel-gallery", "", kDescription);
    line.add({"out", tools::setText(options.folder), "where all goes; made if missing", "DIR", false, '\0',
        tools::kFolders});
    line.add({"lang", into(setLanguages),
        "catalogues, for instance en,ar,pt_BR; \"all\" for every one there is (default: en)", "LIST"});
    line.add({"contrast", into(setContrast), "high contrast; with \"=both\" also the normal one", "both",
        true, '\0', "both"});
    line.add({"scale", into(setScales),
        "screens as factors of 1080 lines, for instance 0.667,1,2 (default: 1)", "LIST"});
    line.add({"text-size", into(setTextSizes),
        "the viewer's text sizes in percent, for instance 100,130,160 (default: 100)", "LIST"});
    line.add({"states", into(setStates), "only these, by the names of their pictures", "LIST"});
    line.add({"pictures", into(setPictures),
        "which of the pictures to write: all, or those that are broken (default: all)", "all|broken"});
    line.add({"theme", tools::setText(options.theme),
        "a compiled theme of the widgets instead of the installed one", "FILE"});
    line.add({"catalogues", tools::setText(options.catalogues),
        "catalogues instead of the installed ones, as FOLDER/LANGUAGE/LC_MESSAGES/*.mo", "FOLDER"});
    line.add({"awkward-names", tools::setFlag(options.awkwardNames),
        "also phones, networks, accounts and PINs that break other programs"});
    line.add({"quiet", tools::setFlag(options.quiet), "no line for each part of the work"});
    line.addStatus(0, "every rule holds");
    line.addStatus(1, "a rule is broken");
    line.addStatus(tools::kWrongUsage, "wrong usage, or not all could be made");
    if (!line.parse(tools::argumentsOf(argc, argv)))
        return std::nullopt;
    if (!options.folder.empty())
        return options;
    line.wrongUsage("--out is needed");
    return std::nullopt;
}

} // namespace gallery
