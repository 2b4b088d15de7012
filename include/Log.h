/// The program's log lines: tag "tessel-ui", the place in the code in front of each message.
///
/// Debug is for developers, info follows the flow of a set-up, error is what went wrong and was survived. The
/// message texts are part of the product: people search logs for them.
#pragma once

#include "dlog.h"

#define TESSEL_LOG(priority, format, ...)                                                                    \
    static_cast<void>(dlog_print((priority), "tessel-ui", "%s: %s(%d) > [%s:%d] " format, __FILE_NAME__,     \
        __func__, __LINE__, __func__, __LINE__, ##__VA_ARGS__))

#define LOGD(...) TESSEL_LOG(DLOG_DEBUG, __VA_ARGS__)
#define LOGI(...) TESSEL_LOG(DLOG_INFO, __VA_ARGS__)
#define LOGE(...) TESSEL_LOG(DLOG_ERROR, __VA_ARGS__)
