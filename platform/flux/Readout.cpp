#include "flux/Readout.h"

#include "app/Language.h"
#include "base/Handles.h"
#include "files/FileDescriptor.h"
#include "flux/SpokenText.h"
#include "names/Environment.h"
#include "names/SettingsKeys.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>

namespace orbis::flux {

namespace {

bool readerIsOn()
{
    int on = 0;
    return vconf_get_int(names::kScreenReaderKey, &on) == VCONF_OK && on == names::kOn;
}

/// Does not wait for a reader when the file is a pipe. What is said may be a code: the file is for its owner.
void appendLine(const char* path, const std::string& line)
{
    const files::FileDescriptor file(
        open(path, O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0600));
    if (file && write(file.get(), line.data(), line.size()) < 0)
        perror(path);
}

} // namespace

Readout::~Readout()
{
    if (m_speech)
        vconf_ignore_key_changed(names::kScreenReaderKey, on_readerChanged);
}

void Readout::speakFocused(Evas_Object* widget)
{
    if (!widget || !readerIsOn())
        return;
    const base::MallocStr text {elm_access_info_get(widget, ELM_ACCESS_INFO)};
    if (text && *text)
        speak(text.get());
}

void Readout::speak(const std::string& text)
{
    const std::string line = spokenLine(text);
    const char* path = getenv(names::kSpeechLogVariable);
    if (path && *path) {
        appendLine(path, line + '\n');
        return;
    }
    if (!m_speech) {
        m_speech = std::make_unique<Speech>();
        vconf_notify_key_changed(names::kScreenReaderKey, on_readerChanged, this);
    }
    m_speech->say({withDigitsApart(line), app::languageOfTexts()});
}

void Readout::stop()
{
    if (m_speech)
        m_speech->silence();
}

void Readout::on_readerChanged(keynode_t*, void* data)
{
    if (!readerIsOn())
        static_cast<Readout*>(data)->stop();
}

} // namespace orbis::flux
