#include "PrivateBus.h"

#include <stdexcept>

namespace tv {

namespace {

constexpr const char* kConfiguration = R"(<!DOCTYPE busconfig PUBLIC
 "-//freedesktop//DTD D-Bus Bus Configuration 1.0//EN"
 "http://www.freedesktop.org/standards/dbus/1.0/busconfig.dtd">
<busconfig>
  <listen>unix:path=%SOCKET%</listen>
  <auth>EXTERNAL</auth>
  <policy context="default">
    <allow user="*"/>
    <allow own="*"/>
    <allow send_destination="*" eavesdrop="true"/>
    <allow eavesdrop="true"/>
  </policy>
  <limit name="max_replies_per_connection">50000</limit>
</busconfig>
)";

std::string configuration(const std::string& socket)
{
    constexpr std::string_view kMark = "%SOCKET%";
    std::string text = kConfiguration;
    return text.replace(text.find(kMark), kMark.size(), socket);
}

} // namespace

PrivateBus::PrivateBus()
    : m_address("unix:path=" + (m_folders.root() / "bus").string())
{
    writeFile(m_folders.root() / "bus.conf", configuration((m_folders.root() / "bus").string()));
    restart();
}

void PrivateBus::restart()
{
    const auto file = m_folders.root() / "bus.conf";
    m_process =
        std::make_unique<Process>(std::vector<std::string> {"dbus-daemon", "--config-file=" + file.string(),
                                      "--nofork", "--nopidfile", "--print-address=1"},
            m_folders.environment());
    if (!waitUntil([this] { return !m_process->output().empty() || !m_process->running(); })
        || m_process->output().empty())
        throw std::runtime_error("the private bus did not start");
}

void PrivateBus::kill()
{
    m_process->signal(SIGKILL);
    m_process->waitForExit();
}

} // namespace tv
