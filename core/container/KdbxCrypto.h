// SPDX-License-Identifier: MIT
#pragma once

#include "core/container/KdbxReader.h"
#include "core/model/KdbxDatabase.h"
#include "core/primitives/Bytes.h"
#include "core/primitives/InnerStreamCipher.h"
#include "core/primitives/Random.h"
#include "core/primitives/Salsa20Stream.h"

#include <cstdint>
#include <memory>
#include <optional>

/// What turns a vault's payload into bytes on disk and back. Nothing here keeps a state.
namespace KdbxCrypto {

/// Bytes of payload in one block as we write it: 1 MiB, as other writers do.
inline constexpr std::size_t defaultBlockSize = 1'048'576;

/// How a payload is enciphered.
struct PayloadCipher {
    KdbxCipher cipher;
    ByteView key;
    ByteView iv;  // of ChaCha20 the nonce
};

/// Bytes of the IV (AES: a block, NIST SP 800-38A, section 5.3) or the nonce (ChaCha20: RFC 8439, section 2.3).
[[nodiscard]] std::size_t ivSize(KdbxCipher cipher) noexcept;

/// @throws KdbxError corruptedData for an IV (AES) or nonce (ChaCha20) of the wrong size, AESCipher::Error.
[[nodiscard]] Bytes decryptPayload(ByteView data, const PayloadCipher& by);
[[nodiscard]] Bytes encryptPayload(ByteView data, const PayloadCipher& by);

/// The data of a stream of SHA-256 blocks (KDBX 3). `reader` is left behind the terminator.
///
/// @throws KdbxError corruptedData, or blockHmacMismatch with the block's index.
[[nodiscard]] Bytes readHashedBlocks(KdbxReader& reader);
/// `blockSize` fits in 32 bits and is not 0, a precondition: it is one of our constants.
[[nodiscard]] Bytes writeHashedBlocks(ByteView data, std::size_t blockSize);

/// The base from which each HMAC of a file has a key of its own; see `KdbxKeys::DerivedKeys`.
struct HmacBase {
    ByteView key;
};

/// The data of a stream of HMAC blocks (KDBX 4), each believed only once it has verified, the terminator too.
/// `reader` is left behind the terminator.
///
/// @throws KdbxError corruptedData, or blockHmacMismatch with the block's index.
[[nodiscard]] Bytes readHMACBlocks(KdbxReader& reader, const HmacBase& base);
/// As for `writeHashedBlocks`.
[[nodiscard]] Bytes writeHMACBlocks(ByteView data, const HmacBase& base, std::size_t blockSize);

/// The 64-byte key of one HMAC block.
[[nodiscard]] Bytes blockKey(std::uint64_t index, const HmacBase& base);

/// The HMAC of the outer header, under the key of the index that no block can have.
[[nodiscard]] Bytes headerHMAC(ByteView header, const HmacBase& base);

using ::constantTimeEquals;
using ::randomBytes;

/// How protected values are enciphered inside the document, as the format numbers it.
enum class InnerStreamID : std::uint32_t { none = 0, arcFourVariant = 1, salsa20 = 2, chaCha20 = 3 };

/// The stream of a raw number, or nothing for one that the format does not know.
[[nodiscard]] std::optional<InnerStreamID> innerStreamID(std::uint32_t rawValue) noexcept;

/// The nonce of every Salsa20 inner stream.
inline constexpr auto& salsaNonce = Salsa20Stream::kdbxNonce;

/// A new stream at its start. `key` may have any size, since it is hashed.
///
/// @throws KdbxError unsupportedCipher for `arcFourVariant`.
[[nodiscard]] std::unique_ptr<InnerStreamCipher> makeInnerStream(InnerStreamID id, ByteView key);

}  // namespace KdbxCrypto
