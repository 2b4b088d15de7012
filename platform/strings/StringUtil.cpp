// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "string_util.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace {

bool isContinuation(char letter)
{
    return (static_cast<unsigned char>(letter) & 0xC0U) == 0x80U;
}

size_t lengthOfCharacter(char first)
{
    const auto byte = static_cast<unsigned char>(first);
    if (byte >= 0xF0U)
        return 4;
    if (byte >= 0xE0U)
        return 3;
    return byte >= 0xC0U ? 2 : 1;
}

/// Fills a buffer of fixed size with whole characters; nothing follows the first that does not fit.
class BoundedText {
public:
    BoundedText(char* out, size_t room)
        : m_out(out)
        , m_room(room)
    {
    }

    void append(std::string_view text)
    {
        if (m_full)
            return;
        const size_t count = std::min(text.size(), m_room - m_length);
        std::memcpy(m_out + m_length, text.data(), count);
        m_length += count;
        m_full = count < text.size();
        if (m_full && isContinuation(text[count]))
            dropPartialCharacter();
    }

    size_t terminate()
    {
        m_out[m_length] = '\0';
        return m_length;
    }

private:
    /// Bytes that are no UTF-8 are left as they are.
    void dropPartialCharacter()
    {
        constexpr size_t kMostBytes = 3;
        for (size_t back = 1; back <= std::min(kMostBytes, m_length); ++back) {
            const char letter = m_out[m_length - back];
            if (isContinuation(letter))
                continue;
            if (lengthOfCharacter(letter) > back)
                m_length -= back;
            return;
        }
    }

    char* m_out;
    size_t m_room; ///< without the terminator
    size_t m_length = 0;
    bool m_full = false;
};

} // namespace

int CStringUtil::CombinateStrings(char* out, int size, const char* format, const char* arg1, const char* arg2,
    const char* arg3, const char* arg4)
{
    if (!out || size < 1)
        return -1;
    const char* const arguments[] = {arg1, arg2, arg3, arg4};
    BoundedText text(out, static_cast<size_t>(size) - 1);
    std::string_view rest = format ? format : "";
    while (!rest.empty()) {
        const size_t plain = rest.find('%');
        text.append(rest.substr(0, plain));
        if (plain == std::string_view::npos)
            break;
        rest.remove_prefix(plain + 1);
        const char next = rest.empty() ? '\0' : rest[0];
        if (next >= '1' && next <= '4') {
            const char* argument = arguments[next - '1'];
            text.append(argument ? argument : "");
        } else {
            text.append("%");
        }
        if (next == '%' || (next >= '1' && next <= '4'))
            rest.remove_prefix(1);
    }
    return static_cast<int>(text.terminate());
}
