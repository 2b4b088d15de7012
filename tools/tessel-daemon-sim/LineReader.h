/// Reads standard input line by line without blocking the main loop.
#pragma once

#include <glib.h>

#include <functional>
#include <optional>
#include <string>

namespace DaemonSim {

class LineReader {
public:
    struct Line {
        std::string text; ///< without its line end
        bool isTooLong = false; ///< the text was thrown away
    };

    /// @param descriptor  borrowed. It may be closed, which counts as its end.
    /// @param onInput     called from the main loop when take() or atEnd() may have something new
    LineReader(int descriptor, std::function<void()> onInput);
    ~LineReader() { stopListening(); }
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    /// @return the next line, if there is one already.
    std::optional<Line> take();

    /// @return whether no line will come any more.
    bool atEnd() const { return m_ended && m_buffer.empty(); }

    /// Reads on until there is something new. Nothing is read before, so that a flood of input waits
    /// outside.
    void listen();

private:
    static gboolean onReadable(gint descriptor, GIOCondition condition, gpointer data);
    void stopListening();
    void readSome();

    int m_descriptor;
    std::function<void()> m_onInput;
    std::string m_buffer;
    bool m_ended = false;
    bool m_skipping = false; ///< inside a line that is too long
    guint m_source = 0;
};

} // namespace DaemonSim
