// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "efl_assist.h"

int ea_init(int reserved1, int reserved2)
{
    return reserved1 == 0 && reserved2 == 0 ? 0 : -1;
}
