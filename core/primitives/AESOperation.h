// SPDX-License-Identifier: MIT
#pragma once

#include "core/primitives/AESCipher.h"

#include <cstdint>

/// One run of AES-256 through the library, on a context that the thread keeps. The key is forgotten when it ends,
/// whichever way it ends. One at a time in each thread.
class AESOperation {
public:
    enum class Direction : std::uint8_t { decrypt, encrypt };

    /// With an IV it is CBC with PKCS#7 padding; with an empty one ECB without padding. No length is checked here.
    ///
    /// @throws AESCipher::Error cryptoFailure(-4308) when the library fails, here and in `update`.
    AESOperation(Direction direction, const AESCipher::KeyMaterial& under);
    ~AESOperation();
    AESOperation(const AESOperation&) = delete;
    AESOperation& operator=(const AESOperation&) = delete;

    /// How many bytes came out at `out`, which may be where `data` begins. Padding holds the last block back.
    std::size_t update(std::uint8_t* out, ByteView data);

    /// How many bytes came out at `out`. Only whole blocks may have gone in for decryption.
    ///
    /// @throws AESCipher::Error cryptoFailure(-4304) when the padding is wrong.
    std::size_t finish(std::uint8_t* out);
};
