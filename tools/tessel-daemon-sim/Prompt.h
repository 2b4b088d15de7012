// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Reads commands from a terminal, with a prompt, history and completion.
#pragma once

#include "LineSource.h"
#include "base/Handles.h"

#include <glib.h>
#include <histedit.h>

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace DaemonSim {

class EventLog;

using EditorPtr = base::CHandle<EditLine, el_end>;
using HistoryPtr = base::CHandle<History, history_end>;

/// The prompt is there, and the terminal is without its own editing, from listen() to the end of the line.
/// What was typed is kept for the next run, in a file of the user's own, but for a line that begins with a
/// blank.
class Prompt : public LineSource {
public:
    /// Standard input and output are a terminal.
    /// @param log      borrowed; its lines appear above the prompt
    /// @param onInput  called from the main loop when take() or atEnd() may have something new
    Prompt(EventLog& log, std::function<void()> onInput);
    ~Prompt() override;

    std::optional<Line> take() override { return std::exchange(m_line, std::nullopt); }
    bool atEnd() const override { return m_ended && !m_line; }
    void listen() override;

private:
    static int onGetCharacter(EditLine* editor, wchar_t* character);
    static unsigned char onTab(EditLine* editor, int key);
    static unsigned char onEnd(EditLine* editor, int key);
    static gboolean onReadable(gint descriptor, GIOCondition condition, gpointer data);
    static gboolean onResized(gpointer data);

    void bindKeys();
    void readKey();
    void hide();
    void printCandidates(const std::vector<std::string>& candidates);
    void makeWay();
    void comeBack();

    EventLog& m_log;
    std::function<void()> m_onInput;
    std::optional<Line> m_line;
    bool m_ended = false;
    std::string m_historyFile;
    HistoryPtr m_history;
    EditorPtr m_editor; // goes first: it knows the history
    const char* m_eraseToEnd = ""; ///< what the terminal knows this by
    guint m_source = 0; ///< there while the prompt is
    guint m_resizeSource;
};

} // namespace DaemonSim
