// SPDX-FileCopyrightText: 2026 The Tessel UI authors
// SPDX-License-Identifier: Apache-2.0

#include "app/Catalogue.h"

#include <glib.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace orbis::app {

namespace {

constexpr uint32_t kMagic = 0x950412de;
constexpr uint32_t kMagicSwapped = 0xde120495;
constexpr size_t kWord = sizeof(uint32_t);

/// Where the header says what lies where, in words from the beginning.
enum HeaderWord : size_t { Magic, Revision, Count, Ids, Texts, HashSize, Hash };

struct Fault : std::runtime_error {
    using runtime_error::runtime_error;
};

class Catalogue {
public:
    explicit Catalogue(std::string_view bytes)
        : m_bytes(bytes)
    {
        const uint32_t magic = word(Magic * kWord);
        if (magic != kMagic && magic != kMagicSwapped)
            throw Fault("it is no catalogue");
        m_isSwapped = magic == kMagicSwapped;
        // Revisions from 1 on have texts that the C library puts together itself; ours need none.
        if (word(Revision * kWord) != 0)
            throw Fault("its revision is unknown");
        m_count = word(Count * kWord);
        // Then no number of a text overflows what follows.
        if (m_count > bytes.size())
            throw Fault("it is cut");
    }

    void check() const
    {
        std::string_view former;
        for (uint32_t i = 0; i < m_count; ++i) {
            const std::string_view id = text(word(Ids * kWord), i);
            if (i > 0 && id <= former)
                throw Fault("its ids are not in order");
            if (!isTranslation(id, text(word(Texts * kWord), i)))
                throw Fault("its texts are damaged");
            former = id;
        }
        checkHeaderEntry();
        if (word(HashSize * kWord) != 0)
            checkHash();
    }

    std::string find(std::string_view id) const
    {
        for (uint32_t i = 0; i < m_count; ++i) {
            if (text(word(Ids * kWord), i) == id)
                return std::string {text(word(Texts * kWord), i)};
        }
        return {};
    }

private:
    uint32_t word(size_t offset) const
    {
        if (offset % kWord != 0 || offset > m_bytes.size() || m_bytes.size() - offset < kWord)
            throw Fault("it is cut");
        uint32_t value = 0;
        memcpy(&value, m_bytes.data() + offset, sizeof value);
        return m_isSwapped ? GUINT32_SWAP_LE_BE(value) : value;
    }

    /// @return the text that entry @p index of @p table points to, which must end where its length says
    std::string_view text(size_t table, uint32_t index) const
    {
        const size_t length = word(table + 2 * kWord * index);
        const size_t begin = word(table + 2 * kWord * index + kWord);
        if (begin > m_bytes.size() || m_bytes.size() - begin <= length || m_bytes[begin + length] != '\0')
            throw Fault("it is cut");
        return m_bytes.substr(begin, length);
    }

    /// The forms of a plural are kept apart by the byte that ends a text; no other text has one inside.
    static bool isTranslation(std::string_view id, std::string_view text)
    {
        const bool isPlural = id.find('\0') != std::string_view::npos;
        std::string all {text};
        if (isPlural)
            std::replace(all.begin(), all.end(), '\0', ' ');
        return !all.empty() && g_utf8_validate_len(all.data(), all.size(), nullptr)
            && g_utf8_validate(std::string {id}.c_str(), -1, nullptr);
    }

    /// The text of the empty id names the encoding, which other texts would be converted from.
    void checkHeaderEntry() const
    {
        if (m_count == 0 || !text(word(Ids * kWord), 0).empty()
            || text(word(Texts * kWord), 0).find("charset=UTF-8\n") == std::string_view::npos)
            throw Fault("its header is damaged");
    }

    /// The C library's own hash of an id.
    static uint32_t hashOf(std::string_view id)
    {
        constexpr uint32_t kTop = 0xf0000000;
        uint32_t value = 0;
        for (const char c : id) {
            value = (value << 4) + static_cast<unsigned char>(c);
            if (const uint32_t top = value & kTop; top != 0)
                value = (value ^ (top >> 24)) ^ top;
        }
        return value;
    }

    /// A search steps through the table until it finds a place that is empty: there must be one on its way.
    void checkHash() const
    {
        const uint32_t size = word(HashSize * kWord);
        const size_t table = word(Hash * kWord);
        if (size <= 2 || size > m_bytes.size() || !isPrime(size))
            throw Fault("its index is damaged");
        uint32_t used = 0;
        for (uint32_t i = 0; i < size; ++i) {
            const uint32_t entry = word(table + kWord * i);
            if (entry > m_count)
                throw Fault("its index is damaged");
            used += entry != 0 ? 1 : 0;
        }
        if (used != m_count || used == size)
            throw Fault("its index is damaged");
        for (uint32_t i = 0; i < m_count; ++i) {
            if (!isFound(i, table, size))
                throw Fault("its index is damaged");
        }
    }

    bool isFound(uint32_t index, size_t table, uint32_t size) const
    {
        const std::string_view id = text(word(Ids * kWord), index);
        const uint32_t hash = hashOf(id.substr(0, id.find('\0')));
        const uint32_t step = 1 + hash % (size - 2);
        uint32_t at = hash % size;
        for (uint32_t entry; (entry = word(table + kWord * at)) != 0;) {
            if (entry == index + 1)
                return true;
            at = at >= size - step ? at - (size - step) : at + step;
        }
        return false;
    }

    /// Of a prime number of places a search sees every one.
    static bool isPrime(uint32_t number)
    {
        for (uint32_t i = 2; i <= number / i; ++i) {
            if (number % i == 0)
                return false;
        }
        return number > 1;
    }

    std::string_view m_bytes;
    bool m_isSwapped = false;
    uint32_t m_count = 0;
};

} // namespace

std::string faultOfCatalogue(std::string_view bytes)
{
    try {
        Catalogue(bytes).check();
    } catch (const Fault& fault) {
        return fault.what();
    }
    return {};
}

std::string textOfCatalogue(std::string_view bytes, std::string_view id)
{
    try {
        return Catalogue(bytes).find(id);
    } catch (const Fault&) {
        return {};
    }
}

} // namespace orbis::app
