// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

/// Markup taken apart into what may not be taken apart any further.
#pragma once

#include <glib.h>

#include <string>
#include <string_view>
#include <vector>

namespace orbis::flux {

/// A tag, or a character, which may be written as an entity.
struct Piece {
    std::string text;
    gunichar character = 0; ///< 0 for a tag and for what is no character

    bool isTag() const { return text.size() > 1 && text.front() == '<'; }
    bool beginsIsolate() const;
    bool endsIsolate() const;
    bool isDirectionMark() const; ///< invisible, of one character
    bool isForced() const; ///< begins or ends an embedding or override
    bool isInvisible() const { return beginsIsolate() || endsIsolate() || isDirectionMark() || isForced(); }
    bool isBlank() const { return character == ' '; }
    bool isPiledMark() const; ///< stands above, below or in the letter before it
    bool endsLine() const; ///< for certain
};

using Pieces = std::vector<Piece>;

Pieces piecesOf(std::string_view markup);

std::string textOf(const Pieces& pieces);

} // namespace orbis::flux
