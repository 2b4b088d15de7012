// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The program's log lines: tag "tessel-ui", the place in the code in front of each message.
///
/// Debug is for developers, info follows the flow of a set-up, error is what went wrong and was survived. The
/// message texts are part of the product: people search logs for them.
#pragma once

#include "dlog.h"

/// On behalf of the function @p function: a helper or a lambda logs under the name of the one that it works
/// for.
#define TESSEL_LOG_AS(function, priority, format, ...)                                                       \
    static_cast<void>(dlog_print((priority), "tessel-ui", "%s: %s(%d) > [%s:%d] " format, __FILE_NAME__,     \
        (function), __LINE__, (function), __LINE__, ##__VA_ARGS__))
#define TESSEL_LOG(priority, ...) TESSEL_LOG_AS(__func__, priority, __VA_ARGS__)

#define LOGD(...) TESSEL_LOG(DLOG_DEBUG, __VA_ARGS__)
#define LOGI(...) TESSEL_LOG(DLOG_INFO, __VA_ARGS__)
#define LOGE(...) TESSEL_LOG(DLOG_ERROR, __VA_ARGS__)
#define LOGI_AS(function, ...) TESSEL_LOG_AS(function, DLOG_INFO, __VA_ARGS__)
#define LOGE_AS(function, ...) TESSEL_LOG_AS(function, DLOG_ERROR, __VA_ARGS__)
