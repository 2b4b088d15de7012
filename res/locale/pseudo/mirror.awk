# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# A text of the pseudo-locale that is read from right to left: English backwards, in a paragraph that begins with a
# right-to-left mark as an Arabic one does with its first letter. Placeholders stay outside, isolates included, so
# that a name keeps its own direction.

BEGIN {
    mark = "\342\200\217"
    override = "\342\200\256"
    end = "\342\200\254"
    placeholder = "(\342\201\250)?%[1-4](\342\201\251)?"
}

function mirrored(run) {
    return run == "" ? "" : override run end
}

{
    text = text (NR > 1 ? "\n" : "") $0
}

END {
    result = mark
    while (match(text, placeholder)) {
        result = result mirrored(substr(text, 1, RSTART - 1)) substr(text, RSTART, RLENGTH)
        text = substr(text, RSTART + RLENGTH)
    }
    printf "%s", result mirrored(text)
}
