/// Platform log.
///
/// A line goes to standard error as "D/tag: message", or to the journal with its priority and the tag
/// as identifier when standard error is the journal's. Line ends inside the message stay; one is added.
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

/// Writes one line, of any length, in one piece.
/// @param tag     borrowed; null counts as ""
/// @param format  printf format, borrowed
/// @return the number of bytes written, or a negative errno value: -EINVAL for a null format or an unknown
///         priority
int dlog_print(log_priority priority, const char* tag, const char* format, ...)
    __attribute__((format(printf, 3, 4)));

#ifdef __cplusplus
}
#endif

#endif
