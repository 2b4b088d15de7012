// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Sentences put together from a catalogue's pattern and names.
#include "Fuzz.h"
#include "combinate.h"
#include "string_util.h"

#include <algorithm>
#include <cstring>
#include <vector>

namespace {

/// The words of the rule, without any bound.
std::string whole(const std::string& format, const std::string (&arguments)[4])
{
    std::string result;
    for (size_t i = 0; i < format.size(); ++i) {
        const char next = format[i] == '%' && i + 1 < format.size() ? format[i + 1] : '\0';
        if (next >= '1' && next <= '4')
            result += arguments[next - '1'];
        else
            result += format[i];
        if (next == '%' || (next >= '1' && next <= '4'))
            ++i;
    }
    return result;
}

} // namespace

void fuzz::tryInput(Input& input)
{
    const int room = static_cast<int>(input.number(256)) + 1;
    const std::string format = input.text();
    const std::string arguments[4] = {input.text(), input.text(), input.text(), input.text()};
    const std::string expected = whole(format, arguments);
    std::vector<char> out(static_cast<size_t>(room)); // of the heap, where one byte beyond is found
    const int length = CStringUtil::CombinateStrings(out.data(), room, format.c_str(), arguments[0].c_str(),
        arguments[1].c_str(), arguments[2].c_str(), arguments[3].c_str());
    const std::string shown = out.data();
    fuzz::demand(length == static_cast<int>(shown.size()), "the length is the text's", shown);
    fuzz::demand(expected.compare(0, shown.size(), shown) == 0, "a beginning of the sentence", shown);
    fuzz::demand(shown.size() + 4 >= std::min(expected.size() + 4, static_cast<size_t>(room)),
        "cut at most a character early", shown);
    if (fuzz::isUtf8(expected))
        fuzz::demand(fuzz::isUtf8(shown), "cut between characters", shown);

    std::vector<char> sentence(TesselUI::kCombinedTextSize);
    combinate_string(format.c_str(), arguments[0].c_str(), arguments[1].c_str(), sentence.data());
    fuzz::demand(strnlen(sentence.data(), sentence.size()) < sentence.size(), "it ends");
}
