#include "Scenario.h"

#include "EventLog.h"
#include "base/GlibHandles.h"

#include <fstream>
#include <iterator>
#include <optional>
#include <sstream>

namespace DaemonSim {

namespace {

constexpr size_t kMaxFileBytes = 0x400000;

/// @return where a scenario of that name lies beside the program.
std::string shippedScenario(const std::string& name)
{
    const base::GStr program(g_file_read_link("/proc/self/exe", nullptr));
    const base::GStr folder(g_path_get_dirname(program ? program.get() : "."));
    return std::string(folder.get()) + "/../share/tessel/scenarios/" + name + ".scenario";
}

std::string resolve(const std::string& name)
{
    const bool isFile = name.find('/') != std::string::npos || g_file_test(name.c_str(), G_FILE_TEST_EXISTS);
    return isFile ? name : shippedScenario(name);
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
        const ParsedLine parsed = parseLine(line);
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
