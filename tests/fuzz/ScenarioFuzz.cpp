/// The language of the daemon simulator's scenarios.
#include "Commands.h"
#include "EventLog.h"
#include "Fuzz.h"
#include "Scenario.h"

#include <cstdio>
#include <deque>
#include <unistd.h>

namespace {

std::string s_file; // NOLINT(cert-err58-cpp)

void checkLine(const std::string& line)
{
    using namespace DaemonSim;
    const ParsedLine parsed = parseLine(line);
    fuzz::demand(!parsed.command || parsed.error.empty(), "a command or an error", line);
    if (!parsed.command)
        return;
    const auto* request = std::get_if<RequestCommand>(&*parsed.command);
    if (!request)
        return;
    const std::string written = toText(*request);
    const ParsedLine again = parseLine(written);
    const auto* same = again.command ? std::get_if<RequestCommand>(&*again.command) : nullptr;
    fuzz::demand(same && same->method == request->method && same->arguments == request->arguments,
        "a request can be read as it is written", written);
}

} // namespace

int LLVMFuzzerInitialize(int*, char***)
{
    fuzz::silenceOutput();
    s_file = fuzz::useOwnStore() + "/scenario";
    return 0;
}

int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const std::string text(reinterpret_cast<const char*>(data), size);
    size_t begin = 0;
    for (size_t end = 0; (end = text.find('\n', begin)) != std::string::npos; begin = end + 1)
        checkLine(text.substr(begin, end - begin));
    checkLine(text.substr(begin));

    if (size % 64 != 0) // the reader takes room for the largest file each time
        return 0;
    FILE* file = fopen(s_file.c_str(), "w");
    fwrite(text.data(), 1, text.size(), file);
    fclose(file);
    DaemonSim::EventLog log(false);
    std::deque<DaemonSim::Step> steps;
    DaemonSim::loadScenario(log, s_file, steps);
    return 0;
}
