// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Readout.h"

#include "app/Language.h"
#include "files/FileDescriptor.h"
#include "flux/SpokenText.h"
#include "names/Environment.h"
#include "names/SettingsKeys.h"

#include <fcntl.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

namespace orbis::flux {

namespace {

/// Does not wait for a reader when the file is a pipe. What is said may be a code: the file is for its owner.
void appendLine(const char* path, const std::string& line)
{
    const files::FileDescriptor file(
        open(path, O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0600));
    if (file && write(file.get(), line.data(), line.size()) < 0)
        perror(path);
}

} // namespace

Readout::Readout(std::function<void()> switched)
    : m_switched(std::move(switched))
{
    vconf_notify_key_changed(names::kScreenReaderKey, on_switched, this);
}

Readout::~Readout()
{
    vconf_ignore_key_changed(names::kScreenReaderKey, on_switched);
}

bool Readout::isOn()
{
    int on = 0;
    return vconf_get_int(names::kScreenReaderKey, &on) == VCONF_OK && on == names::kOn;
}

void Readout::speak(const std::string& text, bool interrupts)
{
    const std::string line = spokenLine(text);
    const char* path = getenv(names::kSpeechLogVariable);
    if (path && *path) {
        appendLine(path, line + '\n');
        return;
    }
    if (!m_speech)
        m_speech = std::make_unique<Speech>();
    Utterance utterance {line, app::languageOfTexts()};
    if (interrupts)
        m_speech->say(std::move(utterance));
    else
        m_speech->add(std::move(utterance));
}

void Readout::stop()
{
    if (m_speech)
        m_speech->silence();
}

void Readout::on_switched(keynode_t*, void* data)
{
    static_cast<Readout*>(data)->m_switched();
}

} // namespace orbis::flux
