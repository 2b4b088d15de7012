// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// A small application on the platform.
#ifndef TESTS_APPLICATION_H
#define TESTS_APPLICATION_H

/// Runs it to its end, telling on standard output what becomes of it. Each argument without "=" is something
/// that it does.
int runApplication(int argc, char** argv);

#endif
