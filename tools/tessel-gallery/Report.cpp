// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Report.h"

#include <json/writer.h>

#include <cmath>
#include <fstream>
#include <utility>

namespace gallery {

namespace {

double rounded(double value)
{
    return std::round(value * 100) / 100;
}

Json::Value toJson(const Box& box)
{
    Json::Value value(Json::arrayValue);
    for (const int number : {box.x, box.y, box.width, box.height})
        value.append(number);
    return value;
}

Json::Value toJson(const Picture& picture, double scale)
{
    Json::Value value;
    value["state"] = picture.state;
    value["file"] = picture.file;
    value["written"] = picture.isWritten;
    value["card"] = toJson(picture.scene.card);
    value["focused_objects"] = picture.scene.focused;
    value["focus_contrast"] = rounded(picture.measured.focusContrast);
    const std::pair<const char*, double> distances[] = {{"px_to_edge", picture.measured.toEdge},
        {"px_between_texts", picture.measured.betweenTexts}, {"px_to_hairline", picture.measured.toHairline}};
    for (const auto& [name, distance] : distances) {
        if (distance >= 0)
            value[name] = rounded(distance);
    }
    Json::Value& texts = value["texts"] = Json::arrayValue;
    for (size_t i = 0; i < picture.scene.texts.size(); ++i) {
        const Text& text = picture.scene.texts[i];
        Json::Value entry;
        entry["text"] = text.plain;
        entry["role"] = nameOf(text.role);
        entry["box"] = toJson(text.box);
        entry["size_at_1080"] = rounded(text.sizePx / scale);
        entry["cut"] = text.isCut;
        if (i < picture.measured.textContrasts.size())
            entry["contrast"] = rounded(picture.measured.textContrasts[i]);
        texts.append(entry);
    }
    Json::Value& broken = value["broken"] = Json::arrayValue;
    for (const Broken& rule : picture.broken) {
        Json::Value entry;
        entry["rule"] = rule.rule;
        entry["detail"] = rule.detail;
        broken.append(entry);
    }
    return value;
}

/// Least value of a measure over all texts of all pictures; 0 when there is none.
void takeLeast(Json::Value& least, const Json::Value& value)
{
    if (value.isNumeric() && value.asDouble() > 0 && (!least.isNumeric() || value < least))
        least = value;
}

} // namespace

Json::Value toJson(const Report& report)
{
    Json::Value value;
    value["name"] = report.combination.name();
    value["language"] = report.combination.language;
    value["contrast"] = report.combination.contrast;
    value["height"] = report.combination.height();
    value["text_size"] = report.combination.textSize;
    value["seconds"] = rounded(report.seconds);
    Json::Value& pictures = value["pictures"] = Json::arrayValue;
    for (const Picture& picture : report.pictures)
        pictures.append(toJson(picture, report.combination.realScale()));
    return value;
}

Json::Value summary(const Json::Value& parts, double seconds)
{
    Json::Value value;
    int pictures = 0;
    int broken = 0;
    Json::Value rules(Json::objectValue);
    for (const Json::Value& part : parts) {
        Json::Value& least = value[part["contrast"].asBool() ? "least_high_contrast" : "least_contrast"];
        for (const Json::Value& picture : part["pictures"]) {
            ++pictures;
            takeLeast(value["least_focus_contrast"], picture["focus_contrast"]);
            for (const char* distance : {"px_to_edge", "px_between_texts", "px_to_hairline"})
                takeLeast(value[std::string("least_") + distance], picture[distance]);
            for (const Json::Value& text : picture["texts"]) {
                takeLeast(least, text["contrast"]);
                takeLeast(value["smallest_text_at_1080"], text["size_at_1080"]);
            }
            for (const Json::Value& rule : picture["broken"]) {
                ++broken;
                Json::Value& count = rules[rule["rule"].asString()];
                count = count.asInt() + 1;
            }
        }
    }
    value["pictures"] = pictures;
    value["broken_rules"] = broken;
    value["broken_by_rule"] = rules;
    value["seconds"] = rounded(seconds);
    value["combinations"] = parts;
    return value;
}

std::string toText(const Json::Value& value)
{
    Json::StreamWriterBuilder builder;
    builder["indentation"] = " ";
    builder["emitUTF8"] = true;
    builder["precision"] = 6;
    return Json::writeString(builder, value) + "\n";
}

bool writeText(const std::string& path, const std::string& text)
{
    std::ofstream file {path, std::ios::binary};
    file << text;
    file.close();
    return !file.fail();
}

} // namespace gallery
