// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/Bytes.h"

#include <cstdint>
#include <initializer_list>

/// SHA-256, SHA-512 and HMAC-SHA-256 (FIPS 180-4, RFC 2104) by the system's library.
/// Each takes pieces, which are hashed as one text would be, so that nothing is joined first.
/// The library's contexts are kept for each thread and used again.
namespace Sha2 {

inline constexpr std::int64_t sha256Size = 32;  // bytes, of the MAC too

[[nodiscard]] Bytes sha256(std::initializer_list<ByteView> pieces);
[[nodiscard]] inline Bytes sha256(ByteView data) {
    return sha256({data});
}

[[nodiscard]] Bytes sha512(std::initializer_list<ByteView> pieces);
[[nodiscard]] inline Bytes sha512(ByteView data) {
    return sha512({data});
}

/// A key of HMAC. It has a type, because under the data the key would have a MAC as well.
struct HmacKey {
    ByteView key;
};

[[nodiscard]] Bytes hmacSha256(const HmacKey& under, std::initializer_list<ByteView> pieces);

}  // namespace Sha2
