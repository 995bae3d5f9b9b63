// SPDX-License-Identifier: MIT
#include "core/primitives/AESCipher.h"

#include "core/primitives/AESOperation.h"
#include "core/primitives/AESRounds.h"
#include "core/primitives/Overloaded.h"

namespace AESCipher {
namespace {

constexpr std::size_t keySize = 32;
constexpr std::size_t blockSize = 16;

constexpr std::int32_t alignmentStatus = -4303;

Bytes run(AESOperation::Direction direction, ByteView data, ByteView key, ByteView iv) {
    AESOperation operation(direction, key, iv);
    Bytes out(data.size() + blockSize);
    auto size = operation.update(out.data(), data);
    size += operation.finish(out.data() + size);
    out.resize(size);
    return out;
}

void checkKey(ByteView key) {
    if (key.size() != keySize)
        throw Error::invalidKeyLength(std::ssize(key));
}

Bytes cbc(AESOperation::Direction direction, ByteView data, ByteView key, ByteView iv) {
    checkKey(key);
    if (iv.size() != blockSize)
        throw Error::invalidIVLength(std::ssize(iv));
    if (direction == AESOperation::Direction::decrypt && data.size() % blockSize != 0)
        throw Error::cryptoFailure(alignmentStatus);
    return run(direction, data, key, iv);
}

Bytes ecb(AESOperation::Direction direction, ByteView data, ByteView key) {
    if (data.size() % blockSize != 0)
        throw Error::invalidBlockAlignment(std::ssize(data));
    checkKey(key);
    return run(direction, data, key, {});
}

}  // namespace

std::string ErrorCases::describe(const Case& failure) {
    return std::visit(
        Overloaded{
            [](const InvalidKeyLength& e) { return "AES: anahtar 32 byte olmalı (" + std::to_string(e.length) + ")."; },
            [](const InvalidIVLength& e) { return "AES: IV 16 byte olmalı (" + std::to_string(e.length) + ")."; },
            [](const InvalidBlockAlignment& e) {
                return "AES: veri 16'nın katı olmalı (" + std::to_string(e.length) + ").";
            },
            [](const CryptoFailure& e) { return "AES: CommonCrypto hatası " + std::to_string(e.status) + "."; },
        },
        failure);
}

Bytes cbcEncrypt(ByteView data, ByteView key, ByteView iv) {
    return cbc(AESOperation::Direction::encrypt, data, key, iv);
}

Bytes cbcDecrypt(ByteView data, ByteView key, ByteView iv) {
    return cbc(AESOperation::Direction::decrypt, data, key, iv);
}

Bytes ecbEncryptNoPadding(ByteView data, ByteView key) {
    return ecb(AESOperation::Direction::encrypt, data, key);
}

Bytes ecbDecryptNoPadding(ByteView data, ByteView key) {
    return ecb(AESOperation::Direction::decrypt, data, key);
}

Bytes ecbEncryptRepeatedly(ByteView block, ByteView key, std::uint64_t rounds, Derivation* derivation) {
    return AESRounds::run(AESRounds::bestImplementation(), block, key, rounds, derivation);
}

}  // namespace AESCipher
