// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Scenario.h"

#include "EventLog.h"
#include "base/GlibHandles.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <optional>
#include <sstream>

namespace DaemonSim {

namespace {

constexpr size_t kMaxFileBytes = 0x400000;

constexpr char kEnding[] = ".scenario";

/// @return where the scenarios lie beside the program.
std::string shippedFolder()
{
    const base::GStr program(g_file_read_link("/proc/self/exe", nullptr));
    const base::GStr folder(g_path_get_dirname(program ? program.get() : "."));
    return std::string(folder.get()) + "/../share/tessel/scenarios/";
}

std::string resolve(const std::string& name)
{
    const bool isFile = name.find('/') != std::string::npos || g_file_test(name.c_str(), G_FILE_TEST_EXISTS);
    return isFile ? name : shippedFolder() + name + kEnding;
}

std::optional<std::string> readFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    std::string text(kMaxFileBytes + 1, '\0');
    if (!file.is_open() || file.read(text.data(), static_cast<std::streamsize>(text.size())).bad())
        return std::nullopt;
    text.resize(static_cast<size_t>(file.gcount()));
    if (text.size() > kMaxFileBytes || (text.empty() && g_file_test(path.c_str(), G_FILE_TEST_IS_DIR)))
        return std::nullopt;
    return text;
}

} // namespace

std::vector<std::string> shippedScenarios()
{
    std::vector<std::string> names;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(shippedFolder(), error)) {
        if (entry.path().extension() == kEnding)
            names.push_back(entry.path().stem());
    }
    std::sort(names.begin(), names.end());
    return names;
}

bool loadScenario(EventLog& log, const std::string& name, std::deque<Step>& steps)
{
    const std::string path = resolve(name);
    const auto text = readFile(path);
    if (!text) {
        log.error("cannot read the scenario " + path);
        return false;
    }

    bool isRight = true;
    std::istringstream lines(*text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        const std::string place = path + ":" + std::to_string(number);
        ParsedLine parsed = parseLine(line);
        if (parsed.command && std::holds_alternative<ScenarioCommand>(*parsed.command))
            parsed = {std::nullopt, "a scenario cannot play another one"};
        if (!parsed.error.empty()) {
            log.error(place + ": " + parsed.error);
            isRight = false;
        } else if (parsed.command) {
            steps.push_back({*parsed.command, place});
        }
    }
    return isRight;
}

} // namespace DaemonSim
