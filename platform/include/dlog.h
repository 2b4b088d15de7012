// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Platform log.
///
/// A line goes to standard error as "D/tag: message", or to the journal with its priority and the tag
/// as identifier when standard error is the journal's.
///
/// Nothing in a message begins a line or commands a terminal: a line feed, carriage return or tab is written
/// \n, \r, \t, other control bytes and bytes that are no UTF-8 \xNN, the control characters U+0080 to U+009F
/// and the separators U+2028 and U+2029 \uNNNN. A backslash is written as it is, so an escape and a text that
/// looks like one are the same. The line ends that end the format, the message's own, stay; one more follows.
///
/// Logging never waits: lines that nobody takes are dropped and counted, and a warning before the next line
/// that is taken says how many there were. The first line makes the process ignore SIGPIPE, unless it has a
/// handler for it, so that a reader who goes away costs lines only; programs that it starts must be given the
/// signal's default back.
#ifndef ORBIS_DLOG_H
#define ORBIS_DLOG_H

#ifdef __cplusplus
extern "C" {
#endif

/// Priorities, numbered as on the devices.
typedef enum {
    DLOG_DEBUG = 3,
    DLOG_INFO = 4,
    DLOG_WARN = 5,
    DLOG_ERROR = 6,
} log_priority;

/// Writes one line, of any length, in one piece; to a pipe that takes only a part of it, the rest follows
/// before the next line. From any thread, not from a signal handler.
/// @param tag     borrowed; null counts as ""
/// @param format  printf format, borrowed
/// @return the number of bytes written, or a negative errno value: -EINVAL for a null format or an unknown
///         priority, -EAGAIN when the line was dropped because nobody took it
int dlog_print(log_priority priority, const char* tag, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

#ifdef __cplusplus
}
#endif

#endif
