#include "Runner.h"

#include "Report.h"
#include "Stage.h"

#include <json/reader.h>

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

#include <csignal>
#include <fcntl.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace gallery {

namespace {

std::string partFile(const Options& options, const Combination& combination)
{
    return options.folder + "/" + combination.name() + "/part.json";
}

/// The toolkit and the program talk a lot; that is no news to whoever looks at pictures.
void redirectLog(const std::string& path)
{
    const int file = open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0)
        return;
    dup2(file, STDERR_FILENO);
    close(file);
}

[[noreturn]] void runChild(const Combination& combination, const Options& options)
{
    prctl(PR_SET_PDEATHSIG, SIGTERM); // which ends the loop, and the temporary folder with it
    std::error_code error;
    std::filesystem::create_directories(options.folder + "/" + combination.name(), error);
    redirectLog(options.folder + "/" + combination.name() + "/log");
    const Report report = perform(combination, options);
    const bool written =
        !report.pictures.empty() && writeText(partFile(options, combination), toText(toJson(report)));
    // The parent's unwritten output must not be written twice.
    _exit(written ? 0 : 1);
}

Json::Value takePart(const std::string& path)
{
    Json::Value part;
    std::ifstream file {path};
    std::string errors;
    if (file && !Json::parseFromStream(Json::CharReaderBuilder {}, file, &part, &errors))
        part = {};
    file.close();
    std::error_code ignored;
    std::filesystem::remove(path, ignored);
    return part;
}

int brokenIn(const Json::Value& part)
{
    int count = 0;
    for (const Json::Value& picture : part["pictures"])
        count += static_cast<int>(picture["broken"].size());
    return count;
}

void tell(const Json::Value& part, size_t done, size_t all)
{
    printf("[%zu/%zu] %-22s %3u pictures, %d broken rules, %5.1f s\n", done, all, part["name"].asCString(),
        part["pictures"].size(), brokenIn(part), part["seconds"].asDouble());
    fflush(stdout);
}

} // namespace

Json::Value runAll(const Options& options, bool& complete)
{
    const auto combinations = options.combinations();
    std::vector<Json::Value> parts(combinations.size());
    std::map<pid_t, size_t> running;
    const size_t most = std::max(1U, std::thread::hardware_concurrency());
    size_t done = 0;
    complete = true;
    fflush(nullptr);
    for (size_t next = 0; next < combinations.size() || !running.empty();) {
        if (next < combinations.size() && running.size() < most) {
            const pid_t child = fork();
            if (child == 0)
                runChild(combinations[next], options);
            if (child < 0) {
                perror("fork");
                complete = false;
                break;
            }
            running[child] = next++;
            continue;
        }
        int status = 0;
        const auto ended = running.find(wait(&status));
        if (ended == running.end())
            continue;
        const Combination& combination = combinations[ended->second];
        Json::Value& part = parts[ended->second] = takePart(partFile(options, combination));
        running.erase(ended);
        ++done;
        if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || !part.isObject()) {
            complete = false;
            part = {};
            fprintf(stderr, "tessel-gallery: %s failed; see its log\n", combination.name().c_str());
        } else if (!options.quiet) {
            tell(part, done, combinations.size());
        }
    }
    Json::Value result(Json::arrayValue);
    for (const Json::Value& part : parts) {
        if (part.isObject())
            result.append(part);
    }
    return result;
}

} // namespace gallery
