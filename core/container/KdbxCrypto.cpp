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

constexpr std::size_t aesIVSize = 16;
constexpr std::size_t chachaNonceSize = 12;
constexpr std::uint64_t headerIndex = std::numeric_limits<std::uint64_t>::max();

/// The IV's size is judged before the key is used for anything.
void checkIV(KdbxCipher cipher, ByteView iv) {
    if (cipher == KdbxCipher::aes256 && iv.size() != aesIVSize)
        throw KdbxError::corruptedData("AES IV 16 bayt olmalı");
    if (cipher == KdbxCipher::chacha20 && iv.size() != chachaNonceSize)
        throw KdbxError::corruptedData("ChaCha20 nonce 12 bayt olmalı");
}

Bytes chachaApplied(ByteView data, ByteView key, ByteView nonce) {
    ChaCha20Stream stream(key, nonce, 0);
    return stream.process(data);
}

}  // namespace

Bytes decryptPayload(ByteView data, KdbxCipher cipher, ByteView key, ByteView iv) {
    checkIV(cipher, iv);
    return cipher == KdbxCipher::aes256 ? AESCipher::cbcDecrypt(data, key, iv) : chachaApplied(data, key, iv);
}

Bytes encryptPayload(ByteView data, KdbxCipher cipher, ByteView key, ByteView iv) {
    checkIV(cipher, iv);
    return cipher == KdbxCipher::aes256 ? AESCipher::cbcEncrypt(data, key, iv) : chachaApplied(data, key, iv);
}

Bytes headerHMAC(ByteView header, ByteView hmacKey) {
    return Sha2::hmacSha256(blockKey(headerIndex, hmacKey), {header});
}

bool constantTimeEquals(ByteView a, ByteView b) noexcept {
    if (a.size() != b.size())
        return false;
    std::uint8_t difference = 0;
    for (std::size_t i = 0; i < a.size(); ++i)
        difference = static_cast<std::uint8_t>(difference | (a[i] ^ b[i]));
    return difference == 0;
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
            return std::make_unique<Salsa20Stream>(Sha2::sha256(key), salsaNonce);
        case InnerStreamID::chaCha20: {
            const auto digest = Sha2::sha512(key);
            return std::make_unique<ChaCha20Stream>(ByteView(digest).first(32), ByteView(digest).subspan(32, 12), 0);
        }
        case InnerStreamID::arcFourVariant:
            break;
    }
    throw KdbxError::unsupportedCipher("ARCFour inner stream");
}

}  // namespace KdbxCrypto
