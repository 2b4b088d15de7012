// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What the fuzz targets share: each defines tryInput().
#ifndef TESTS_FUZZ_H
#define TESTS_FUZZ_H

#include <cstdint>
#include <string>
#include <string_view>

namespace fuzz {

/// Ends the process with a report when the condition does not hold.
void demand(bool holds, const char* what, std::string_view shown = {});

/// Takes an input apart.
class Input {
public:
    Input(const uint8_t* data, size_t size)
        : m_rest(reinterpret_cast<const char*>(data), size)
    {
    }

    bool empty() const { return m_rest.empty(); }
    /// @return a number below @p limit, 0 at the end
    unsigned int number(unsigned int limit);
    /// @return what is before the next byte 0x1F, which separates texts; no NUL is in it
    std::string text();
    /// @return everything
    std::string rest();

private:
    std::string_view m_rest;
};

/// One input of the target. What it and its libraries print does not reach the report.
void tryInput(Input& input);

bool isUtf8(std::string_view text);

/// @return the folder of the keys "db/…" in a settings store of this process's own, removed at its end
std::string keysFolder();

/// Starts the toolkit without a screen, once; its error messages end the process from now on.
void startToolkit();

} // namespace fuzz

#endif
