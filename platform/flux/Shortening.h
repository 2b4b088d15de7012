// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// What becomes of a text for which there is no room.
#pragma once

#include "flux/Pieces.h"

#include <string>
#include <vector>

namespace orbis::flux {

/// A text that can be made shorter, down to an ellipsis. It is cut in its longest name, which stands in an
/// isolate, as long as there is something of it: the sentence around it is what the viewer is told. A text
/// without one is cut at its end.
class Shortening {
public:
    /// @param markup  what typeset() has made
    explicit Shortening(const std::string& markup);

    /// @return the most characters that can be left out
    size_t most() const { return m_order.size(); }

    /// @param count  of characters, 1 to most()
    /// @return the text without them, with an ellipsis in their place
    std::string without(size_t count) const;

private:
    void leaveOut(size_t begin, size_t end);

    Pieces m_pieces;
    std::vector<size_t> m_order; ///< pieces in the order in which they are left out
};

} // namespace orbis::flux
