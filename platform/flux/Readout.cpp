#include "flux/Readout.h"

#include "app/Language.h"
#include "flux/SpokenText.h"
#include "vconf.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

namespace orbis::flux {

namespace {

constexpr const char* kReaderKey = "db/menu/system/accessibility/screenreader";
constexpr const char* kLogVariable = "ORBIS_SPEECH_LOG";

/// The command-line client of speech-dispatcher: it speaks plain text, and starting a process cannot block
/// the main loop as a connection to a stuck service could.
constexpr const char* kSpeechCommand = "spd-say";

bool readerIsOn()
{
    int on = 0;
    return vconf_get_int(kReaderKey, &on) == VCONF_OK && on == 1;
}

/// Does not wait for a reader when the file is a pipe.
void appendLine(const char* path, const std::string& line)
{
    const int file = open(path, O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0644);
    if (file < 0)
        return;
    if (write(file, line.data(), line.size()) < 0)
        perror(path);
    close(file);
}

} // namespace

void Readout::speakFocused(Evas_Object* widget)
{
    if (!widget || !readerIsOn())
        return;
    const std::unique_ptr<char, decltype(&free)> text {elm_access_info_get(widget, ELM_ACCESS_INFO), free};
    if (text && *text)
        speak(text.get());
}

void Readout::speak(const std::string& text)
{
    const std::string line = spokenLine(text);
    const char* path = getenv(kLogVariable);
    if (path && *path) {
        appendLine(path, line + '\n');
        return;
    }
    // One that has not come through yet would be spoken over this one.
    if (m_client)
        g_subprocess_force_exit(m_client.get());
    const std::string language = app::languageOfTexts();
    const std::string spoken = withDigitsApart(line);
    // Messages of this priority interrupt one another.
    const std::vector<const char*> command {
        kSpeechCommand, "--priority", "text", "--language", language.c_str(), "--", spoken.c_str(), nullptr};
    const auto flags =
        static_cast<GSubprocessFlags>(G_SUBPROCESS_FLAGS_STDOUT_SILENCE | G_SUBPROCESS_FLAGS_STDERR_SILENCE);
    m_client.reset(g_subprocess_newv(command.data(), flags, nullptr));
}

} // namespace orbis::flux
