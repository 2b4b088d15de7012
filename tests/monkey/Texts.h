// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What phones, networks, accounts and requests may be called.
#ifndef TESSEL_TESTS_TEXTS_H
#define TESSEL_TESTS_TEXTS_H

#include "Random.h"

namespace monkey {

/// A name from outside: ordinary, awkward, huge, or with markup.
std::string someName(Random& random);
std::string somePin(Random& random);
/// The value of the request's setting: well-formed, unknown, or no JSON at all.
std::string someJson(Random& random);

} // namespace monkey

#endif
