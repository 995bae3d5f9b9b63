// SPDX-License-Identifier: MIT
#include "core/model/UUID.h"

#include "core/primitives/Hexadecimal.h"
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

// Where the text has its hyphens (RFC 9562, section 4).
constexpr std::array<std::size_t, 4> hyphens{8, 13, 18, 23};
constexpr std::size_t textLength = 36;

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
    if (text.size() != textLength || std::ranges::any_of(hyphens, [&](auto index) { return text[index] != '-'; }))
        return std::nullopt;
    std::string digits(text);
    std::erase(digits, '-');
    const auto bytes = hexDecode(digits);
    return bytes ? fromKdbxBytes(*bytes) : std::nullopt;
}

std::string UUID::text() const {
    auto text = hexadecimal(m_bytes, HexLetters::upper);
    for (const auto index : hyphens)
        text.insert(index, 1, '-');
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
