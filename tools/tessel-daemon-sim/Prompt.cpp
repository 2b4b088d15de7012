// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "Prompt.h"

#include "Completion.h"
#include "EventLog.h"

#include <glib-unix.h>

#include <clocale>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <cwchar>
#include <poll.h>
#include <unistd.h>
#include <utility>

namespace DaemonSim {

namespace {

constexpr int kHistoryLines = 500;

/// How long the rest of a key may take, of which a terminal sends several bytes at once. Escape alone must
/// not hold the main loop.
constexpr int kRestOfKeyMs = 50;

char* promptText(EditLine*)
{
    static char s_text[] = "> ";
    return s_text;
}

Prompt* promptOf(EditLine* editor)
{
    Prompt* prompt = nullptr;
    el_get(editor, EL_CLIENTDATA, &prompt);
    return prompt;
}

/// @return where lines are kept from one run to the next; its folder is made for its owner alone
std::string historyFile()
{
    const std::string folder = std::string(g_get_user_state_dir()) + "/tessel";
    g_mkdir_with_parents(folder.c_str(), 0700);
    return folder + "/history";
}

} // namespace

Prompt::Prompt(EventLog& log, std::function<void()> onInput)
    : m_log(log)
    , m_onInput(std::move(onInput))
    , m_historyFile(historyFile())
    , m_history(history_init())
    , m_resizeSource(g_unix_signal_add(SIGWINCH, onResized, this))
{
    // Commands are UTF-8, whatever the user's language is.
    setlocale(LC_CTYPE, "");
    if (MB_CUR_MAX == 1)
        setlocale(LC_CTYPE, "C.UTF-8");
    m_editor.reset(el_init("tessel-daemon-sim", stdin, stdout, stderr));
    el_set(m_editor.get(), EL_CLIENTDATA, this);
    el_set(m_editor.get(), EL_PROMPT, promptText);
    el_set(m_editor.get(), EL_GETCFN, onGetCharacter);
    HistEvent event;
    history(m_history.get(), &event, H_SETSIZE, kHistoryLines);
    history(m_history.get(), &event, H_SETUNIQUE, 1);
    history(m_history.get(), &event, H_LOAD, m_historyFile.c_str()); // there may be none
    el_set(m_editor.get(), EL_HIST, history, m_history.get());
    bindKeys();
    char* erase = nullptr;
    if (el_get(m_editor.get(), EL_GETTC, "ce", &erase) == 0 && erase)
        m_eraseToEnd = erase;
    m_log.setPrompt([this] { makeWay(); }, [this] { comeBack(); });
}

Prompt::~Prompt()
{
    g_source_remove(m_resizeSource);
    if (m_source != 0) {
        hide();
        fputc('\n', stdout);
    }
    m_log.setPrompt({}, {});
    HistEvent event;
    history(m_history.get(), &event, H_SAVE, m_historyFile.c_str()); // or the next run has none
}

void Prompt::bindKeys()
{
    EditLine* editor = m_editor.get();
    el_set(editor, EL_EDITOR, "emacs");
    // The library makes copies of narrow texts here, and never lets go of them.
    el_wset(editor, EL_ADDFN, L"complete", L"Completes the word", onTab);
    el_set(editor, EL_BIND, "^I", "complete", nullptr);
    // The library's own end of the input is a character in the line, when it reads key by key.
    el_wset(editor, EL_ADDFN, L"end-input", L"Ends the input", onEnd);
    el_set(editor, EL_BIND, "^D", "end-input", nullptr);
    el_set(editor, EL_BIND, "^R", "ed-search-prev-history", nullptr);
    // These wait for more keys.
    for (const char* key : {"^V", "\\ex", "\\eX"})
        el_set(editor, EL_BIND, "-r", key, nullptr);
}

void Prompt::listen()
{
    if (m_source != 0 || m_ended)
        return;
    m_source = g_unix_fd_add(
        STDIN_FILENO, static_cast<GIOCondition>(G_IO_IN | G_IO_HUP | G_IO_ERR | G_IO_NVAL), onReadable, this);
    el_set(m_editor.get(), EL_UNBUFFERED, 1);
}

/// Gives the terminal its own ways back, so that it can be typed ahead while a command is played.
void Prompt::hide()
{
    g_source_remove(std::exchange(m_source, 0));
    el_set(m_editor.get(), EL_UNBUFFERED, 0);
}

gboolean Prompt::onReadable(gint, GIOCondition, gpointer data)
{
    static_cast<Prompt*>(data)->readKey();
    return G_SOURCE_CONTINUE;
}

gboolean Prompt::onResized(gpointer data)
{
    el_resize(static_cast<Prompt*>(data)->m_editor.get());
    return G_SOURCE_CONTINUE;
}

void Prompt::readKey()
{
    int count = 0;
    const char* text = el_gets(m_editor.get(), &count);
    const bool isWhole = text && text[count - 1] == '\n';
    if (!isWhole && !m_ended)
        return;
    hide();
    if (isWhole) {
        m_line = Line {std::string(text, static_cast<size_t>(count) - 1), false};
        HistEvent event;
        if (!m_line->text.empty() && m_line->text.front() != ' ')
            history(m_history.get(), &event, H_ENTER, m_line->text.c_str());
    } else {
        fputc('\n', stdout);
    }
    m_onInput();
}

/// @return 1 for a character, 0 when there is none
int Prompt::onGetCharacter(EditLine* editor, wchar_t* character)
{
    mbstate_t state {};
    for (;;) {
        pollfd input {STDIN_FILENO, POLLIN, 0};
        if (poll(&input, 1, kRestOfKeyMs) <= 0)
            return 0;
        char byte = 0;
        if (read(STDIN_FILENO, &byte, 1) != 1) {
            promptOf(editor)->m_ended = true;
            return 0;
        }
        const size_t length = mbrtowc(character, &byte, 1, &state);
        if (length != static_cast<size_t>(-2))
            return length == static_cast<size_t>(-1) ? 0 : 1;
    }
}

unsigned char Prompt::onTab(EditLine* editor, int)
{
    const LineInfo* line = el_line(editor);
    const Completion completion = complete({line->buffer, line->cursor});
    if (!completion.rest.empty())
        return el_insertstr(editor, completion.rest.c_str()) == 0 ? CC_REFRESH : CC_ERROR;
    if (completion.candidates.size() < 2)
        return CC_ERROR;
    promptOf(editor)->printCandidates(completion.candidates);
    return CC_REDISPLAY;
}

unsigned char Prompt::onEnd(EditLine* editor, int)
{
    const LineInfo* line = el_line(editor);
    const bool isEmpty = line->lastchar == line->buffer;
    promptOf(editor)->m_ended = isEmpty;
    return isEmpty ? CC_NORM : CC_ERROR;
}

void Prompt::printCandidates(const std::vector<std::string>& candidates)
{
    fputc('\n', stdout);
    for (const std::string& candidate : candidates)
        printf("%s  ", candidate.c_str());
    fputc('\n', stdout);
}

void Prompt::makeWay()
{
    if (m_source != 0)
        printf("\r%s", m_eraseToEnd);
}

void Prompt::comeBack()
{
    if (m_source != 0)
        el_set(m_editor.get(), EL_REFRESH);
}

} // namespace DaemonSim
