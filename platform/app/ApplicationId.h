// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The application's id, defined by the program's build; null where it gives none.
#pragma once

extern "C" const char orbis_app_id[] __attribute__((weak));
