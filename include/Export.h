// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Marks what the shared library hands out to other modules.
#pragma once

#define TESSEL_API __attribute__((visibility("default")))
