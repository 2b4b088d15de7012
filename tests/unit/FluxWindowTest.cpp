// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// The managed window's signals.
#include "Fixtures.h"
#include "Process.h"
#include "elm_flux.h"

#include <algorithm>
#include <unistd.h>

namespace {

using AManagedWindow = WindowTest;

TEST_F(AManagedWindow, SaysThatItsSignalsAreLostInAProgramLinkedInTheWrongOrder)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer has an order of its own";
#endif
    const tv::Process program({BIN_DIR "/wrong-order"}, {environ, environ + g_strv_length(environ)});
    EXPECT_EQ(program.waitForExit(), 0);
    const auto complaints = [](const std::vector<std::string>& lines) {
        return std::count_if(lines.begin(), lines.end(),
            [](const std::string& line) { return line.find("libraries come") != std::string::npos; });
    };
    EXPECT_EQ(complaints(program.errors()), 1);
    EXPECT_EQ(complaints(journal::lines()), 0) << "this one is linked as it should be";
}

} // namespace
