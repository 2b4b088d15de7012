// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What was pictured and measured, for people (index.html) and for programs (report.json).
#pragma once

#include "Options.h"
#include "Rules.h"

#include <json/value.h>

#include <string>
#include <vector>

namespace gallery {

struct Picture {
    std::string state;
    std::string file; ///< within the gallery's folder
    bool isWritten = false;
    Scene scene; ///< its objects are gone with the popup
    Measured measured;
    std::vector<Broken> broken;
};

struct Report {
    Combination combination;
    std::vector<Picture> pictures;
    double seconds = 0;
};

/// A combination's part of report.json.
Json::Value toJson(const Report& report);

/// The whole: totals, and the parts of all combinations.
Json::Value summary(const Json::Value& parts, double seconds);

/// A page to browse the pictures, made from summary().
std::string toHtml(const Json::Value& summary);

/// @return whether the file was written
bool writeText(const std::string& path, const std::string& text);
std::string toText(const Json::Value& value);

} // namespace gallery
