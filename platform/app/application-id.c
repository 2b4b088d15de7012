// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/* Compiled into a program, with ORBIS_APPLICATION_ID defined, tells the platform the id under which it knows that
   program; on a device the launcher does that. Looked for by app/ApplicationId.h. */
extern const char orbis_app_id[];
__attribute__((visibility("default"))) const char orbis_app_id[] = ORBIS_APPLICATION_ID;
