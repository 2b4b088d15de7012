// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Runner.h"

#include "Report.h"
#include "Stage.h"
#include "States.h"
#include "options/Terminal.h"

#include <json/reader.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>
#include <utility>

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
    const std::vector<Chosen> chosen = chosenStates(options);
    const auto wanted =
        std::count_if(chosen.begin(), chosen.end(), [](const Chosen& one) { return one.isPictured; });
    const bool isWhole = static_cast<std::ptrdiff_t>(report.pictures.size()) == wanted;
    const bool written = isWhole && writeText(partFile(options, combination), toText(toJson(report)));
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

/// The processes of a run.
class Runs {
public:
    explicit Runs(const Options& options)
        : m_options(options)
        , m_combinations(options.combinations())
        , m_parts(m_combinations.size())
    {
    }

    /// @return whether all came to a good end
    bool perform();
    std::vector<Json::Value> takeParts() { return std::move(m_parts); }

private:
    bool start();
    bool awaitOne();
    bool finish(size_t index, int status);

    const Options& m_options;
    std::vector<Combination> m_combinations;
    std::vector<Json::Value> m_parts; ///< of the combinations; null for one that failed
    std::map<pid_t, size_t> m_running; ///< to the combination's index
    size_t m_next = 0; ///< combination to start
    size_t m_done = 0;
    tools::Progress m_progress;
};

bool Runs::perform()
{
    const size_t most = std::max(1U, std::thread::hardware_concurrency());
    bool isGood = true;
    fflush(nullptr);
    signal(SIGCHLD, SIG_DFL); // whoever ignores it is never told of an end
    while (m_next < m_combinations.size() || !m_running.empty()) {
        if (m_next == m_combinations.size() || m_running.size() == most) {
            isGood &= awaitOne();
        } else if (!start()) {
            isGood = false;
            m_next = m_combinations.size();
        }
    }
    return isGood;
}

bool Runs::start()
{
    const pid_t child = fork();
    if (child == 0)
        runChild(m_combinations[m_next], m_options);
    if (child < 0) {
        perror("fork");
        return false;
    }
    m_running[child] = m_next++;
    return true;
}

bool Runs::awaitOne()
{
    constexpr useconds_t kAgain = 100000;
    int status = 0;
    pid_t ended = -1;
    do {
        ended = waitpid(-1, &status, m_progress.isSeen() ? WNOHANG : 0);
        if (ended == 0) {
            m_progress.show(
                std::to_string(m_done) + " of " + std::to_string(m_combinations.size()) + " done");
            usleep(kAgain);
        }
    } while (ended == 0 || (ended < 0 && errno == EINTR));
    m_progress.clear();
    if (ended < 0) {
        perror("wait");
        m_running.clear();
        return false;
    }
    const auto found = m_running.find(ended);
    return found == m_running.end() || finish(m_running.extract(found).mapped(), status);
}

bool Runs::finish(size_t index, int status)
{
    Json::Value part = takePart(partFile(m_options, m_combinations[index]));
    ++m_done;
    if (!WIFEXITED(status) || WEXITSTATUS(status) != 0 || !part.isObject()) {
        fprintf(stderr, "tessel-gallery: %s failed; see its log\n", m_combinations[index].name().c_str());
        return false;
    }
    if (!m_options.quiet)
        tell(part, m_done, m_combinations.size());
    m_parts[index] = std::move(part);
    return true;
}

} // namespace

Json::Value runAll(const Options& options, bool& complete)
{
    Runs runs {options};
    complete = runs.perform();
    Json::Value result(Json::arrayValue);
    for (const Json::Value& part : runs.takeParts()) {
        if (part.isObject())
            result.append(part);
    }
    return result;
}

} // namespace gallery
