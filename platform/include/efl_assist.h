// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Toolkit assist library.
#ifndef ORBIS_EFL_ASSIST_H
#define ORBIS_EFL_ASSIST_H

#ifdef __cplusplus
extern "C" {
#endif

/// Prepares the assist library. Nothing needs preparing on an ordinary machine; both arguments are reserved
/// and must be 0.
/// @return 0, or -1 for other arguments
int ea_init(int reserved1, int reserved2);

#ifdef __cplusplus
}
#endif

#endif
