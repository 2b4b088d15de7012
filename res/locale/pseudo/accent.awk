# SPDX-FileCopyrightText: 2026 The Tessel UI authors
# SPDX-License-Identifier: Apache-2.0

# A text of the pseudo-locale that shows what is too narrow, and what is no catalogue's text at all: every letter
# accented, words for the 60 % that another language may need, and brackets at both ends.

BEGIN {
    count = split("aå bƀ cç dð eé fƒ gĝ hĥ iî jĵ kķ lļ mɱ nñ oō pþ qɋ rŕ sš tţ uû vʋ wŵ xẋ yý zž " \
        "AÅ BƁ CÇ DÐ EÉ FƑ GĜ HĤ IÎ JĴ KĶ LĻ MḾ NÑ OŌ PÞ QɊ RŔ SŠ TŢ UÛ VƲ WŴ XẊ YÝ ZŽ", accents, " ")
    words = split("one two three four five six seven eight nine ten", padding, " ")
}

{
    text = text (NR > 1 ? "\n" : "") $0
}

END {
    counted = text
    gsub(/[^ -~]+/, "x", counted) # some awks count bytes, in isolates and apostrophes three each
    missing = length(counted) * 0.6 - length("[]")
    for (i = 0; missing > 0; ++i) {
        word = " " padding[i % words + 1]
        isLast = length(word) >= missing
        if (isLast)
            word = substr(word, 1, int(missing + 0.999))
        missing -= length(word)
        if (isLast && i > 0) # it is short, and would be lost on a line of its own
            word = "\302\240" substr(word, 2)
        text = text word
    }
    for (i = 1; i <= count; ++i)
        gsub(substr(accents[i], 1, 1), substr(accents[i], 2), text)
    printf "[%s]", text
}
