// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "options/Terminal.h"

#include <cstdlib>
#include <cstring>
#include <unistd.h>

namespace tools {

namespace {

constexpr char kRed[] = "\033[1;31m";
constexpr char kPlain[] = "\033[0m";
constexpr char kEraseLine[] = "\r\033[K";

bool isTerminal(FILE* stream)
{
    const char* const kind = getenv("TERM");
    return isatty(fileno(stream)) == 1 && kind && strcmp(kind, "dumb") != 0;
}

} // namespace

bool mayColour(FILE* stream)
{
    const char* const unwanted = getenv("NO_COLOR");
    return isTerminal(stream) && (!unwanted || *unwanted == '\0');
}

void complain(const std::string& tool, const std::string& problem)
{
    const bool isColoured = mayColour(stderr);
    fprintf(stderr, "%s%s:%s %s\n", isColoured ? kRed : "", tool.c_str(), isColoured ? kPlain : "",
        problem.c_str());
}

Progress::Progress()
    : m_isTerminal(isTerminal(stderr))
{
}

void Progress::show(const std::string& text)
{
    constexpr std::chrono::seconds kPatience(1);
    if (!m_isTerminal || std::chrono::steady_clock::now() - m_start < kPatience)
        return;
    fprintf(stderr, "%s%s", kEraseLine, text.c_str());
    fflush(stderr);
    m_isShown = true;
}

void Progress::clear()
{
    if (m_isShown)
        fputs(kEraseLine, stderr);
    fflush(stderr);
    m_isShown = false;
}

} // namespace tools
