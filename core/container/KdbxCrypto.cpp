// SPDX-License-Identifier: MIT
#include "core/container/KdbxCrypto.h"

#include "core/model/KdbxError.h"
#include "core/primitives/AESCipher.h"
#include "core/primitives/ChaCha20Stream.h"
#include "core/primitives/Salsa20Stream.h"
#include "core/primitives/Sha2.h"

#include <limits>

namespace KdbxCrypto {
namespace {

// Before all blocks the header is authenticated, under the index that no block reaches.
constexpr std::uint64_t headerIndex = std::numeric_limits<std::uint64_t>::max();

/// The IV's size is judged before the key is used for anything.
void checkIV(const PayloadCipher& by) {
    if (by.iv.size() == ivSize(by.cipher))
        return;
    throw KdbxError::corruptedData(by.cipher == KdbxCipher::aes256 ? "AES IV 16 bayt olmalı"
                                                                   : "ChaCha20 nonce 12 bayt olmalı");
}

Bytes chachaApplied(ByteView data, const PayloadCipher& by) {
    ChaCha20Stream stream({.key = by.key, .nonce = by.iv}, 0);
    return stream.process(data);
}

}  // namespace

std::size_t ivSize(KdbxCipher cipher) noexcept {
    return cipher == KdbxCipher::aes256 ? 16 : 12;
}

Bytes decryptPayload(ByteView data, const PayloadCipher& by) {
    checkIV(by);
    return by.cipher == KdbxCipher::aes256 ? AESCipher::cbcDecrypt(data, {.key = by.key, .iv = by.iv})
                                           : chachaApplied(data, by);
}

Bytes encryptPayload(ByteView data, const PayloadCipher& by) {
    checkIV(by);
    return by.cipher == KdbxCipher::aes256 ? AESCipher::cbcEncrypt(data, {.key = by.key, .iv = by.iv})
                                           : chachaApplied(data, by);
}

Bytes headerHMAC(ByteView header, const HmacBase& base) {
    return Sha2::hmacSha256({.key = blockKey(headerIndex, base)}, {header});
}

std::optional<InnerStreamID> innerStreamID(std::uint32_t rawValue) noexcept {
    if (rawValue > static_cast<std::uint32_t>(InnerStreamID::chaCha20))
        return std::nullopt;
    return InnerStreamID{rawValue};
}

std::unique_ptr<InnerStreamCipher> makeInnerStream(InnerStreamID id, ByteView key) {
    switch (id) {
        case InnerStreamID::none:
            return std::make_unique<NullStreamCipher>();
        case InnerStreamID::salsa20:
            return std::make_unique<Salsa20Stream>(StreamKey{.key = Sha2::sha256(key), .nonce = salsaNonce});
        case InnerStreamID::chaCha20: {
            const auto digest = Sha2::sha512(key);
            // One digest has both: 32 bytes of key and, behind them, the nonce.
            const StreamKey start{.key = ByteView(digest).first(32),
                                  .nonce = ByteView(digest).subspan(32, ivSize(KdbxCipher::chacha20))};
            return std::make_unique<ChaCha20Stream>(start, 0);
        }
        case InnerStreamID::arcFourVariant:
            break;
    }
    throw KdbxError::unsupportedCipher("ARCFour inner stream");
}

}  // namespace KdbxCrypto
