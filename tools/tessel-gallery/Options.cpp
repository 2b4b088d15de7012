#include "Options.h"

#include "Paths.h"

#include <getopt.h>

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

constexpr const char* kUsage =
    R"(Usage: tessel-gallery --out DIR [--lang LIST|all] [--contrast[=both]] [--scale LIST]
                      [--awkward-names] [--quiet]
Pictures every state of every popup off-screen, measures what it shows, and writes PNG files, report.json and
index.html into DIR.

  --lang LIST        catalogues, for instance en,ar,pt_BR; "all" for every one there is (default: en)
  --contrast[=both]  high contrast; with "both" also the normal one
  --scale LIST       screens as factors of 1080 lines, for instance 0.667,1,2 (default: 1)
  --awkward-names    also phones, networks and accounts with names that break other programs
  --quiet            no line for each part of the work

Exit status: 0 when every rule holds, 1 when one is broken, 2 for wrong usage or when nothing could be made.
)";

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

bool setLanguages(const std::string& list, Options& options)
{
    const auto installed = installedLanguages();
    options.languages = list == "all" ? withoutAliases(installed) : split(list);
    for (const std::string& language : options.languages) {
        if (std::find(installed.begin(), installed.end(), language) == installed.end()) {
            fprintf(stderr, "tessel-gallery: there is no catalogue \"%s\"\n", language.c_str());
            return false;
        }
    }
    removeRepeated(options.languages);
    return !options.languages.empty();
}

bool setScales(const std::string& list, Options& options)
{
    options.scales.clear();
    for (const std::string& text : split(list)) {
        char* end = nullptr;
        const double scale = strtod(text.c_str(), &end);
        if (*end != '\0' || !(scale >= kSmallestScale && scale <= kLargestScale)) {
            fprintf(stderr, "tessel-gallery: \"%s\" is no scale between %g and %g\n", text.c_str(),
                kSmallestScale, kLargestScale);
            return false;
        }
        options.scales.push_back(scale);
    }
    removeRepeated(options.scales);
    return !options.scales.empty();
}

bool setContrast(const char* value, Options& options)
{
    const std::string text = value ? value : "";
    options.contrasts = text == "both" ? std::vector<bool> {false, true} : std::vector<bool> {true};
    return text.empty() || text == "both";
}

bool apply(int option, const char* value, Options& options)
{
    switch (option) {
    case 'o':
        options.folder = value;
        return !options.folder.empty();
    case 'l':
        return setLanguages(value, options);
    case 's':
        return setScales(value, options);
    case 'c':
        return setContrast(value, options);
    case 'a':
        options.awkwardNames = true;
        return true;
    case 'q':
        options.quiet = true;
        return true;
    default:
        return false;
    }
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
    return language + (contrast ? "-contrast-" : "-") + std::to_string(height());
}

std::vector<Combination> Options::combinations() const
{
    std::vector<Combination> result;
    for (const std::string& language : languages) {
        for (const bool contrast : contrasts) {
            for (const double scale : scales)
                result.push_back({language, contrast, scale});
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

std::optional<Options> parseOptions(int argc, char** argv, int& status)
{
    static const option kOptions[] = {
        {"out", required_argument, nullptr, 'o'},
        {"lang", required_argument, nullptr, 'l'},
        {"scale", required_argument, nullptr, 's'},
        {"contrast", optional_argument, nullptr, 'c'},
        {"awkward-names", no_argument, nullptr, 'a'},
        {"quiet", no_argument, nullptr, 'q'},
        {"help", no_argument, nullptr, 'h'},
        {nullptr, 0, nullptr, 0},
    };
    Options options;
    status = 2;
    for (int chosen = 0; (chosen = getopt_long(argc, argv, "h", kOptions, nullptr)) != -1;) {
        if (chosen == 'h') {
            fputs(kUsage, stdout);
            status = 0;
            return std::nullopt;
        }
        if (!apply(chosen, optarg, options)) {
            fputs(kUsage, stderr);
            return std::nullopt;
        }
    }
    if (options.folder.empty() || optind < argc) {
        fputs(kUsage, stderr);
        return std::nullopt;
    }
    status = 0;
    return options;
}

} // namespace gallery
