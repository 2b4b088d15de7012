// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Loudspeaker.h"

#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace tv {

namespace {

namespace fs = std::filesystem;

constexpr size_t kRate = 22050; ///< samples a second, as the voice has them
constexpr int kAudible = 500; ///< of 32767

constexpr const char* kConfiguration = R"(LogLevel 0
AudioOutputMethod "pulse"
AddModule "espeak-ng" "sd_espeak-ng" "espeak-ng.conf"
DefaultModule espeak-ng
DefaultLanguage en
DefaultRate 30
)";

} // namespace

Loudspeaker::Loudspeaker(const Folders& folders, const std::string& socket)
    : m_folder(folders.root() / "sound")
    , m_socket(socket)
    , m_environment(folders.environment())
{
    fs::create_directories(m_folder / "modules");
    writeFile(m_folder / "speechd.conf", kConfiguration);
    writeFile(m_folder / "modules" / "espeak-ng.conf", "");
    const std::string server = m_folder / "server";
    m_environment.push_back("PULSE_SERVER=unix:" + server);
    m_soundServer.emplace(std::vector<std::string> {"pulseaudio", "-n", "--daemonize=no", "--use-pid-file=no",
                              "--exit-idle-time=-1", "--log-target=stderr", "--disable-shm=yes", "-L",
                              "module-null-sink sink_name=nowhere channels=1 rate=" + std::to_string(kRate),
                              "-L", "module-native-protocol-unix auth-anonymous=1 socket=" + server},
        m_environment);
    waitUntil([&] { return fs::exists(server); });
    m_recorder.emplace(
        std::vector<std::string> {"parec", "--raw", "--device=nowhere.monitor", "--channels=1",
            "--format=s16le", "--latency-msec=20", "--rate=" + std::to_string(kRate), m_folder / "recording"},
        m_environment);
    m_service.emplace(std::vector<std::string> {"speech-dispatcher", "--run-single", "--timeout", "0",
                          "--communication-method", "unix_socket", "--socket-path", socket, "--config-dir",
                          m_folder, "--pid-file", m_folder / "pid", "--log-dir", m_folder},
        m_environment);
}

testing::AssertionResult Loudspeaker::isReady() const
{
    const bool isReady = waitUntil([&] { return fs::exists(m_socket) && tenths() > 0; });
    return testing::AssertionResult(isReady)
        << testing::PrintToString(m_soundServer->errors()) << testing::PrintToString(m_recorder->errors())
        << testing::PrintToString(m_service->errors());
}

/// @return the loudest sample of each tenth of a second
std::vector<int> Loudspeaker::loudness() const
{
    const std::string bytes = readFile(m_folder / "recording");
    std::vector<int> result;
    for (size_t begin = 0; begin + kRate / 10 * 2 <= bytes.size(); begin += kRate / 10 * 2) {
        int loudest = 0;
        for (size_t at = begin; at < begin + kRate / 10 * 2; at += 2) {
            int16_t sample = 0;
            memcpy(&sample, bytes.data() + at, sizeof sample);
            loudest = std::max(loudest, abs(sample));
        }
        result.push_back(loudest);
    }
    return result;
}

size_t Loudspeaker::loudTenths(size_t begin) const
{
    const std::vector<int> all = loudness();
    return static_cast<size_t>(
        std::count_if(all.begin() + static_cast<ptrdiff_t>(std::min(begin, all.size())), all.end(),
            [](int loudest) { return loudest > kAudible; }));
}

bool Loudspeaker::fallsSilent(size_t begin, size_t silence) const
{
    return waitUntil([&] {
        const size_t now = tenths();
        return now >= begin + silence && loudTenths(now - silence) == 0;
    });
}

} // namespace tv
