// SPDX-License-Identifier: MIT
#include "core/model/UUID.h"

#include "core/primitives/Random.h"

#include <pthread.h>

#include <algorithm>
#include <cstring>

namespace {

/// Random bytes for identifiers, which are no secrets, drawn from the system many at a time.
struct RandomPool {
    std::array<std::uint8_t, 4096> bytes;
    std::size_t left = 0;

    void take(std::span<std::uint8_t> target) {
        if (left < target.size()) {
            fillRandom(bytes);
            left = bytes.size();
        }
        left -= target.size();
        const auto taken = std::span(bytes).subspan(left, target.size());
        std::ranges::copy(taken, target.begin());
        secureWipe(taken.data(), taken.size());
    }
};

thread_local RandomPool pool;

/// A forked child would else draw the very identifiers that its parent draws.
const int emptiesInForkedChildren = ::pthread_atfork(nullptr, nullptr, [] { pool.left = 0; });

// The hyphens precede these bytes (RFC 9562, section 4).
constexpr bool hyphenBefore(std::size_t byte) {
    return byte == 4 || byte == 6 || byte == 8 || byte == 10;
}

constexpr std::size_t textLength = 36;

std::optional<std::uint8_t> hexDigit(char character) {
    if (character >= '0' && character <= '9')
        return static_cast<std::uint8_t>(character - '0');
    if (character >= 'A' && character <= 'F')
        return static_cast<std::uint8_t>(character - 'A' + 10);
    if (character >= 'a' && character <= 'f')
        return static_cast<std::uint8_t>(character - 'a' + 10);
    return std::nullopt;
}

}  // namespace

UUID UUID::random() {
    UUID id;
    pool.take(id.m_bytes);
    id.m_bytes[6] = static_cast<std::uint8_t>((id.m_bytes[6] & 0x0F) | 0x40);  // version 4
    id.m_bytes[8] = static_cast<std::uint8_t>((id.m_bytes[8] & 0x3F) | 0x80);  // the variant of RFC 9562
    return id;
}

std::optional<UUID> UUID::fromKdbxBytes(ByteView bytes) {
    UUID id;
    if (bytes.size() != id.m_bytes.size())
        return std::nullopt;
    std::ranges::copy(bytes, id.m_bytes.begin());
    return id;
}

std::optional<UUID> UUID::fromText(std::string_view text) {
    if (text.size() != textLength)
        return std::nullopt;
    UUID id;
    std::size_t position = 0;
    for (std::size_t i = 0; i < id.m_bytes.size(); ++i) {
        if (hyphenBefore(i) && text[position++] != '-')
            return std::nullopt;
        const auto high = hexDigit(text[position++]);
        const auto low = hexDigit(text[position++]);
        if (!high || !low)
            return std::nullopt;
        id.m_bytes[i] = static_cast<std::uint8_t>(*high << 4 | *low);
    }
    return id;
}

std::string UUID::text() const {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text;
    text.reserve(textLength);
    for (std::size_t i = 0; i < m_bytes.size(); ++i) {
        if (hyphenBefore(i))
            text += '-';
        text += digits[m_bytes[i] >> 4];
        text += digits[m_bytes[i] & 0x0F];
    }
    return text;
}

std::size_t std::hash<UUID>::operator()(const UUID& id) const noexcept {
    std::uint64_t halves[2];
    static_assert(sizeof halves == sizeof(id.kdbxBytes()));
    std::memcpy(halves, id.kdbxBytes().data(), sizeof halves);
    // Identifiers from files need not be random: both halves count, and a multiplication spreads them over all bits.
    auto hash = (halves[0] ^ (halves[1] << 32 | halves[1] >> 32)) * 0x9E3779B97F4A7C15;
    return static_cast<std::size_t>(hash ^ hash >> 32);
}
