// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "flux/Shortening.h"

#include <algorithm>

namespace orbis::flux {

namespace {

constexpr const char* kEllipsis = "…";
constexpr gunichar kJoiner = 0x200d;

struct Range {
    size_t begin = 0;
    size_t end = 0;
};

bool isCharacter(const Piece& piece)
{
    return piece.isTag() ? piece.endsLine() : !piece.isInvisible();
}

/// @return what stands in the longest isolate; an empty range for none
Range longestName(const Pieces& pieces)
{
    Range longest;
    for (size_t begin = 0; begin < pieces.size(); ++begin) {
        if (!pieces[begin].beginsIsolate())
            continue;
        size_t end = begin + 1;
        while (end < pieces.size() && !pieces[end].endsIsolate())
            ++end;
        if (end - begin - 1 > longest.end - longest.begin)
            longest = {begin + 1, end};
        begin = end;
    }
    return longest;
}

/// An ellipsis stands at the letter before it; half an emoji is none.
bool isLooseEnd(const Piece& piece)
{
    return piece.isBlank() || piece.endsLine() || piece.character == kJoiner;
}

} // namespace

Shortening::Shortening(const std::string& markup)
    : m_pieces(piecesOf(markup))
{
    const Range name = longestName(m_pieces);
    leaveOut(name.begin, name.end);
    leaveOut(name.end, m_pieces.size());
    leaveOut(0, name.begin);
}

void Shortening::leaveOut(size_t begin, size_t end)
{
    for (size_t i = end; i > begin; --i) {
        if (isCharacter(m_pieces[i - 1]))
            m_order.push_back(i - 1);
    }
}

std::string Shortening::without(size_t count) const
{
    count = std::min(count, m_order.size());
    std::vector<bool> isLeftOut(m_pieces.size(), false);
    for (size_t i = 0; i < count; ++i)
        isLeftOut[m_order[i]] = true;
    const size_t cut = count > 0 ? m_order[count - 1] : m_pieces.size();
    for (size_t i = cut; i > 0 && isLooseEnd(m_pieces[i - 1]); --i)
        isLeftOut[i - 1] = true;
    std::string result;
    for (size_t i = 0; i < m_pieces.size(); ++i) {
        if (i == cut)
            result += kEllipsis;
        if (!isLeftOut[i])
            result += m_pieces[i].text;
    }
    return result;
}

} // namespace orbis::flux
