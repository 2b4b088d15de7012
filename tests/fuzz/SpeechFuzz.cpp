// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What is read out: markup turned into one plain line.
#include "Fuzz.h"
#include "NetUtilAccessibility.h"
#include "base/Handles.h"
#include "flux/SpokenText.h"

#include <algorithm>
#include <cctype>

namespace {

std::string withoutBlanks(std::string text)
{
    text.erase(std::remove(text.begin(), text.end(), ' '), text.end());
    return text;
}

void checkLine(const std::string& text)
{
    const std::string line = orbis::flux::spokenLine(text);
    fuzz::demand(line.find_first_of("\r\n") == std::string::npos, "one line", line);
    fuzz::demand(line.size() <= text.size(), "nothing is added to a line", line);
    fuzz::demand(fuzz::isUtf8(line), "characters are whole", line);
    const std::string apart = orbis::flux::withDigitsApart(line);
    fuzz::demand(withoutBlanks(apart) == withoutBlanks(line), "only blanks are added", apart);
    fuzz::demand(apart.size() <= 2 * line.size(), "one blank a digit", apart);
    const std::string code = orbis::flux::spelled(text);
    fuzz::demand(fuzz::isUtf8(code) && code.size() <= 3 * line.size(), "a code is spelled", code);
    const std::string sentence = orbis::flux::sentences({line, orbis::flux::plainText(text), code});
    fuzz::demand(fuzz::isUtf8(sentence) || !fuzz::isUtf8(text), "sentences are whole", sentence);
}

} // namespace

void fuzz::tryInput(Input& input)
{
    fuzz::startToolkit();
    const bool flag = input.number(2) == 1;
    const std::string first = input.text();
    const std::string second = input.text();
    const base::MallocStr spoken {access_cb_func(first.c_str(), second.c_str(), flag)};
    fuzz::demand(spoken != nullptr, "there is something to say");
    checkLine(spoken.get());
    checkLine(first);
}
