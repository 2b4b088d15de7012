// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Pictures every state of every popup and measures what the viewer would see.

#include "Options.h"
#include "Report.h"
#include "Runner.h"
#include "options/CommandLine.h"

#include <chrono>
#include <cstdio>
#include <filesystem>

int main(int argc, char** argv)
{
    using namespace gallery;
    auto options = parseOptions(argc, argv);
    if (!options)
        return tools::kWrongUsage;
    std::error_code error;
    options->folder = std::filesystem::absolute(options->folder, error);
    std::filesystem::create_directories(options->folder, error);
    if (error) {
        fprintf(
            stderr, "tessel-gallery: cannot make %s: %s\n", options->folder.c_str(), error.message().c_str());
        return 2;
    }

    const auto start = std::chrono::steady_clock::now();
    bool complete = false;
    const Json::Value parts = runAll(*options, complete);
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
    const Json::Value all = summary(parts, seconds);
    const bool written = writeText(options->folder + "/report.json", toText(all))
        && writeText(options->folder + "/index.html", toHtml(all));
    if (!written)
        fprintf(stderr, "tessel-gallery: cannot write into %s\n", options->folder.c_str());
    for (const Json::Value& part : parts) {
        for (const Json::Value& picture : part["pictures"]) {
            for (const Json::Value& rule : picture["broken"])
                fprintf(stderr, "%s: %s: %s\n", picture["file"].asCString(), rule["rule"].asCString(),
                    rule["detail"].asCString());
        }
    }
    if (!complete || !written)
        return 2;
    printf("%d pictures, %d broken rules, %.1f s: %s/index.html\n", all["pictures"].asInt(),
        all["broken_rules"].asInt(), seconds, options->folder.c_str());
    return all["broken_rules"].asInt() > 0 ? 1 : 0;
}
